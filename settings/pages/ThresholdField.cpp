#include "settings/pages/ThresholdField.h"

#include "settings/record/ZVKValidator.h"

#include <QKeyEvent>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace {

bool canBeTyped(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^[0-9]?(\\.[0-9]{0,2})?$"));
    return pattern.match(text).hasMatch();
}

/// The number that the text begins with; 0 without one.
double numericValue(const QString& text)
{
    const std::string bytes = text.toStdString();
    std::string_view rest = bytes;
    return readNumber(rest).value_or(0);
}

QString twoDigits(double value)
{
    return QString::number(value, 'f', 2);
}

} // namespace

ThresholdField::ThresholdField(QWidget* parent)
    : QLineEdit(parent)
{
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    connect(this, &QLineEdit::editingFinished, this, &ThresholdField::showTwoDigits);
}

void ThresholdField::setHundredths(int32_t value)
{
    shownValue = value;
    shownText = twoDigits(value / 100.0);
    setText(shownText);
}

int32_t ThresholdField::hundredths() const
{
    if (!isChanged())
        return shownValue;
    using Limits = std::numeric_limits<int32_t>;
    const double value = numericValue(text()) * 100;
    return static_cast<int32_t>(std::clamp(value, double(Limits::min()), double(Limits::max())));
}

void ThresholdField::keyPressEvent(QKeyEvent* event)
{
    const QString typed = event->text();
    const bool isCharacter = !typed.isEmpty() && typed.front().isPrint()
        && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (isCharacter) {
        QString after = text();
        const int at = hasSelectedText() ? selectionStart() : cursorPosition();
        after.replace(at, selectedText().size(), typed);
        if (!canBeTyped(after))
            return;
    }
    QLineEdit::keyPressEvent(event);
}

/// A number that does not fit "0.00" stays as typed: the page reports the error.
void ThresholdField::showTwoDigits()
{
    if (text().isEmpty() || !ZVKValidator::stringIsNumber(text().toStdString()))
        return;
    const double value = numericValue(text());
    if (value < 0 || value >= 9.995)
        return;
    // The alert about a refused number takes the focus after the number was selected.
    const bool isSelected = hasSelectedText() && selectedText() == text();
    setText(twoDigits(value));
    if (isSelected)
        selectAll();
}
