#include "cardtools/ZVKFormatWindowController.h"

#include "cardtools/FormatReport.h"
#include "cardtools/FormatRule.h"
#include "cardtools/Volumes.h"
#include "common/Alerts.h"
#include "common/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "ui_ZVKFormatWindowController.h"

#include <QApplication>
#include <QEvent>
#include <QShortcut>

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <utility>

namespace {

using platform::localized;

constexpr double tickSeconds = 0.3;
constexpr auto tick = std::chrono::milliseconds(300);
constexpr double longestDisplay = 1000;

} // namespace

ZVKFormatWindowController::ZVKFormatWindowController(platform::Platform& layer)
    : desktop(layer)
{
}

ZVKFormatWindowController::~ZVKFormatWindowController() = default;

QWidget& ZVKFormatWindowController::window()
{
    if (!loaded) {
        loaded = std::make_unique<QWidget>();
        outlets = std::make_unique<Ui::ZVKFormatWindowController>();
        outlets->setupUi(loaded.get());
        windowDidLoad();
    }
    return *loaded;
}

void ZVKFormatWindowController::showWindow()
{
    window().show();
    window().raise();
    window().activateWindow();
}

void ZVKFormatWindowController::windowDidLoad()
{
    loaded->setWindowTitle(localized("setting.format.window_title"));
    outlets->usbDiskLabel->setText(localized("setting.format.card"));
    outlets->pathLabel->setText(localized("setting.format.device"));
    outlets->allocationUnitLabel->setText(localized("setting.format.allocation_unit_size"));
    outlets->fileSystemLabel->setText(localized("setting.format.filesystem"));
    outlets->formatButton->setText(localized("setting.format.format"));
    outlets->cancelButton->setText(localized("cancel"));
    outlets->hintLabel->setText(localized("format.hint"));
    outlets->usbDiskCombo->setAccessibleName(localized("setting.format.card"));
    outlets->pathField->setAccessibleName(localized("setting.format.device"));
    outlets->fileSystemField->setAccessibleName(localized("setting.format.filesystem"));
    outlets->allocationUnitField->setAccessibleName(localized("setting.format.allocation_unit_size"));
    outlets->fileSystemField->setText("FAT32");
    updateSelectedDiskInfo();
    stopProgressBar = true;
    setBarVisible(false);
    centre();
    connectControls();
    loadUSBVolumes();
}

void ZVKFormatWindowController::centre()
{
    // Room for bar and message is kept, so that nothing moves when they come and go.
    for (QWidget* const widget :
        std::initializer_list<QWidget*>{outlets->progressBar, outlets->progressMessageField}) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
    }
    const QSize size = loaded->sizeHint().expandedTo(loaded->minimumSize());
    const platform::Rect area = desktop.screens.screenOf(*loaded).visibleFrame;
    desktop.screens.setFrameOf(*loaded,
        {area.x + (area.width - size.width()) / 2, area.y + (area.height - size.height()) / 2,
            double(size.width()), double(size.height())});
}

void ZVKFormatWindowController::connectControls()
{
    connect(outlets->usbDiskCombo, &QComboBox::activated, this, [this] { changeDisk(); });
    connect(outlets->formatButton, &QPushButton::clicked, this, [this] { onFormat(); });
    connect(outlets->cancelButton, &QPushButton::clicked, this, [this] { cancel(); });
    const auto onKey = [this](QKeySequence key, auto action) {
        connect(new QShortcut(key, loaded.get()), &QShortcut::activated, this, action);
    };
    onKey(Qt::Key_Escape, [this] { cancel(); });
    onKey(Qt::Key_F5, [this] {
        if (!formatting)
            loadUSBVolumes([this, before = selectedUSBDisk()] { selectAgain(before); });
    });
}

std::function<void()> ZVKFormatWindowController::whileAlive(std::function<void()> work) const
{
    return [token = std::weak_ptr(alive), run = std::move(work)] {
        if (!token.expired())
            run();
    };
}

void ZVKFormatWindowController::loadUSBVolumes(std::function<void()> completion)
{
    const auto startedDisplay = std::make_shared<bool>(false);
    desktop.dispatcher.onMain(whileAlive([this, startedDisplay] {
        *startedDisplay = stopProgressBar;
        if (stopProgressBar)
            showProgressBar("Disk searching...");
        else
            outlets->progressMessageField->setText("Disk searching...");
    }));
    const auto found = std::make_shared<std::vector<TKUSBDiskEntity>>();
    const auto published = whileAlive([this, found, startedDisplay, next = std::move(completion)] {
        showDisks(std::move(*found));
        if (*startedDisplay && !formatting)
            hideProgressBar();
        if (next)
            next();
    });
    desktop.dispatcher.inBackground([&layer = desktop, found, published] {
        *found = usbDiskEntities(layer.disks);
        layer.dispatcher.onMain(published);
    });
}

void ZVKFormatWindowController::showDisks(std::vector<TKUSBDiskEntity> disks)
{
    usbDiskArray = std::move(disks);
    QStringList items;
    for (const TKUSBDiskEntity& disk : usbDiskArray)
        items.append(QString::fromStdString(disk.displayString()));
    setComboItems(*outlets->usbDiskCombo, items);
    outlets->usbDiskCombo->setPlaceholderText(
        localized(items.isEmpty() ? "format.no_card" : "format.choose_card"));
    outlets->usbDiskCombo->setCurrentIndex(items.isEmpty() ? -1 : 0);
    updateSelectedDiskInfo();
}

std::optional<TKUSBDiskEntity> ZVKFormatWindowController::selectedUSBDisk() const
{
    const int index = outlets ? outlets->usbDiskCombo->currentIndex() : -1;
    if (index < 0 || static_cast<size_t>(index) >= usbDiskArray.size())
        return {};
    return usbDiskArray[static_cast<size_t>(index)];
}

std::optional<TKUSBDiskEntity> ZVKFormatWindowController::selectUSBByDevFile(
    const std::string& deviceFilePath)
{
    const auto found = std::ranges::find(usbDiskArray, deviceFilePath, &TKUSBDiskEntity::deviceFilePath);
    if (found == usbDiskArray.end())
        return {};
    outlets->usbDiskCombo->setCurrentIndex(static_cast<int>(found - usbDiskArray.begin()));
    updateSelectedDiskInfo();
    return *found;
}

/// Where that card is not any more nothing is selected: the next press of the button must not mean another.
void ZVKFormatWindowController::selectAgain(const std::optional<TKUSBDiskEntity>& card)
{
    if (!card)
        return;
    const auto found = selectUSBByDevFile(card->deviceFilePath);
    if (found && found->key == card->key && found->volumeSize == card->volumeSize)
        return;
    outlets->usbDiskCombo->setCurrentIndex(-1);
    updateSelectedDiskInfo();
}

void ZVKFormatWindowController::updateSelectedDiskInfo()
{
    const auto card = selectedUSBDisk();
    const QString path = card
        ? QString::fromStdString(card->deviceFilePath) + "   " + QString::fromStdString(card->mountedURL)
        : QStringLiteral("-");
    outlets->pathField->setText(path);
    outlets->pathField->setCursorPosition(0);
    outlets->pathField->setToolTip(path);
    outlets->allocationUnitField->setText(card
            ? QStringLiteral("%1 KB").arg(clusterSizeByVolumeSizeInKB(card->volumeSize))
            : QStringLiteral("64KB"));
}

void ZVKFormatWindowController::onFormat()
{
    if (formatting)
        return;
    const auto card = selectedUSBDisk();
    if (!card && !usbDiskArray.empty())
        alert("ZAVIK", "Please select USB drive.");
    else if (!card) // a card that was put in meanwhile is listed after this
        alert("ZAVIK", "There is no USB drive.", [this] { loadUSBVolumes(); });
    else if (!card->writable)
        alert(localized("msg.cannot_format"),
            QString::fromStdString(card->displayString()) + "\n" + localized("msg.write_protected_disk"));
    else
        doFormat(*card);
}

void ZVKFormatWindowController::doFormat(const TKUSBDiskEntity& card)
{
    setFormatting(true);
    showProgressBar("Formatting...");
    const auto say = [&layer = desktop, token = std::weak_ptr(alive), this](const std::string& message) {
        layer.dispatcher.onMain([token, this, text = QString::fromStdString(message)] {
            if (!token.expired())
                outlets->progressMessageField->setText(text);
        });
    };
    const auto outcome = std::make_shared<CardFormat::Outcome>();
    const auto finished = whileAlive([this, outcome] { formatDidFinished(*outcome); });
    desktop.dispatcher.inBackground([&layer = desktop, card, say, outcome, finished] {
        *outcome = CardFormat(layer.scripts, layer.disks, say).run(card);
        layer.dispatcher.onMain(finished);
    });
}

void ZVKFormatWindowController::formatDidFinished(const CardFormat::Outcome& outcome)
{
    showDisks(outcome.disks);
    selectAgain(outcome.card);
    setFormatting(false);
    hideProgressBar();
    const FormatReport report = formatReport(outcome);
    alert(report.title, report.message, report.closesWindow ? [this] { cancel(); } : std::function<void()>());
}

void ZVKFormatWindowController::cancel()
{
    if (loaded)
        loaded->close();
}

void ZVKFormatWindowController::alert(
    const QString& title, const QString& message, std::function<void()> dismissed)
{
    showAlertSheet(desktop.alerts, window(), title.toStdString(), message.toStdString(),
        dismissed ? whileAlive(std::move(dismissed)) : std::function<void()>());
}

void ZVKFormatWindowController::setFormatting(bool on)
{
    if (formatting == on)
        return;
    formatting = on;
    outlets->usbDiskCombo->setEnabled(!on);
    outlets->formatButton->setEnabled(!on);
    if (on)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
}

bool ZVKFormatWindowController::eventFilter(QObject* watched, QEvent* event)
{
    const auto* const widget = qobject_cast<QWidget*>(watched);
    const bool closes =
        event->type() == QEvent::Close && widget && widget->isWindow() && widget->windowType() == Qt::Window;
    const bool quits = event->type() == QEvent::Quit && watched == qApp;
    if (!formatting || !(closes || quits))
        return false;
    event->ignore();
    tellThatItIsFormatting();
    return true;
}

void ZVKFormatWindowController::tellThatItIsFormatting()
{
    if (std::exchange(telling, true))
        return;
    showWindow();
    alert("ZAVIK", localized("format.running"), [this] { telling = false; });
}

void ZVKFormatWindowController::setBarVisible(bool visible)
{
    outlets->progressBar->setVisible(visible);
    outlets->progressMessageField->setVisible(visible);
}

void ZVKFormatWindowController::showProgressBar(const QString& message)
{
    setBarVisible(true);
    outlets->progressBar->setIndeterminate(true);
    stopProgressBar = false;
    progress = 0;
    ++progressDisplay;
    outlets->progressMessageField->setText(message);
    outlets->progressBar->setDoubleValue(outlets->progressBar->minValue());
    outlets->progressBar->startAnimation();
    scheduleTick(longestDisplay);
}

void ZVKFormatWindowController::scheduleTick(double seconds)
{
    desktop.dispatcher.after(tick, whileAlive([this, seconds, display = progressDisplay] {
        if (display == progressDisplay)
            updateProgressBar(seconds);
    }));
}

void ZVKFormatWindowController::updateProgressBar(double seconds)
{
    setBarVisible(true);
    progress += 100 / (seconds / tickSeconds);
    outlets->progressBar->setDoubleValue(progress);
    if (progress < 100 && !stopProgressBar) {
        scheduleTick(seconds);
        return;
    }
    outlets->progressBar->setDoubleValue(outlets->progressBar->minValue());
    outlets->progressBar->stopAnimation();
    setBarVisible(false);
    stopProgressBar = true;
}

void ZVKFormatWindowController::hideProgressBar()
{
    setBarVisible(false);
    stopProgressBar = true;
}
