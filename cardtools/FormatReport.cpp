#include "cardtools/FormatReport.h"

#include "cardtools/FormatRule.h"
#include "platform/Texts.h"

namespace {

using platform::localized;
using Step = CardFormat::Step;

QString lines(const QString& first, const QString& second)
{
    return second.isEmpty() ? first : first + "\n" + second;
}

/// The reason in the user's language where the number has a meaning; what the tool said goes below it.
QString errorText(const ErrorDictionary& error)
{
    const QString message = QString::fromStdString(errorMessage(error));
    const std::string key = formatStatusKey(errorNumber(error));
    if (errorNumber(error) == static_cast<int>(FormatStatus::writeProtected))
        return localized(key);
    return "Error:" + (key.empty() ? message : lines(localized(key), message));
}

} // namespace

FormatReport formatReport(const CardFormat::Outcome& outcome)
{
    const QString card = QString::fromStdString(outcome.card.displayString());
    const QString text = QString::fromStdString(outcome.text);
    FormatReport report{"config.bin copy fail", text};
    switch (outcome.step) {
    case Step::done:
        report = {localized("msg.format_complete"), card, true};
        break;
    case Step::formatFailed:
        report = {localized("msg.cannot_format"), lines(card, errorText(outcome.error))};
        break;
    case Step::copyAsideFailed:
        report = {
            localized("msg.cannot_format"), lines(lines(card, localized("format.cannot_copy_config")), text)};
        break;
    case Step::cardNotFound:
        report = {localized("setting.format.window_title"),
            lines(lines(card, localized("msg.card_not_found")), text)};
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
