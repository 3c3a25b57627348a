#pragma once

#include "cardtools/clock/TimeSet.h"
#include "cardtools/volumes/TKUSBDiskEntity.h"
#include "common/FilePlace.h"
#include "common/Life.h"
#include "lib/WindowController.h"
#include "platform/Platform.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>
#include <QTime>

#include <functional>
#include <memory>
#include <optional>
#include <string>

class LoadingSheet;

namespace Ui {
class ZVKTimeSetupController;
}

/// The window that sets the camera's clock: it writes the chosen day and time into `timeset.cfg`, on the card
/// that holds one when the window is loaded, otherwise where the user says. The card is looked for and
/// written in the background behind the loading sheet. Main thread only.
class ZVKTimeSetupController : public WindowController {
public:
    using Now = std::function<QDateTime()>;

    /// `language` is the interface language, "en" or "ko". `now` is asked for the user's local time.
    ZVKTimeSetupController(
        platform::Platform& desktop, const std::string& language,
        Now now = [] { return QDateTime::currentDateTime(); });
    ~ZVKTimeSetupController() override;

    void showWindow() override;
    QWidget& window() override;
    void letGo(std::function<void()> next) override;

private:
    void windowDidLoad();
    void onInitDIalog();
    void setTexts();
    void setCalendarColors();
    void connectOutlets();
    void loadSettingFile();
    void showSelectedDate();
    void daySelectedFromPicker();
    void timeSelectedFromPicker(QTime time);
    void timeSelectedFromClickTimePicker(QTime time);
    void nowDayChecked();
    void openSavePanel(std::function<void(std::optional<std::string>)> answer);
    void onSaveConfigFile();
    void setWorking(bool isWorking, const char* titleKey);
    void doWriteConfigFile(std::function<FilePlace()> place);
    void saveDidEnd(FileError error, const std::string& path);
    void didEndAlert();
    void onCloseCmd();
    QString fullDate(QDate date) const { return locale.toString(date, QLocale::LongFormat); }
    QString mediumDate(QDate date) const;

    platform::Platform& desktop;
    Now now;
    QLocale locale;
    std::optional<std::string> m_SettingFilePath;
    std::optional<TKUSBDiskEntity> card; // of that file
    bool isWorking = false;
    bool isSaving = false;
    std::function<void()> afterSave;
    std::function<void()> takeHangAlertAway;
    LoadingSheet* progressPanel = nullptr;
    QDate selectedDate;
    QTime selectedTime;
    std::unique_ptr<Ui::ZVKTimeSetupController> outlets;
    std::unique_ptr<QWidget> loaded;
    Life life;
};
