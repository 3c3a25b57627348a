// How the settings window saves.

#include "settings/window/ZVKSettingController.h"

#include "common/CardFiles.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "lib/WriteFailure.h"
#include "platform/Texts.h"

#include <filesystem>
#include <new>
#include <utility>

using platform::localized;

namespace {

std::string text(const char* key)
{
    return localized(key).toStdString();
}

SaveOutcome outcomeOf(const std::function<SaveOutcome()>& work)
try {
    return work();
} catch (const std::bad_alloc&) {
    SaveOutcome outcome;
    outcome.kind = SaveOutcome::Kind::failed;
    outcome.error.code = ENOMEM;
    return outcome;
}

} // namespace

void ZVKSettingController::onSave()
{
    const auto next = std::exchange(afterSave, {});
    // While formatting the card has no settings file: saving would go to another card or be overwritten.
    if (isFormatting())
        return onFormat();
    if (work != Work::none || refusesInput())
        return;
    populate();
    afterSave = next;
    SaveRequest request{.record = FinishedFileData(m_FileData)};
    request.card.path = m_SettingFilePath;
    request.card.disk = selectedUSBDisk;
    request.known = fileDataRead;
    save(request);
}

void ZVKSettingController::save(const SaveRequest& request)
{
    setWork(Work::saving);
    desktop.dispatcher.inBackgroundThen(
        [&disks = desktop.disks, request] { return outcomeOf([&] { return saveToCard(request, disks); }); },
        life.guarded([this, request](const SaveOutcome& outcome) { saveDidEnd(request, outcome); }));
}

void ZVKSettingController::saveDidEnd(const SaveRequest& request, const SaveOutcome& outcome)
{
    using Kind = SaveOutcome::Kind;
    setWork(Work::none);
    if (outcome.kind != Kind::otherCard && outcome.kind != Kind::noCard) {
        CardSettings card = outcome.card;
        card.driveLog = card.disk && selectedUSBDisk ? cardShown.driveLog : std::string();
        card.emptyCard = card.disk ? std::nullopt : cardShown.emptyCard;
        card.refusal = cardShown.refusal;
        showCard(card);
    }
    switch (outcome.kind) {
    case Kind::saved:
        m_FileData = request.record.record();
        fileDataPrevious = outcome.before ? outcome.before : fileDataPrevious;
        fileDataRead = m_FileData;
        return saved(outcome);
    case Kind::noCard:
        if (!request.card.disk)
            return saveWhereTheUserSays();
        return showAlertSheet(desktop.alerts, *view, "ZAVIK",
            localized("setting.card_gone")
                .arg(QString::fromStdString(request.card.disk->displayString()).trimmed())
                .toStdString(),
            life.guarded([this] { saveWhereTheUserSays(); }));
    case Kind::otherCard:
        return askForOtherCard(request, outcome);
    case Kind::othersSettings:
        return askForOthersSettings(request, outcome);
    case Kind::failed:
    case Kind::cannotKeep:
        return tellFailure(outcome);
    }
}

void ZVKSettingController::askForOtherCard(SaveRequest request, const SaveOutcome& outcome)
{
    const QString card = QString::fromStdString(outcome.disk->displayString()).trimmed();
    desktop.alerts.ask(*view, text("msg.other_card_title"),
        localized("msg.other_card").arg(card).toStdString(), {text("msg.save_to_it"), text("cancel")},
        life.guarded([this, request = std::move(request)](size_t answer) mutable {
            request.mayBeOtherCard = true;
            if (answer == 0)
                save(request);
            else
                afterSave = {};
        }));
}

void ZVKSettingController::askForOthersSettings(SaveRequest request, const SaveOutcome& outcome)
{
    desktop.alerts.ask(*view, outcome.path,
        text(fileDataRead ? "msg.others_settings" : "msg.others_settings_unread"),
        {text("msg.replace_them"), text("msg.show_them"), text("cancel")},
        life.guarded([this, request = std::move(request), theirs = *outcome.before, disk = outcome.disk,
                         path = outcome.path](size_t answer) mutable {
            if (answer == 0) {
                // Only these settings on that card may be replaced; if they change meanwhile, the user is
                // asked again.
                request.known = theirs;
                request.card.disk = disk;
                save(request);
                return;
            }
            afterSave = {};
            if (answer == 1) {
                CardSettings card = cardShown;
                card.path = path;
                card.disk = disk;
                card.emptyCard.reset();
                showCard(card);
                fileDataRead = theirs;
                showRecord(theirs);
                showNotice();
            }
        }));
}

void ZVKSettingController::saveWhereTheUserSays()
{
    platform::SavePanel panel{text("panel.save_settings"), cardFiles::settings, {}};
    panel.hidesHiddenFiles = true;
    panel.asksBeforeReplacing = true;
    desktop.panels.chooseSaveFile(*view, panel, life.guarded([this](const std::optional<std::string>& path) {
        if (path)
            saveToFile(*path);
        else
            afterSave = {};
    }));
}

void ZVKSettingController::saveToFile(const std::string& path)
{
    setWork(Work::saving);
    const FinishedFileData record(m_FileData);
    const auto save = [path, record] {
        SaveOutcome outcome;
        const auto place = FilePlace::chosen(path);
        outcome.path = place.path();
        outcome.error = saveFileData(record, place);
        outcome.kind = outcome.error ? SaveOutcome::Kind::failed : SaveOutcome::Kind::saved;
        return outcome;
    };
    desktop.dispatcher.inBackgroundThen(save, life.guarded([this, record](const SaveOutcome& outcome) {
        setWork(Work::none);
        if (outcome.error)
            return tellFailure(outcome);
        m_FileData = record.record();
        saved(outcome);
    }));
}

/// The user reads of it, and then the window goes.
void ZVKSettingController::saved(const SaveOutcome& outcome)
{
    fileDataShown = m_FileData;
    fileDataReplaced.reset();
    if (targetController)
        targetController->setFileData(&m_FileData);
    showNotice();
    const QString message = outcome.keptAs.empty()
        ? localized("msg.saved")
        : localized("msg.saved_previous_kept").arg(QString::fromStdString(outcome.keptAs));
    showAlertSheet(desktop.alerts, *view, outcome.path, message.toStdString(),
        life.guarded([this, next = std::exchange(afterSave, {})] { next ? later(next) : onCloseCmd(); }));
    if (delegate)
        delegate->setDisplayMile(m_FileData.speed_disp_unit);
}

void ZVKSettingController::tellFailure(const SaveOutcome& outcome)
{
    afterSave = {};
    logFormat("cannot save %s: %s", outcome.path.c_str(), outcome.error.text().c_str());
    const QString message = outcome.kind == SaveOutcome::Kind::cannotKeep
        ? localized("msg.cannot_keep") + QStringLiteral("\n") + writeFailureText(outcome.error, outcome.path)
        : writeFailureText(outcome.error, outcome.path);
    showAlert(desktop.alerts, *view, "Warn", message.toStdString());
}
