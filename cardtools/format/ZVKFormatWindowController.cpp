#include "cardtools/format/ZVKFormatWindowController.h"

#include "cardtools/format/FormatRule.h"
#include "cardtools/volumes/Volumes.h"
#include "lib/Alerts.h"
#include "platform/Texts.h"
#include "ui_ZVKFormatWindowController.h"

#include <QShortcut>

#include <algorithm>
#include <initializer_list>
#include <tuple>
#include <utility>

using platform::localized;

ZVKFormatWindowController::ZVKFormatWindowController(platform::Platform& layer, CardHolder* holder)
    : desktop(layer),
      cardHolder(holder)
{
}

ZVKFormatWindowController::~ZVKFormatWindowController()
{
    lookingAtCards.request_stop();
}

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
    setTexts();
    outlets->usbDiskList->setTextElideMode(Qt::ElideMiddle);
    outlets->progressBar->setDrawDockProgress(false);
    outlets->progressBar->setDisplayPercentage(true);
    // Only the writing has a known length.
    outlets->progressBar->setDisplayTimeRemaining(false);
    outlets->progressBar->setProgressText(outlets->progressTextField);
    updateSelectedDiskInfo();
    makeBar();
    centre();
    connectControls();
    mountWatch = desktop.disks.watchMounts([this] { refresh(); });
    loadUSBVolumes();
}

void ZVKFormatWindowController::setTexts()
{
    loaded->setWindowTitle(localized("setting.format.window_title"));
    outlets->cancelButton->setText(localized("cancel"));
    outlets->hintLabel->setText(localized("format.hint"));
    outlets->fileSystemField->setText("FAT32");
    const std::tuple<QLabel*, QWidget*, const char*> captions[] = {
        {outlets->usbDiskLabel, outlets->usbDiskList, "setting.format.card"},
        {outlets->pathLabel, outlets->pathField, "setting.format.device"},
        {outlets->fileSystemLabel, outlets->fileSystemField, "setting.format.filesystem"},
        {outlets->allocationUnitLabel, outlets->allocationUnitField, "setting.format.allocation_unit_size"},
    };
    for (const auto& [label, field, key] : captions) {
        label->setText(localized(key));
        field->setAccessibleName(localized(key));
    }
}

void ZVKFormatWindowController::centre()
{
    // Space for bar and message is reserved, so that the layout stays when they appear.
    for (QWidget* const widget : std::initializer_list<QWidget*>{
             outlets->progressBar, outlets->progressMessageField, outlets->progressTextField}) {
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
    connect(outlets->usbDiskList, &QListWidget::currentRowChanged, this, [this] { changeDisk(); });
    connect(outlets->formatButton, &QPushButton::clicked, this, [this] { onFormat(); });
    connect(outlets->cancelButton, &QPushButton::clicked, this, [this] { cancel(); });
    const auto onKey = [this](QKeySequence key, auto action) {
        connect(new QShortcut(key, loaded.get()), &QShortcut::activated, this, action);
    };
    onKey(Qt::Key_Escape, [this] { cancel(); });
    onKey(Qt::Key_F5, [this] {
        if (!isFormatting())
            loadUSBVolumes([this, before = selectedUSBDisk()] { selectAgain(before); });
    });
}

void ZVKFormatWindowController::loadUSBVolumes(std::function<void()> completion)
{
    const auto startedDisplay = std::make_shared<bool>(false);
    desktop.dispatcher.onMain(life.guarded([this, startedDisplay] {
        *startedDisplay = !bar->isAwaited();
        if (*startedDisplay)
            showProgressBar("Disk searching...");
        else
            outlets->progressMessageField->setText("Disk searching...");
    }));
    desktop.dispatcher.inBackgroundThen([&disks = desktop.disks] { return formattableDisks(disks); },
        life.guarded([this, startedDisplay, next = std::move(completion)](Disks found) {
            showDisks(std::move(found));
            if (*startedDisplay && !isFormatting())
                hideProgressBar();
            if (next)
                next();
        }));
}

void ZVKFormatWindowController::showDisks(Disks disks)
{
    usbDiskArray = std::move(disks);
    const bool isEmpty = usbDiskArray.empty();
    {
        const QSignalBlocker once(outlets->usbDiskList);
        outlets->usbDiskList->clear();
        for (int row = 0; row < int(usbDiskArray.size()); ++row)
            showRow(row, {});
        if (isEmpty)
            (new QListWidgetItem(localized("format.no_card"), outlets->usbDiskList))
                ->setFlags(Qt::NoItemFlags);
        outlets->usbDiskList->setCurrentRow(isEmpty ? -1 : 0);
    }
    updateSelectedDiskInfo();
    lookAtCards();
}

void ZVKFormatWindowController::showRow(int row, const std::optional<CardContents>& contents)
{
    QListWidgetItem* item = outlets->usbDiskList->item(row);
    if (!item)
        item = new QListWidgetItem(outlets->usbDiskList);
    item->setText(formatCardText(usbDiskArray[size_t(row)], contents));
    item->setToolTip(item->text());
}

/// Reads the contents of each card in a job of its own, so that a card that hangs does not delay the others.
void ZVKFormatWindowController::lookAtCards()
{
    lookingAtCards.request_stop();
    lookingAtCards = {};
    for (int row = 0; row < int(usbDiskArray.size()); ++row) {
        const std::string path = usbDiskArray[size_t(row)].mountedURL;
        if (path.empty())
            continue;
        const std::stop_token stop = lookingAtCards.get_token();
        desktop.dispatcher.inBackgroundThen([path, stop] { return contentsOfCard(path, stop); },
            life.guarded([this, row, stop](const CardContents& found) {
                if (!stop.stop_requested())
                    showRow(row, found);
            }));
    }
}

/// A card came, went or is mounted elsewhere: the list follows, the choice stays.
void ZVKFormatWindowController::refresh()
{
    if (isFormatting() || !loaded->isVisible())
        return;
    desktop.dispatcher.inBackgroundThen(
        [&disks = desktop.disks] { return formattableDisks(disks); }, life.guarded([this](Disks found) {
            if (isFormatting() || found == usbDiskArray)
                return;
            const auto before = selectedUSBDisk();
            showDisks(std::move(found));
            selectAgain(before);
        }));
}

std::optional<TKUSBDiskEntity> ZVKFormatWindowController::selectedUSBDisk() const
{
    const int index = outlets ? outlets->usbDiskList->currentRow() : -1;
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
    outlets->usbDiskList->setCurrentRow(static_cast<int>(found - usbDiskArray.begin()));
    updateSelectedDiskInfo();
    return *found;
}

/// When that card is gone nothing is selected, so that the button never means another card.
void ZVKFormatWindowController::selectAgain(const std::optional<TKUSBDiskEntity>& card)
{
    if (!card)
        return;
    const auto found = selectUSBByDevFile(card->deviceFilePath);
    if (found && found->key == card->key && found->volumeSize == card->volumeSize)
        return;
    outlets->usbDiskList->setCurrentRow(-1);
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
    outlets->formatButton->setText(formatButtonText(card));
}

void ZVKFormatWindowController::onFormat()
{
    if (isFormatting())
        return;
    const auto card = selectedUSBDisk();
    if (!card && !usbDiskArray.empty())
        alert("ZAVIK", "Please select USB drive.");
    else if (!card) // a card that was put in meanwhile is listed after this
        alert("ZAVIK", "There is no USB drive.", [this] { loadUSBVolumes(); });
    else
        doFormat(*card);
}

void ZVKFormatWindowController::alert(
    const QString& title, const QString& message, std::function<void()> dismissed)
{
    showAlertSheet(desktop.alerts, window(), title.toStdString(), message.toStdString(),
        dismissed ? life.guarded(std::move(dismissed)) : std::function<void()>());
}
