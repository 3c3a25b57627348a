#pragma once

#include "cardtools/PathFollower.h"
#include "common/WindowController.h"
#include "settings/CardSettings.h"
#include "settings/SettingPages.h"

#include <memory>
#include <optional>
#include <string>

class LoadingSheet;
class ZVKFormatWindowController;

namespace Ui {
class ZVKSettingController;
}

/// Whom the settings window tells about the unit of speed and asks about its card.
class viewControllerForZVKSettingDelegate {
public:
    virtual ~viewControllerForZVKSettingDelegate() = default;

    /// The speed_disp_unit that was saved.
    virtual void setDisplayMile(uint32_t value) = 0;
    /// Whether something of the volume that is mounted there is open: it must not be unmounted.
    virtual bool isInUse(const std::string&) const { return false; }
};

/// The window in which the user edits the camera's settings: one page at a time under a row of tabs, and the
/// card tools. It holds the one live record, which begins with the defaults; the card is looked for and read
/// in the background when the window opens, and what was read is shown in one step. A card that nobody uses
/// gets the camera's name then. When the card moves to another path, the window saves there. Until then
/// nothing can be edited or saved. Closing the window drops what was not saved. Main thread only.
class ZVKSettingController final : public WindowController, public SettingPageHost {
public:
    /// `language` as the main controller's: "ko" chooses the Korean defaults.
    ZVKSettingController(platform::Platform& desktop, std::string language, SettingTabs tabs = settingTabs());
    ~ZVKSettingController() override;

    /// The delegate lives longer than the window.
    void setDelegate(viewControllerForZVKSettingDelegate* receiver) { delegate = receiver; }

    void showWindow() override;
    QWidget& window() override;

    _FILEDATA* filedata() { return &m_FileData; }

    /// Shows the page of the tab (0 to 5), unless the page on screen has invalid input: then it stays and the
    /// user is told.
    void changeViewController(int tab);
    /// Writes the record to the card's config.bin, or where the user says when there is no card.
    void onSave();
    void onSaveDefaultSetting();
    void onCloseCmd();
    void onDiskUtil();
    void onFormat();
    /// A card is being formatted: a window that tells its end is needed until then.
    bool isFormatting() const;

    void showLoading(const QString& title) override;
    void hideLoading() override;
    void setLoadingTitle(const QString& title) override;

private:
    void windowDidLoad();
    void connectControls();
    void centre();
    void onInitDIalog();
    void loadSettingFile();
    void cardFound(const CardSettings& found);
    void showCard(const CardSettings& card);
    void cardMoved(const std::string& path);
    void readCard(const CardSettings& card);
    void settingsRead(const std::optional<_FILEDATA>& record);
    void setReading(bool isReading);
    void showTitle();
    std::optional<QString> validateUserInput();
    void populate();
    bool refusesInput();
    void hidePage();
    void showPage(int tab);
    SettingPage& createDriveInfoController(const SettingTab& tab);
    std::unique_ptr<SettingPage> madePage(const SettingTab& tab);
    void putPageIntoTabOrder();
    void stepTab(int step);
    void saveWhereTheUserSays();
    void tellSaved(const std::string& path, const SaveResult& result);

    platform::Platform& desktop;
    std::string language;
    SettingTabs tabs;
    bool m_bKorean;
    _FILEDATA m_FileData;
    /// What the card's file held when it was read.
    std::optional<_FILEDATA> fileDataRead;
    std::string m_SettingFilePath;
    std::optional<TKUSBDiskEntity> selectedUSBDisk;
    std::string m_strVersion;
    bool reading = false;
    int lastSelectedTabIndex = -1;
    std::unique_ptr<QWidget> view;
    std::unique_ptr<Ui::ZVKSettingController> outlets;
    LoadingSheet* progressPanel = nullptr;
    SettingPage* targetController = nullptr;
    SettingPage* driveInfoController = nullptr;
    std::unique_ptr<ZVKFormatWindowController> lastDialogController;
    viewControllerForZVKSettingDelegate* delegate = nullptr;
    PathFollower cardFollower; // of config.bin
    std::shared_ptr<const bool> alive = std::make_shared<bool>(true);
};
