#include "settings/pages/ZVKCarNumberTextField.h"

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
    connect(this, &QLineEdit::textEdited, this, [this] {
        edited = true;
        emit refused(carNumber() != text());
    });
    connect(this, &QLineEdit::editingFinished, this, &ZVKCarNumberTextField::textDidEndEditing);
}

void ZVKCarNumberTextField::setCarNumber(const QString& number)
{
    setText(number);
    edited = false;
}

QString ZVKCarNumberTextField::carNumber() const
{
    QString kept;
    for (const QChar character : text()) {
        if (kept.size() < longest && isAccepted(character))
            kept += character;
    }
    return kept;
}

/// A text from the record that was not edited stays as it is.
void ZVKCarNumberTextField::textDidEndEditing()
{
    if (edited && carNumber() != text())
        setText(carNumber());
}
