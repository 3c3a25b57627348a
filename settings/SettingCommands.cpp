// What the settings window's buttons and keys do.

#include "settings/ZVKSettingController.h"

#include "cardtools/ZVKFormatWindowController.h"
#include "common/Alerts.h"
#include "platform/Texts.h"
#include "ui_ZVKSettingController.h"

#include <QKeySequence>
#include <QShortcut>

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
    const auto onKey = [this](const QKeySequence& key, QWidget* where, auto work) {
        QObject::connect(new QShortcut(key, where), &QShortcut::activated, view.get(), work);
    };
    // What the loading sheet covers hears no keys; closing is always possible.
    onKey(Qt::Key_Escape, view.get(), [this] { onCloseCmd(); });
    onKey(QKeySequence::Close, view.get(), [this] { onCloseCmd(); });
    onKey(Qt::CTRL | Qt::Key_S, outlets->contentBox, [this] { onSave(); });
    onKey(Qt::CTRL | Qt::Key_Tab, outlets->contentBox, [this] { stepTab(1); });
    onKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, outlets->contentBox, [this] { stepTab(-1); });
    for (int tab = 0; tab < int(tabs.size()); ++tab)
        onKey(QKeySequence(Qt::CTRL | Qt::Key(Qt::Key_1 + tab)), outlets->contentBox,
            [this, tab] { changeViewController(tab); });
    QObject::connect(outlets->functionSegmentedControl, &platform::SegmentedControl::segmentClicked,
        view.get(), [this](int tab) { changeViewController(tab); });
}

void ZVKSettingController::onSave()
{
    // The card has no settings now: they would go to another card, or be overwritten by the ones from before.
    if (isFormatting())
        return onFormat();
    if (reading || refusesInput())
        return;
    populate();
    finishFileData(m_FileData);
    CardSettings card{m_SettingFilePath, selectedUSBDisk};
    if (const auto path = settingsPathToWrite(card, desktop.disks)) {
        showCard(card);
        // What was read from another file is not what this one held.
        const bool wasRead = *path == m_SettingFilePath;
        tellSaved(*path, saveFileDataKeeping(m_FileData, *path, wasRead ? fileDataRead : std::nullopt));
    } else {
        saveWhereTheUserSays();
    }
}

void ZVKSettingController::saveWhereTheUserSays()
{
    platform::SavePanel panel{platform::localized("panel.save_settings").toStdString(), "config.bin", {}};
    panel.hidesHiddenFiles = true;
    panel.asksBeforeReplacing = true;
    desktop.panels.chooseSaveFile(
        *view, panel, [this, life = std::weak_ptr(alive)](const std::optional<std::string>& path) {
            if (path && !life.expired())
                tellSaved(*path, {saveFileData(m_FileData, *path)});
        });
}

void ZVKSettingController::tellSaved(const std::string& path, const SaveResult& result)
{
    if (result.failure) {
        showAlert(
            desktop.alerts, *view, "Warn", platform::localized("msg.write_protected_disk").toStdString());
        return;
    }
    if (path == m_SettingFilePath)
        fileDataRead = m_FileData;
    const QString text = platform::localized(result.keptPrevious ? "msg.saved_previous_kept" : "msg.saved");
    showAlertSheet(desktop.alerts, *view, path, text.toStdString(), [this, life = std::weak_ptr(alive)] {
        if (!life.expired())
            onCloseCmd();
    });
    if (delegate)
        delegate->setDisplayMile(m_FileData.speed_disp_unit);
}

void ZVKSettingController::onSaveDefaultSetting()
{
    initFileDataForRegion(m_FileData, m_bKorean);
    if (targetController)
        targetController->setFileData(&m_FileData);
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
        lastDialogController = std::make_unique<ZVKFormatWindowController>(desktop);
    lastDialogController->showWindow();
}

bool ZVKSettingController::isFormatting() const
{
    return lastDialogController && lastDialogController->isFormatting();
}
