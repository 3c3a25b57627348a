#pragma once

#include "cardtools/volumes/CardHolder.h"
#include "cardtools/volumes/PathFollower.h"
#include "common/Life.h"
#include "lib/WindowController.h"
#include "settings/window/CardSettings.h"
#include "settings/window/SettingTools.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class LoadingSheet;

namespace Ui {
class ZVKSettingController;
}

/// Whom the settings window tells about the unit of speed and asks about its card.
class viewControllerForZVKSettingDelegate : public CardHolder {
public:
    /// The speed_disp_unit that was saved.
    virtual void setDisplayMile(uint32_t value) = 0;
    /// Whether something of the volume that is mounted there is open: it must not be unmounted.
    virtual bool isInUse(const std::string&) const { return false; }
    void letGoOf(const std::string&) override { }
    void cardFormatted(const std::string&, const std::string&) override { }
};

/// The window in which the user edits the camera's settings: one page at a time under a row of tabs, and the
/// card tools. It holds the one live record, which begins with the defaults. The card is looked for, read and
/// written in the background behind the loading sheet, and what was read is shown in one step; meanwhile
/// nothing can be edited or saved. A card that is not in use is renamed to "ZAVIK" then. When the card moves
/// to another path, the window saves there. Before unsaved changes are dropped the user is asked. Main thread
/// only.
class ZVKSettingController final : public WindowController, public SettingPageHost, public CardHolder {
public:
    /// `language` as the main controller's: "ko" chooses the Korean defaults.
    ZVKSettingController(platform::Platform& desktop, std::string language, SettingTools tools);
    ~ZVKSettingController() override;

    /// The delegate lives longer than the window.
    void setDelegate(viewControllerForZVKSettingDelegate* receiver) { delegate = receiver; }

    void showWindow() override;
    QWidget& window() override;
    void letGo(std::function<void()> next) override;

    _FILEDATA* filedata() { return &m_FileData; }

    /// Shows the page of the tab (0 to 5), unless the page on screen has invalid input: then it stays and the
    /// user is told.
    void changeViewController(int tab);
    /// Writes the record to the card's config.bin, or where the user says when there is no card.
    void onSave();
    /// Every page gets the defaults, until a save to be taken back.
    void onSaveDefaultSetting();
    /// The same with the record from before the latest save, which lies beside the card's settings.
    void onPreviousSetting();
    void onCloseCmd();
    void onDiskUtil();
    void onFormat();
    /// A card is being formatted: the window is needed to report the result.
    bool isFormatting() const;

    void letGoOf(const std::string& mountPath) override;
    void cardFormatted(const std::string& from, const std::string& to) override;

    void showLoading(const QString& title) override;
    void hideLoading() override;

private:
    enum class Work { none, reading, saving };

    void windowDidLoad();
    void connectControls();
    void centre();
    void onInitDIalog();
    void setWork(Work now);
    void showTitle();

    void loadSettingFile();
    void cardFound(const CardSettings& found);
    void showCard(const CardSettings& card);
    void cardMoved(const std::string& path);
    void readCard(const CardSettings& card);
    void settingsRead(const ReadSettings& read);
    void showRecord(const _FILEDATA& record);
    void tellThatTheCardHangs();
    void lookForCards();
    void cardsSeen(const CardSettings& found, const std::vector<TKUSBDiskEntity>& present);
    void editCard();
    void showNotice();
    QString noticeText() const;

    std::optional<QString> validateUserInput();
    void populate();
    bool refusesInput();
    void hidePage();
    void showPage(int tab);
    SettingPage& createDriveInfoController(const SettingTab& tab);
    std::unique_ptr<SettingPage> madePage(const SettingTab& tab);
    void putPageIntoTabOrder();
    void stepTab(int step);

    bool hasChanges() const;
    bool mayClose();
    void later(std::function<void()> next);
    void replaceAll(const _FILEDATA& record, const char* noticeKey);
    void takeBack();
    void save(const SaveRequest& request);
    void saveDidEnd(const SaveRequest& request, const SaveOutcome& outcome);
    void askForOtherCard(SaveRequest request, const SaveOutcome& outcome);
    void askForOthersSettings(SaveRequest request, const SaveOutcome& outcome);
    void saveWhereTheUserSays();
    void saveToFile(const std::string& path);
    void saved(const SaveOutcome& outcome);
    void tellFailure(const SaveOutcome& outcome);

    platform::Platform& desktop;
    std::string language;
    SettingTools tools;
    bool m_bKorean;
    _FILEDATA m_FileData;
    /// The record without what the user has changed.
    _FILEDATA fileDataShown;
    /// What the card's file held when it was read or written.
    std::optional<_FILEDATA> fileDataRead;
    std::optional<_FILEDATA> fileDataPrevious;
    /// What all pages were given at once, the notice about it, and what can be taken back.
    std::optional<_FILEDATA> fileDataReplaced;
    const char* replacedNoticeKey = nullptr;
    std::string m_SettingFilePath;
    std::optional<TKUSBDiskEntity> selectedUSBDisk;
    /// The rest of what is known of the cards.
    CardSettings cardShown;
    std::optional<CardSettings> cardOffered;
    bool isCardGone = false;
    std::string cardRoot;
    std::optional<TKUSBDiskEntity> cardLetGo; // while it is being formatted
    std::string m_strVersion;
    Work work = Work::none;
    std::function<void()> afterSave;
    std::function<void()> takeHangAlertAway;
    int lastSelectedTabIndex = -1;
    std::unique_ptr<QWidget> view;
    std::unique_ptr<Ui::ZVKSettingController> outlets;
    LoadingSheet* progressPanel = nullptr;
    SettingPage* targetController = nullptr;
    SettingPage* driveInfoController = nullptr;
    std::unique_ptr<FormattingWindow> lastDialogController;
    viewControllerForZVKSettingDelegate* delegate = nullptr;
    PathFollower cardFollower; // of config.bin
    std::unique_ptr<platform::MountWatch> mountWatch;
    Life life;
};
