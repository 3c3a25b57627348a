// The table of the drive record page: its columns, and how a row is opened.

#include "cardtools/drivelog/DriveRecordModel.h"
#include "cardtools/drivelog/DriveRecordPage.h"
#include "lib/ProgressWindow.h"
#include "ui_DriveRecordPage.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace {

constexpr int rowHeight = 20;

/// Right-aligned numbers with a small margin only: a coordinate fills its column nearly to the edge.
class CellDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        constexpr int margin = 3;
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QRect place = cell.rect.adjusted(0, 0, -margin, 0);
        const QString text = cell.fontMetrics.elidedText(cell.text, Qt::ElideRight, place.width());
        cell.text.clear();
        cell.widget->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        const bool isSelected = cell.state.testFlag(QStyle::State_Selected);
        painter->setFont(cell.font);
        painter->setPen(cell.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
        painter->drawText(place, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, text);
    }
};

} // namespace

void DriveRecordPage::buildTable()
{
    QTableView& table = *outlets->tableView;
    model = new DriveRecordModel(format, columnNames, &table);
    table.setModel(model);
    table.setItemDelegate(new CellDelegate(&table));
    QFont font = table.font();
    font.setPixelSize(11);
    table.setFont(font);

    // Rows of one fixed height cost nothing to lay out, however many there are.
    table.verticalHeader()->hide();
    table.verticalHeader()->setMinimumSectionSize(rowHeight);
    table.verticalHeader()->setDefaultSectionSize(rowHeight);
    table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);

    QHeaderView& header = *table.horizontalHeader();
    header.setSectionsMovable(true);
    header.setHighlightSections(false);
    for (size_t i = 0; i < columnWidths.size(); ++i)
        table.setColumnWidth(static_cast<int>(i), columnWidths[i]);
    connect(&header, &QHeaderView::sectionDoubleClicked, this, [this] { doubleClickTableRow(-1); });
    table.installEventFilter(this);
    table.viewport()->installEventFilter(this);
}

bool DriveRecordPage::eventFilter(QObject* watched, QEvent* event)
{
    QTableView& table = *outlets->tableView;
    if (progressWindow && event->type() == QEvent::Close && progressWindow->asksBeforeStopping()) {
        event->ignore();
        return true;
    }
    if (watched == table.viewport() && event->type() == QEvent::MouseButtonDblClick) {
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        if (mouse.button() == Qt::LeftButton)
            doubleClickTableRow(table.rowAt(mouse.position().toPoint().y()));
    }
    if (watched == &table && event->type() == QEvent::KeyPress) {
        const int key = static_cast<const QKeyEvent&>(*event).key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            doubleClickTableRow(table.currentIndex().row());
            return true;
        }
    }
    return SettingPage::eventFilter(watched, event);
}
