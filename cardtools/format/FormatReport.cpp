#include "cardtools/format/FormatReport.h"

#include "cardtools/format/FormatRule.h"
#include "common/Text.h"
#include "lib/WriteFailure.h"
#include "platform/Texts.h"

#include <QRegularExpression>

#include <cerrno>
#include <cstring>

namespace {

using platform::localized;
using Step = CardFormat::Step;

QString lines(const QString& first, const QString& second)
{
    return second.isEmpty() ? first : first + "\n" + second;
}

bool saysWriteError(const QString& words)
{
    return words.contains(QLatin1String("Input/output error"))
        || words.contains(QString::fromLocal8Bit(std::strerror(EIO)));
}

/// The system's reason, or what a reason of the medium means for the card.
QString reason(const std::string& words)
{
    const QString text = inUsersWords(QString::fromStdString(words));
    return saysWriteError(text) ? localized("format.medium_errors") : text;
}

/// The tool's last message, without its banner and exit status.
QString lastWords(const ErrorDictionary& error)
{
    // The program's own reasons are localised and may have several lines.
    if (errorNumber(error) < 0)
        return QString::fromStdString(errorMessage(error));
    static const QRegularExpression busName(QStringLiteral("GDBus\\.Error:[^ ]*: "));
    static const QRegularExpression bareNumber(QStringLiteral("^[^:]*: -?\\d+$"));
    QString text = QString::fromStdString(errorMessage(error)).trimmed();
    text = text.mid(text.lastIndexOf('\n') + 1).remove(busName);
    return text.contains(bareNumber) ? QString() : text;
}

/// A card that the tools lost may still be in its reader; then the card is faulty.
std::string reasonKey(int number, const QString& words, bool isThere)
{
    const bool isMedium = number == static_cast<int>(FormatStatus::cardGone)
        || number == static_cast<int>(FormatStatus::toolFailed)
        || number == static_cast<int>(FormatStatus::notAsAsked)
        || number == static_cast<int>(FormatStatus::notClean);
    if (isMedium && !isThere)
        return formatStatusKey(static_cast<int>(FormatStatus::cardGone));
    if (number == static_cast<int>(FormatStatus::cardGone) || (isMedium && saysWriteError(words)))
        return "format.medium_errors";
    return formatStatusKey(number);
}

/// The reason in the user's language where the number has a meaning; what the tool said goes below it.
QString errorText(const CardFormat::Outcome& outcome)
{
    const int number = errorNumber(outcome.error);
    const QString words = lastWords(outcome.error);
    const std::string key = reasonKey(number, words, outcome.isThere);
    if (key == formatStatusKey(static_cast<int>(FormatStatus::writeProtected)))
        return localized(key);
    if (key.empty())
        return "Error:" + (words.isEmpty() ? localized("format.no_reason") : words);
    // The helper's two sizes are not shown.
    const bool isOtherSize = number == static_cast<int>(FormatStatus::otherSize);
    return "Error:" + lines(localized(key), isOtherSize ? QString() : words);
}

QString stillOpenText(const std::vector<std::string>& files)
{
    QString text;
    for (const std::string& file : files)
        text += "\n" + QString::fromStdString(visibleText(file));
    return text.isEmpty() ? text : "\n" + localized("format.still_open_here") + text;
}

} // namespace

FormatReport formatReport(const CardFormat::Outcome& outcome)
{
    const QString card = QString::fromStdString(outcome.card.displayString());
    const QString text = reason(outcome.text);
    FormatReport report{"config.bin copy fail", text};
    switch (outcome.step) {
    case Step::done:
        report = {localized("msg.format_complete"), card, true};
        break;
    case Step::formatFailed:
        report = {localized("msg.cannot_format"),
            lines(card, errorText(outcome)) + stillOpenText(outcome.stillOpen)};
        break;
    case Step::copyAsideFailed:
    case Step::cancelled:
        report = {localized("setting.format.window_title"), lines(card, localized("format.cancelled"))};
        break;
    case Step::cardNotFound:
        report = {localized("setting.format.window_title"),
            lines(lines(card, localized("msg.card_not_found")), lastWords(outcome.error))};
        break;
    case Step::foldersFailed:
        report = {localized("setting.format.window_title"),
            lines(lines(card, localized("format.folders_failed")), text)};
        break;
    case Step::defaultFailed:
        report.message = localized(outcome.text);
        break;
    case Step::configFailed:
        break;
    }
    if (!outcome.keptCopy.empty())
        report.message +=
            "\n\n" + localized("format.copy_kept") + "\n" + QString::fromStdString(outcome.keptCopy);
    return report;
}

FormatReport configQuestion(const CardFormat::Outcome& outcome)
{
    const QString card = QString::fromStdString(outcome.card.displayString());
    const QString words =
        outcome.error.empty() ? inUsersWords(QString::fromStdString(outcome.text)) : lastWords(outcome.error);
    return {localized("format.cannot_copy_config"),
        lines(lines(card, saysWriteError(words) ? localized("format.cannot_be_read") : words),
            localized("format.anyway_hint"))};
}
