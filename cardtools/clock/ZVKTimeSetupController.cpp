#include "cardtools/clock/ZVKTimeSetupController.h"

#include "cardtools/volumes/Volumes.h"
#include "common/CardFiles.h"
#include "common/CardRoot.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "lib/LoadingSheet.h"
#include "lib/WriteFailure.h"
#include "platform/Texts.h"
#include "ui_ZVKTimeSetupController.h"

#include <QDialog>
#include <QPalette>
#include <QTextCharFormat>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <utility>

using platform::localized;

namespace {

std::optional<TKUSBDiskEntity> cardAt(platform::DiskArbitration& disks, const std::string& mountPath)
{
    const auto present = usbDiskEntities(disks);
    const auto found = std::ranges::find(present, mountPath, &TKUSBDiskEntity::mountedURL);
    return found == present.end() ? std::nullopt : std::optional(*found);
}

} // namespace

ZVKTimeSetupController::ZVKTimeSetupController(
    platform::Platform& layer, const std::string& language, Now moment)
    : desktop(layer),
      now(std::move(moment)),
      locale(language == "ko" ? QLocale(QLocale::Korean, QLocale::SouthKorea)
                              : QLocale(QLocale::English, QLocale::UnitedStates))
{
}

ZVKTimeSetupController::~ZVKTimeSetupController() = default;

QWidget& ZVKTimeSetupController::window()
{
    if (!loaded) {
        auto dialog = std::make_unique<QDialog>();
        outlets = std::make_unique<Ui::ZVKTimeSetupController>();
        outlets->setupUi(dialog.get());
        loaded = std::move(dialog);
        windowDidLoad();
    }
    return *loaded;
}

void ZVKTimeSetupController::showWindow()
{
    window().show();
    window().raise();
    window().activateWindow();
}

/// Runs `next` now, or after the result of the running save has been shown.
void ZVKTimeSetupController::letGo(std::function<void()> next)
{
    if (!isSaving)
        return next();
    afterSave = std::move(next);
    showWindow();
}

void ZVKTimeSetupController::windowDidLoad()
{
    setTexts();
    setCalendarColors();
    progressPanel = new LoadingSheet(desktop.dispatcher, *outlets->contentBox);
    progressPanel->onTimeOut([this] {
        if (isWorking)
            takeHangAlertAway = desktop.alerts.ask(*loaded, "ZAVIK",
                localized("msg.card_hangs").toStdString(), {localized("format.ok").toStdString()}, {});
    });
    onInitDIalog();
    connectOutlets();
    // Return sets the clock to now; in the calendar it would only choose the day.
    outlets->saveButton->setFocus();
    loaded->adjustSize();
    loaded->setFixedSize(loaded->size());
    const platform::Rect visible = desktop.screens.screenOf(*loaded).visibleFrame;
    const double width = loaded->width();
    const double height = loaded->height();
    desktop.screens.setFrameOf(*loaded,
        {visible.x + (visible.width - width) / 2, visible.y + (visible.height - height) / 2, width, height});
}

void ZVKTimeSetupController::setTexts()
{
    loaded->setWindowTitle(localized("clock.window_title"));
    outlets->dateBox->setTitle(localized("clock.date"));
    outlets->timeBox->setTitle(localized("clock.time"));
    outlets->saveButton->setText(localized("save"));
    outlets->cancelButton->setText(localized("cancel"));
    outlets->datePicker->setLocale(locale);
    outlets->datePicker->setAccessibleName(localized("clock.date"));
    outlets->timePicker->setAccessibleName(localized("clock.time"));
    outlets->clockTimePicker->setAccessibleName(localized("clock.face"));
    outlets->clockTimePicker->setToolTip(localized("clock.face_tip"));
    outlets->clockTimePicker->setDayHalves(locale.amText(), locale.pmText());
}

/// The toolkit's red for weekends is too dark on this background; the background also fills the round
/// corners.
void ZVKTimeSetupController::setCalendarColors()
{
    QPalette palette = loaded->palette();
    QTextCharFormat plain;
    plain.setForeground(palette.color(QPalette::Text));
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        outlets->datePicker->setWeekdayTextFormat(day, plain);
    palette.setColor(QPalette::Window, palette.color(QPalette::Base));
    outlets->datePicker->setPalette(palette);
}

void ZVKTimeSetupController::connectOutlets()
{
    const auto& ui = *outlets;
    QObject::connect(
        ui.datePicker, &QCalendarWidget::selectionChanged, loaded.get(), [this] { daySelectedFromPicker(); });
    QObject::connect(ui.timePicker, &QTimeEdit::timeChanged, loaded.get(),
        [this](QTime time) { timeSelectedFromPicker(time); });
    QObject::connect(ui.clockTimePicker, &ClockFace::timeChanged, loaded.get(),
        [this](QTime time) { timeSelectedFromClickTimePicker(time); });
    QObject::connect(ui.nowDaySettingChk, &QCheckBox::clicked, loaded.get(), [this] { nowDayChecked(); });
    QObject::connect(ui.saveButton, &QPushButton::clicked, loaded.get(), [this] { onSaveConfigFile(); });
    QObject::connect(ui.cancelButton, &QPushButton::clicked, loaded.get(), [this] { onCloseCmd(); });
}

void ZVKTimeSetupController::onInitDIalog()
{
    loadSettingFile();
    const QDateTime moment = now();
    selectedDate = moment.date();
    selectedTime = QTime(moment.time().hour(), moment.time().minute(), moment.time().second());
    outlets->timePicker->setTime(selectedTime);
    outlets->clockTimePicker->setTime(selectedTime);
    showSelectedDate();
    outlets->nowDaySettingChk->setText(
        QStringLiteral("%1(%2)").arg(localized("today"), mediumDate(selectedDate)));
}

void ZVKTimeSetupController::loadSettingFile()
{
    setWorking(true, "loading");
    const auto find = [&disks = desktop.disks] {
        const auto volume = findUSBVolumeContainingPath(disks, cardFiles::clock);
        return volume ? cardAt(disks, *volume) : std::nullopt;
    };
    desktop.dispatcher.inBackgroundThen(
        find, life.guarded([this](const std::optional<TKUSBDiskEntity>& found) {
            card = found;
            if (found)
                m_SettingFilePath = (std::filesystem::path(found->mountedURL) / cardFiles::clock).native();
            setWorking(false, nullptr);
        }));
}

/// Saving is disabled while the clock file is looked for and while it is written.
void ZVKTimeSetupController::setWorking(bool on, const char* titleKey)
{
    isWorking = on;
    if (const auto takeAway = std::exchange(takeHangAlertAway, {}))
        takeAway();
    outlets->saveButton->setEnabled(!on);
    if (on)
        progressPanel->showLoading(localized(titleKey));
    else
        progressPanel->hideLoading();
}

QString ZVKTimeSetupController::mediumDate(QDate date) const
{
    const bool isKorean = locale.language() == QLocale::Korean;
    return locale.toString(date, isKorean ? QStringLiteral("yyyy. M. d.") : QStringLiteral("MMM d, yyyy"));
}

void ZVKTimeSetupController::showSelectedDate()
{
    const QDate date = selectedDate;
    outlets->datePicker->setSelectedDate(date);
    outlets->dateField->setText(fullDate(date));
}

void ZVKTimeSetupController::daySelectedFromPicker()
{
    selectedDate = outlets->datePicker->selectedDate();
    outlets->dateField->setText(fullDate(selectedDate));
}

void ZVKTimeSetupController::timeSelectedFromPicker(QTime time)
{
    selectedTime = time;
    outlets->clockTimePicker->setTime(time);
}

void ZVKTimeSetupController::timeSelectedFromClickTimePicker(QTime time)
{
    selectedTime = time;
    outlets->timePicker->setTime(time);
}

void ZVKTimeSetupController::nowDayChecked()
{
    selectedDate = now().date();
    showSelectedDate();
    outlets->nowDaySettingChk->setText(
        QStringLiteral("%1(%2)").arg(localized("today"), mediumDate(selectedDate)));
    desktop.dispatcher.after(std::chrono::milliseconds(200),
        life.guarded([this] { outlets->nowDaySettingChk->setChecked(false); }));
}

void ZVKTimeSetupController::openSavePanel(std::function<void(std::optional<std::string>)> answer)
{
    const platform::SavePanel panel{.title = localized("panel.save_clock").toStdString(),
        .name = "timeset",
        .folder = std::nullopt,
        .type = "cfg",
        .asksBeforeReplacing = true};
    desktop.panels.chooseSaveFile(*loaded, panel, std::move(answer));
}

void ZVKTimeSetupController::onSaveConfigFile()
{
    if (isWorking)
        return;
    outlets->timePicker->interpretText();
    if (m_SettingFilePath)
        return doWriteConfigFile([&disks = desktop.disks, known = *card] {
            // Another card may be mounted there now.
            const auto found = cardAt(disks, known.mountedURL);
            const bool isThere = found && found->key == known.key;
            return CardRoot(isThere ? known.mountedURL : std::string()).file(cardFiles::clock);
        });
    openSavePanel(life.guarded([this](const std::optional<std::string>& path) {
        if (path && !isWorking)
            doWriteConfigFile([chosen = *path] { return FilePlace::chosen(chosen); });
    }));
}

void ZVKTimeSetupController::doWriteConfigFile(std::function<FilePlace()> place)
{
    const TimeSet moment{selectedDate.year(), selectedDate.month(), selectedDate.day(), selectedTime.hour(),
        selectedTime.minute(), selectedTime.second()};
    isSaving = true;
    setWorking(true, "sheet.saving");
    struct Outcome {
        FileError error;
        std::string path;
    };
    const auto save = [moment, find = std::move(place)] {
        const FilePlace file = find();
        const SaveLock lock(file);
        const FileError error = lock.error() ? lock.error() : saveTimeSet(moment, file);
        if (error)
            logFormat("cannot save %s: %s", file.path().c_str(), error.text().c_str());
        return Outcome{error, file.path()};
    };
    desktop.dispatcher.inBackgroundThen(
        save, life.guarded([this](const Outcome& outcome) { saveDidEnd(outcome.error, outcome.path); }));
}

void ZVKTimeSetupController::saveDidEnd(FileError error, const std::string& path)
{
    isSaving = false;
    setWorking(false, nullptr);
    const auto next = std::exchange(afterSave, {});
    if (error)
        return showAlertSheet(desktop.alerts, *loaded, "ZAVIK",
            writeFailureText(error, path, "msg.write_failed").toStdString(), {});
    showAlertSheet(desktop.alerts, *loaded, "ZAVIK", "저장되었습니다", life.guarded([this, next] {
        didEndAlert();
        if (next)
            desktop.dispatcher.onMain(next);
    }));
}

void ZVKTimeSetupController::didEndAlert()
{
    loaded->close();
}

void ZVKTimeSetupController::onCloseCmd()
{
    loaded->close();
}
