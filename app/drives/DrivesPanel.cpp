#include "app/drives/DrivesPanel.h"

#include "app/drives/DriveListModel.h"
#include "app/drives/DriveRowDelegate.h"
#include "platform/Texts.h"
#include "ui_DrivesPanel.h"

#include <QScrollBar>

#include <utility>

DrivesPanel::DrivesPanel(platform::Dispatcher& dispatcher, Ui::DrivesPanel& widgets, Told listener)
    : outlets(widgets),
      told(std::move(listener)),
      drives(dispatcher, {[this] { listed(); }, [this](size_t drive) { figured(drive); }}),
      model(new DriveListModel(drives, widgets.drivesListView))
{
    QListView& view = *outlets.drivesListView;
    view.setModel(model);
    view.setItemDelegate(new DriveRowDelegate(&view));
    view.setAccessibleName(platform::localized("drives.name"));
    outlets.drivesStateLabel->setTextFormat(Qt::PlainText);
    // `activated` comes for Enter and, as the style has it, for one click or two; the double click always
    // counts.
    QObject::connect(&view, &QListView::doubleClicked, &view,
        [this](const QModelIndex& row) { told.chosen(size_t(row.row())); });
    QScrollBar* bar = view.verticalScrollBar();
    QObject::connect(bar, &QScrollBar::valueChanged, &view, [this] { lookAtVisible(); });
    QObject::connect(bar, &QScrollBar::rangeChanged, &view, [this] { lookAtVisible(); });
    QObject::connect(
        view.selectionModel(), &QItemSelectionModel::currentChanged, &view, [this] { lookAtVisible(); });
    listed();
}

void DrivesPanel::setShowsMiles(bool miles)
{
    model->setShowsMiles(miles);
}

void DrivesPanel::selectDrive(std::optional<size_t> drive)
{
    outlets.drivesListView->setCurrentIndex(drive ? model->index(int(*drive)) : QModelIndex());
}

void DrivesPanel::listed()
{
    model->reload();
    const bool isEmpty = drives.drives().empty();
    outlets.drivesListView->setVisible(!isEmpty);
    outlets.drivesStateLabel->setVisible(isEmpty);
    outlets.drivesStateLabel->setText(
        platform::localized(drives.isReading() ? "drives.reading" : "drives.none"));
    lookAtVisible();
}

void DrivesPanel::figured(size_t drive)
{
    model->driveChanged(drive);
    told.figured(drive);
}

/// The row with the selection first, then what is on screen, from top to bottom.
void DrivesPanel::lookAtVisible()
{
    const QListView& view = *outlets.drivesListView;
    if (model->rowCount() == 0 || !view.isVisible())
        return;
    std::vector<size_t> rows;
    if (const QModelIndex current = view.currentIndex(); current.isValid())
        rows.push_back(size_t(current.row()));
    const int first = std::max(view.indexAt({1, 1}).row(), 0);
    const QModelIndex lowest = view.indexAt({1, view.viewport()->height() - 1});
    const int last = lowest.isValid() ? lowest.row() : model->rowCount() - 1;
    for (int row = first; row <= last; ++row)
        rows.push_back(size_t(row));
    drives.lookAt(std::move(rows));
}
