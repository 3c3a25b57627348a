#include "settings/ZVKCarNumberTextField.h"

namespace {

constexpr qsizetype longest = 8;

bool isAccepted(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') || (unit >= u'a' && unit <= u'z');
}

} // namespace

ZVKCarNumberTextField::ZVKCarNumberTextField(QWidget* parent)
    : QLineEdit(parent)
{
    connect(this, &QLineEdit::textEdited, this, [this] { edited = true; });
    // Walking past the field with the tab key changes nothing.
    connect(this, &QLineEdit::editingFinished, this, [this] {
        if (edited)
            textDidEndEditing();
    });
}

void ZVKCarNumberTextField::setCarNumber(const QString& number)
{
    setText(number);
    edited = false;
}

void ZVKCarNumberTextField::textDidEndEditing()
{
    QString kept;
    for (const QChar character : text()) {
        if (kept.size() < longest && isAccepted(character))
            kept += character;
    }
    if (kept != text())
        setText(kept);
}
