#include "app/list/RecordingsPanel.h"

#include "app/list/MediaNameDelegate.h"
#include "app/list/MediaTableModel.h"
#include "app/player/PlayRemarks.h"
#include "app/window/Watch.h"
#include "cardtools/volumes/Volumes.h"
#include "common/Text.h"
#include "media/Drives.h"
#include "media/MediaPath.h"
#include "platform/Texts.h"
#include "platform/disks/MountTable.h"
#include "ui_ListPanel.h"

#include <QHeaderView>
#include <QLocale>

#include <algorithm>
#include <filesystem>
#include <set>
#include <system_error>
#include <utility>

namespace {

constexpr int cellPadding = 10;
constexpr int iconGap = 6;
constexpr int rowHeight = 36; // two lines of a name

/// A name or a path as a line of the panel can hold it.
QString shownPath(std::string_view path)
{
    const QString text = QString::fromStdString(visibleText(path));
    constexpr qsizetype longest = 40;
    return text.size() <= longest ? text : QChar(0x2026) + text.right(longest - 1);
}

} // namespace

RecordingsPanel::RecordingsPanel(
    platform::Platform& layer, QWidget& owner, Ui::ListPanel& widgets, Told listener)
    : desktop(layer),
      window(owner),
      outlets(widgets),
      told(std::move(listener)),
      mediaList(ZVKMediaList::mediaList(desktop.dispatcher)),
      folderFollower(desktop.dispatcher, desktop.disks,
          [this](const std::string& from, const std::string& to) { folderMoved(from, to); })
{
    mediaList->setDelegate(this);
    initMediaListTableView();
    filterBar = new FilterBar(outlets, [this] { filterAgain(); });
    QTableView& table = *outlets.mediaListTableView;
    table.setAccessibleName(platform::localized("tip.recordings"));
    QObject::connect(&table, &QTableView::doubleClicked, &table, [this] { told.chosen(); });
    (new Watch(table.viewport()))->mousePressed = [&table](QMouseEvent& event) {
        // The row that plays stays selected when the empty part of the list is clicked.
        return !table.indexAt(event.position().toPoint()).isValid();
    };
}

void RecordingsPanel::toggleFilter()
{
    if (filterBar->isOpen() && outlets.filterBar->isAncestorOf(window.focusWidget()))
        filterBar->close();
    else
        filterBar->open();
}

/// A card tells of its drives one by one; the list follows now and then.
void RecordingsPanel::impactsKnown()
{
    constexpr std::chrono::milliseconds pause(250);
    if (!filterBar->filter().withImpact || std::exchange(filtersSoon, true))
        return;
    desktop.dispatcher.after(pause, life.guarded([this] {
        filtersSoon = false;
        filterAgain();
    }));
}

void RecordingsPanel::filterAgain()
{
    const RecordingFilter filter = filterBar->filter();
    QTableView& table = *outlets.mediaListTableView;
    table.setUpdatesEnabled(false);
    int64_t hidden = 0;
    bool isSearching = false;
    for (int row = 0; row < int(mediaList->count()); ++row) {
        const ZVKMedia& media = *mediaList->mediaAtIndex(row);
        const auto impact = filter.withImpact ? told.hasImpact(media) : std::nullopt;
        isSearching = isSearching || (filter.withImpact && !impact);
        const bool isHidden = !filter.matches(media, impact.value_or(false));
        hidden += isHidden ? 1 : 0;
        if (table.isRowHidden(row) != isHidden)
            table.setRowHidden(row, isHidden);
    }
    table.setUpdatesEnabled(true);
    filterBar->showHidden(hidden, isSearching);
    if (isSearching)
        told.needsImpacts();
}

int64_t RecordingsPanel::visibleRow(int64_t from, int direction) const
{
    for (int64_t row = from + direction; row >= 0 && row < mediaList->count(); row += direction) {
        if (!outlets.mediaListTableView->isRowHidden(int(row)))
            return row;
    }
    return -1;
}

void RecordingsPanel::showDays()
{
    std::set<std::chrono::local_days> days;
    for (const ZVKMedia& media : mediaList->all()) {
        if (const auto start = cameraTimeOf(media))
            days.insert(std::chrono::floor<std::chrono::days>(*start));
    }
    filterBar->setDays({days.begin(), days.end()});
}

void RecordingsPanel::openMediaDirectoryDialog()
{
    const std::string title = platform::localized("panel.choose_folder").toStdString();
    desktop.panels.chooseFolder(window, title, life.guarded([this](const std::optional<std::string>& path) {
        if (path)
            openMediaDirectory(*path);
    }));
}

void RecordingsPanel::openMediaDirectory(const std::string& path)
{
    told.opening(mediaList->directoryPath() == path);
    folderLetGo.reset();
    scan(path);
    folderFollower.follow(path);
    showListState({});
}

void RecordingsPanel::scan(const std::string& path)
{
    scanning = true;
    mediaList->setDirectoryPath(path);
    mediaTable->reload();
}

void RecordingsPanel::openCard()
{
    desktop.dispatcher.inBackgroundThen(
        [&disks = desktop.disks] { return preferredUSBDisk(disks); }, life.guarded([this](const auto& card) {
            if (card && !mediaList->directoryPath())
                openMediaDirectory(card->mountedURL);
        }));
}

void RecordingsPanel::openIfFolder(const std::string& path)
{
    desktop.dispatcher.inBackgroundThen(
        [path] {
            std::error_code missing;
            return std::filesystem::is_directory(path, missing);
        },
        life.guarded([this, path](bool isFolder) {
            if (isFolder)
                openMediaDirectory(path);
        }));
}

std::optional<std::string> RecordingsPanel::folderOn(const std::string& mountPath) const
{
    return isInUse(mountPath) ? mediaList->directoryPath() : std::nullopt;
}

void RecordingsPanel::letGoOf(const std::string& mountPath)
{
    const auto folder = folderOn(mountPath);
    if (!folder)
        return;
    folderLetGo = folder;
    folderFollower.follow({});
    scanning = false;
    mediaList->clear();
    mediaTable->reload();
    showListState({});
}

void RecordingsPanel::cardFormatted(const std::string& from, const std::string& to)
{
    if (!folderLetGo)
        return;
    std::string folder = *folderLetGo;
    if (!to.empty() && platform::isWithin(folder, from))
        folder = to + folder.substr(from.size());
    desktop.dispatcher.inBackgroundThen(
        [folder, to] {
            std::error_code missing;
            return to.empty() || std::filesystem::is_directory(folder, missing) ? folder : to;
        },
        life.guarded([this, before = *folderLetGo](const std::string& place) {
            if (folderLetGo == before)
                openMediaDirectory(place);
        }));
}

/// The entries and their selection stay.
void RecordingsPanel::folderMoved(const std::string& from, const std::string& to)
{
    mediaList->movedTo(to);
    // A scan that still runs at the old path, or failed there, is done again.
    if (scanning || !mediaList->scanState().failure.empty())
        scan(to);
    told.moved(from, to);
}

void RecordingsPanel::mediaListChanged(ZVKMediaList&)
{
    scanning = false;
    mediaTable->reload();
    showDays();
    told.listed();
    filterAgain();
}

int64_t RecordingsPanel::selectedRow() const
{
    const auto rows = outlets.mediaListTableView->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void RecordingsPanel::selectRow(int64_t row)
{
    outlets.mediaListTableView->selectRow(int(row));
}

void RecordingsPanel::showListState(const PlayRemarks& remarks)
{
    const MediaScanState& state = mediaList->scanState();
    QStringList lines;
    if (scanning)
        lines += platform::localized("list.scanning");
    else if (folderLetGo)
        lines += platform::localized("list.formatting");
    else if (!mediaList->directoryPath())
        lines += platform::localized("list.empty");
    else if (!state.isReadable)
        lines += platform::localized("list.failed");
    else
        lines = scanRemarks(remarks);
    outlets.listStateLabel->setTextFormat(Qt::PlainText);
    outlets.listStateLabel->setText(lines.join('\n'));
    outlets.listStateLabel->setVisible(!lines.isEmpty());
    outlets.mediaListTableView->setVisible(mediaList->count() > 0);
}

/// Notes about the scan's result and about what was played.
QStringList RecordingsPanel::scanRemarks(const PlayRemarks& remarks) const
{
    const MediaScanState& state = mediaList->scanState();
    const QLocale numbers(platform::textLanguage() == "ko" ? QLocale::Korean : QLocale::English);
    QStringList lines;
    if (mediaList->count() == 0)
        lines += platform::localized("list.nothing_found");
    if (state.isCut)
        lines +=
            platform::localized("list.cut")
                .arg(numbers.toString(qlonglong(mediaList->count())), shownPath(*mediaList->directoryPath()));
    if (state.unreadCount == 1)
        lines += platform::localized("list.unread").arg(shownPath(state.unread));
    else if (state.unreadCount > 1)
        lines += platform::localized("list.unread_more")
                     .arg(shownPath(state.unread), numbers.toString(qlonglong(state.unreadCount - 1)));
    const auto tellOf = [&](const QStringList& names, const char* one, const char* more) {
        if (names.size() == 1)
            lines += platform::localized(one).arg(names.back());
        else if (names.size() > 1)
            lines +=
                platform::localized(more).arg(names.back(), numbers.toString(qlonglong(names.size() - 1)));
    };
    tellOf(remarks.passedOver, "list.passed_over", "list.passed_over_more");
    tellOf(remarks.brokenOff, "list.broken_off", "list.broken_off_more");
    if (!remarks.withoutReadings.isEmpty())
        lines += platform::localized("list.no_readings").arg(remarks.withoutReadings);
    return lines;
}

void RecordingsPanel::initMediaListTableView()
{
    QTableView& table = *outlets.mediaListTableView;
    mediaTable = new MediaTableModel(*mediaList, &table);
    table.setModel(mediaTable);
    QFont font = table.font();
    font.setPixelSize(11);
    table.setFont(font);
    table.setIconSize({18, 18});
    table.verticalHeader()->hide();
    table.verticalHeader()->setDefaultSectionSize(rowHeight);
    table.horizontalHeader()->setHighlightSections(false);
    table.horizontalHeader()->setSectionsClickable(false);
    const QFontMetrics metrics(font);
    for (int i = 0; i < int(MediaTableModel::columns.size()); ++i) {
        const auto& column = MediaTableModel::columns[size_t(i)];
        if (!*column.widest && column.textKeys.empty()) {
            table.horizontalHeader()->setSectionResizeMode(i, QHeaderView::Stretch);
            table.setItemDelegateForColumn(i, new MediaNameDelegate(&table));
            continue;
        }
        const int icon = column.hasIcon ? table.iconSize().width() + iconGap : 0;
        const QString title = mediaTable->headerData(i, Qt::Horizontal, Qt::DisplayRole).toString();
        int text = std::max(
            metrics.horizontalAdvance(title), metrics.horizontalAdvance(QLatin1String(column.widest)) + icon);
        for (const char* key : column.textKeys)
            text = std::max(text, metrics.horizontalAdvance(platform::localized(key)) + icon);
        table.setColumnWidth(i, text + cellPadding);
    }
}
