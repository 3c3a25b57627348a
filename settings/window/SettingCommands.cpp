// What the settings window's buttons and keys do.

#include "settings/window/ZVKSettingController.h"

#include "common/CardFiles.h"
#include "lib/Alerts.h"
#include "lib/InterfaceHelpers.h"
#include "lib/LoadingSheet.h"
#include "platform/Texts.h"
#include "settings/window/NoticeBar.h"
#include "ui_ZVKSettingController.h"

#include <QKeySequence>
#include <QShortcut>

#include <cstring>
#include <utility>

void ZVKSettingController::connectControls()
{
    using Self = ZVKSettingController;
    struct Row {
        QPushButton* button;
        const char* textKey;
        void (Self::*action)();
        QKeySequence key;
    };
    const Row rows[] = {
        {outlets->sdcardFormatButton, "setting.sdcardformat", &Self::onFormat, {}},
        {outlets->resetButton, "setting.initialize", &Self::onSaveDefaultSetting, {}},
        {outlets->previousButton, "setting.previous", &Self::onPreviousSetting, {}},
        {outlets->diskUtilButton, "setting.diskutil", &Self::onDiskUtil, {}},
        {outlets->cancelButton, "cancel", &Self::onCloseCmd, Qt::Key_Escape},
        {outlets->saveButton, "save", &Self::onSave, Qt::CTRL | Qt::Key_S},
    };
    for (const Row& row : rows) {
        row.button->setText(platform::localized(row.textKey));
        row.button->setAutoDefault(true);
        QObject::connect(row.button, &QPushButton::clicked, view.get(),
            [this, action = row.action] { (this->*action)(); });
        if (row.key.isEmpty())
            continue;
        row.button->setToolTip(
            QStringLiteral("%1 (%2)").arg(row.button->text(), row.key.toString(QKeySequence::NativeText)));
    }
    explain(*outlets->resetButton, "setting.initialize_tip");
    explain(*outlets->previousButton, "setting.previous_tip");
    const auto onKey = [this](const QKeySequence& key, QWidget* where, auto action) {
        QObject::connect(new QShortcut(key, where), &QShortcut::activated, view.get(), action);
    };
    // Behind the loading sheet keys do nothing, except for closing.
    onKey(Qt::Key_Escape, view.get(), [this] { onCloseCmd(); });
    onKey(QKeySequence::Close, view.get(), [this] { onCloseCmd(); });
    onKey(Qt::CTRL | Qt::Key_S, outlets->contentBox, [this] { onSave(); });
    onKey(Qt::CTRL | Qt::Key_Tab, outlets->contentBox, [this] { stepTab(1); });
    onKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, outlets->contentBox, [this] { stepTab(-1); });
    for (int tab = 0; tab < int(tools.tabs.size()); ++tab)
        onKey(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + tab)), outlets->contentBox,
            [this, tab] { changeViewController(tab); });
    QObject::connect(outlets->functionSegmentedControl, &SegmentedControl::segmentClicked, view.get(),
        [this](int tab) { changeViewController(tab); });
}

/// What the page on screen holds comes along when it is valid, so that taking back brings it, too.
void ZVKSettingController::replaceAll(const _FILEDATA& record, const char* noticeKey)
{
    if (!validateUserInput())
        populate();
    if (!fileDataReplaced)
        fileDataReplaced = m_FileData;
    replacedNoticeKey = noticeKey;
    m_FileData = record;
    if (targetController)
        targetController->setFileData(&m_FileData);
    showNotice();
}

void ZVKSettingController::onSaveDefaultSetting()
{
    _FILEDATA record;
    initFileDataForRegion(record, m_bKorean);
    replaceAll(record, "setting.all_defaults");
}

void ZVKSettingController::onPreviousSetting()
{
    if (fileDataPrevious)
        replaceAll(*fileDataPrevious, "setting.all_previous");
}

void ZVKSettingController::takeBack()
{
    if (fileDataReplaced)
        m_FileData = *std::exchange(fileDataReplaced, std::nullopt);
    if (targetController)
        targetController->setFileData(&m_FileData);
    showNotice();
}

bool ZVKSettingController::hasChanges() const
{
    return std::memcmp(&m_FileData, &fileDataShown, sizeof m_FileData) != 0
        || (targetController && targetController->isTouched());
}

/// False when the window is to stay; then the user is asked or told.
bool ZVKSettingController::mayClose()
{
    if (!view->isVisible() || (work == Work::saving && !progressPanel->isVisible()))
        return true;
    if (work == Work::saving)
        return false;
    if (work == Work::reading || !hasChanges())
        return true;
    letGo([this] { onCloseCmd(); });
    return false;
}

/// What may end this window waits until nothing of it is at work: its sheet, its closing.
void ZVKSettingController::later(std::function<void()> next)
{
    desktop.dispatcher.onMain(life.guarded(std::move(next)));
}

void ZVKSettingController::letGo(std::function<void()> next)
{
    if (work == Work::saving) {
        // The result of the save is shown first.
        afterSave = std::move(next);
        return showWindow();
    }
    if (!view || !view->isVisible() || work != Work::none || !hasChanges())
        return next();
    view->raise();
    view->activateWindow();
    const auto text = [](const char* key) { return platform::localized(key).toStdString(); };
    desktop.alerts.ask(*view, text("msg.unsaved_title"), text("msg.unsaved"),
        {text("save"), text("msg.do_not_save"), text("msg.go_on_editing")},
        life.guarded([this, go = std::move(next)](size_t answer) {
            if (answer > 1)
                return;
            if (answer == 0) {
                afterSave = go;
                onSave();
                return;
            }
            m_FileData = fileDataShown;
            fileDataReplaced.reset();
            if (targetController)
                targetController->setFileData(&m_FileData);
            later(go);
        }));
}

void ZVKSettingController::onCloseCmd()
{
    view->close();
}

void ZVKSettingController::onDiskUtil()
{
    if (!desktop.scripts.launchApplication("Disk Utility"))
        showAlert(desktop.alerts, *view, "ZAVIK", platform::localized("msg.no_disk_utility").toStdString());
}

void ZVKSettingController::onFormat()
{
    // The window of a card that is being formatted stays.
    if (!isFormatting())
        lastDialogController = tools.makeFormatWindow(desktop, *this);
    lastDialogController->showWindow();
}

bool ZVKSettingController::isFormatting() const
{
    return lastDialogController && lastDialogController->isFormatting();
}

/// A page that is made meanwhile must not read from the card.
void ZVKSettingController::letGoOf(const std::string& mountPath)
{
    if (selectedUSBDisk && selectedUSBDisk->mountedURL == mountPath) {
        cardFollower.follow({});
        cardLetGo = std::exchange(selectedUSBDisk, std::nullopt);
    }
    cardShown.driveLog.clear();
    if (driveInfoController && driveInfoController->holds(mountPath)) {
        const bool isOnScreen = targetController == driveInfoController;
        if (isOnScreen)
            hidePage();
        delete std::exchange(driveInfoController, nullptr);
        if (isOnScreen)
            showPage(lastSelectedTabIndex);
    }
    if (delegate)
        delegate->letGoOf(mountPath);
}

/// The edited values stay; the card has the settings that it had.
void ZVKSettingController::cardFormatted(const std::string& from, const std::string& to)
{
    if (cardLetGo) {
        CardSettings card = cardShown;
        card.disk = std::exchange(cardLetGo, std::nullopt);
        if (!to.empty()) {
            card.disk->mountedURL = to;
            card.path = to + "/" + cardFiles::settings;
        }
        showCard(card);
    }
    lookForCards();
    if (delegate)
        delegate->cardFormatted(from, to);
}
