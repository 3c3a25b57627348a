// The card whose settings are edited: how it is found, read and told of.

#include "settings/window/ZVKSettingController.h"

#include "cardtools/volumes/Volumes.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "lib/LoadingSheet.h"
#include "platform/Texts.h"
#include "settings/window/NoticeBar.h"
#include "ui_ZVKSettingController.h"

#include <QPushButton>

#include <algorithm>
#include <filesystem>

using platform::localized;

namespace {

QString shownName(const TKUSBDiskEntity& disk)
{
    return QString::fromStdString(disk.displayString()).trimmed();
}

} // namespace

void ZVKSettingController::loadSettingFile()
{
    // Removes the settings of the card before from the screen.
    initFileDataForRegion(m_FileData, m_bKorean);
    showRecord(m_FileData);
    fileDataRead.reset();
    fileDataPrevious.reset();
    setWork(Work::reading);
    showNotice();
    desktop.dispatcher.inBackgroundThen([&disks = desktop.disks] { return findUSBVolume(disks); },
        life.guarded([this](const CardSettings& found) { cardFound(found); }));
}

/// A card is named before it is read, unless it is in use.
void ZVKSettingController::cardFound(const CardSettings& found)
{
    if (isNamedAsCard(found) || (delegate && delegate->isInUse(found.disk->mountedURL))) {
        readCard(found);
        return;
    }
    const auto name = [&disks = desktop.disks, found] {
        const NamedCard named = nameAsCard(found, disks);
        if (!named.failure.empty())
            logFormat("cannot rename the card: %s", named.failure.c_str());
        return named.card;
    };
    desktop.dispatcher.inBackgroundThen(
        name, life.guarded([this](const CardSettings& named) { readCard(named); }));
}

void ZVKSettingController::showCard(const CardSettings& card)
{
    cardShown = card;
    m_SettingFilePath = card.path;
    selectedUSBDisk = card.disk;
    const auto& disk = card.disk ? card.disk : card.emptyCard;
    cardRoot = disk ? disk->mountedURL : std::string();
    isCardGone = false;
    cardOffered.reset();
    cardFollower.follow(m_SettingFilePath);
    showTitle();
    showNotice();
}

void ZVKSettingController::cardMoved(const std::string& path)
{
    CardSettings card = cardShown;
    card.path = path;
    const std::filesystem::path root = std::filesystem::path(path).parent_path();
    if (!card.driveLog.empty())
        card.driveLog = (root / std::filesystem::path(card.driveLog).lexically_relative(cardRoot)).native();
    card.disk->mountedURL = root.native();
    showCard(card);
}

void ZVKSettingController::readCard(const CardSettings& card)
{
    showCard(card);
    if (!card.disk) {
        setWork(Work::none);
        showNotice();
        return;
    }
    // Its own buffer: the live record changes on the main thread only.
    desktop.dispatcher.inBackgroundThen([card] { return readCardSettings(card); },
        life.guarded([this](const ReadSettings& read) { settingsRead(read); }));
}

void ZVKSettingController::settingsRead(const ReadSettings& read)
{
    fileDataRead = read.record;
    fileDataPrevious = read.previous;
    if (read.error)
        logFormat("cannot read %s: %s", m_SettingFilePath.c_str(), read.error.text().c_str());
    if (read.record)
        showRecord(*read.record);
    else if (view->isVisible())
        showAlert(desktop.alerts, *view, "Warn", localized("msg.settings_unreadable").toStdString());
    setWork(Work::none);
    showNotice();
}

/// Shows the record as unchanged.
void ZVKSettingController::showRecord(const _FILEDATA& record)
{
    m_FileData = record;
    fileDataShown = record;
    fileDataReplaced.reset();
    if (targetController)
        targetController->setFileData(&m_FileData);
}

/// The sheet has gone by itself; a later result is still shown.
void ZVKSettingController::tellThatTheCardHangs()
{
    if (work != Work::none && view->isVisible())
        takeHangAlertAway = desktop.alerts.ask(*view, "Warn",
            localized(work == Work::reading ? "msg.reading_hangs" : "msg.saving_hangs").toStdString(),
            {localized("format.ok").toStdString()}, {});
}

/// A card was put in or pulled, or something else was mounted.
void ZVKSettingController::lookForCards()
{
    struct Cards {
        CardSettings found;
        std::vector<TKUSBDiskEntity> present;
    };
    desktop.dispatcher.inBackgroundThen(
        [&disks = desktop.disks] {
            return Cards{findUSBVolume(disks), usbDiskEntities(disks)};
        },
        life.guarded([this](const Cards& cards) { cardsSeen(cards.found, cards.present); }));
}

void ZVKSettingController::cardsSeen(const CardSettings& found, const std::vector<TKUSBDiskEntity>& present)
{
    if (work != Work::none || isFormatting())
        return;
    const auto isPresent = [&](const std::optional<TKUSBDiskEntity>& card) {
        return card && std::ranges::find(present, card->key, &TKUSBDiskEntity::key) != present.end();
    };
    isCardGone = selectedUSBDisk && !isPresent(selectedUSBDisk);
    if (selectedUSBDisk && found.disk && found.disk->key == selectedUSBDisk->key)
        cardShown.driveLog = found.driveLog;
    cardOffered.reset();
    if (found.disk && !isPresent(selectedUSBDisk))
        cardOffered = found;
    else if (!selectedUSBDisk && !found.disk)
        showCard(found);
    showNotice();
}

/// Shows the settings of the card that was found later.
void ZVKSettingController::editCard()
{
    letGo([this] {
        if (work == Work::none)
            loadSettingFile();
    });
}

void ZVKSettingController::showNotice()
{
    outlets->previousButton->setVisible(fileDataPrevious.has_value());
    if (fileDataReplaced)
        outlets->noticeBar->setNotice(
            localized(replacedNoticeKey), localized("setting.take_back"), [this] { takeBack(); });
    else if (cardOffered)
        outlets->noticeBar->setNotice(localized("setting.card_found").arg(shownName(*cardOffered->disk)),
            localized("setting.edit_card"), [this] { editCard(); });
    else
        outlets->noticeBar->setNotice(noticeText());
}

QString ZVKSettingController::noticeText() const
{
    if (work == Work::reading)
        return localized("setting.looking_for_card");
    if (isCardGone)
        return localized("setting.card_gone").arg(shownName(*selectedUSBDisk));
    if (const auto& card = cardLetGo ? cardLetGo : selectedUSBDisk)
        return localized(fileDataRead ? "setting.card" : "setting.card_unread").arg(shownName(*card));
    if (!cardShown.emptyCard)
        return localized("setting.no_card");
    const char* const key = cardShown.refusal ? "setting.card_refused" : "setting.card_empty";
    return localized(key).arg(shownName(*cardShown.emptyCard));
}
