#include "app/list/MediaNameDelegate.h"

namespace {

constexpr QChar lineMayEndHere(0x200B);
/// As long as a date; a longer part may be broken anywhere.
constexpr int longestWholePart = 8;

} // namespace

QString MediaNameDelegate::displayText(const QVariant& value, const QLocale&) const
{
    QString text;
    int part = 0;
    for (const QChar letter : value.toString()) {
        text += letter;
        part = letter == u'_' ? 0 : part + 1;
        if (!letter.isHighSurrogate() && (part == 0 || part >= longestWholePart))
            text += lineMayEndHere;
    }
    return text;
}
