// The right-hand panel: the table of recordings, or the map.

#include "app/ZVKAppDelegate.h"

#include "app/list/MediaNameDelegate.h"
#include "app/list/MediaTableModel.h"
#include "app/window/MainWindowOutlets.h"
#include "common/Text.h"
#include "platform/Texts.h"

#include <QHeaderView>
#include <QLocale>

#include <algorithm>

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

/// Whether the file may hold readings that are not shown.
bool areReadingsMissing(WalkEnd end)
{
    return end == WalkEnd::NoMemory || end == WalkEnd::ReadError || end == WalkEnd::CannotOpen;
}

} // namespace

void ZVKAppDelegate::initMediaListTableView()
{
    QTableView& table = *outlets->mediaListTableView;
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

void ZVKAppDelegate::mediaListChanged(ZVKMediaList&)
{
    scanning = false;
    layout->clickMediaListViewButton();
    mediaTable->reload();
    findFileAtHand();
    showListState();
}

/// The player's file keeps its row, wherever that stands in a list that was read again.
void ZVKAppDelegate::findFileAtHand()
{
    mediaIndex = -1;
    const auto media = player1->media();
    for (int64_t row = 0; media && row < mediaList->count() && mediaIndex < 0; ++row)
        if (playsEntry(row))
            mediaIndex = row;
    if (mediaIndex >= 0)
        selectRow(mediaIndex);
}

/// Says in plain text what the list is doing, or what to do, while there is nothing in it; below its rows,
/// what is not among them.
void ZVKAppDelegate::showListState()
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
        lines = scanRemarks();
    outlets->listStateLabel->setTextFormat(Qt::PlainText);
    outlets->listStateLabel->setText(lines.join('\n'));
    outlets->listStateLabel->setVisible(!lines.isEmpty());
    outlets->mediaListTableView->setVisible(mediaList->count() > 0);
}

/// What there is to say about the list that a scan has given.
QStringList ZVKAppDelegate::scanRemarks() const
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
    tellOf(passedOver, "list.passed_over", "list.passed_over_more");
    tellOf(brokenOff, "list.broken_off", "list.broken_off_more");
    if (hasTelemetry && areReadingsMissing(blackBoxData.walkEnd()))
        lines += platform::localized("list.no_readings").arg(nameAtHand());
    return lines;
}

void ZVKAppDelegate::selectRow(int64_t row)
{
    outlets->mediaListTableView->selectRow(int(row));
}

int64_t ZVKAppDelegate::selectedRow() const
{
    const auto rows = outlets->mediaListTableView->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}
