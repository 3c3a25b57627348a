#include "app/drives/DrivesPanel.h"

#include "app/drives/DriveListModel.h"
#include "app/drives/DriveRowDelegate.h"
#include "app/drives/MomentsModel.h"
#include "app/window/Watch.h"
#include "platform/Texts.h"
#include "ui_DrivesPanel.h"

#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>
#include <utility>

DrivesPanel::DrivesPanel(
    platform::Dispatcher& dispatcher, Ui::DrivesPanel& widgets, PreviewReader& previews, Told listener)
    : outlets(widgets),
      told(std::move(listener)),
      drives(dispatcher,
          {[this] { listed(); }, [this] { measured(); }, [this](size_t drive) { figured(drive); }}),
      pictures(previews, drives, [this](size_t drive) { model->driveChanged(drive); }),
      model(new DriveListModel(drives, pictures, widgets.drivesListView)),
      moments(new MomentsModel(widgets.momentsTableView))
{
    QListView& view = *outlets.drivesListView;
    view.setModel(model);
    view.setItemDelegate(new DriveRowDelegate(&view));
    view.setAccessibleName(platform::localized("drives.name"));
    outlets.drivesStateLabel->setTextFormat(Qt::PlainText);
    QObject::connect(&view, &QListView::doubleClicked, &view,
        [this](const QModelIndex& row) { told.chosen(size_t(row.row())); });
    QScrollBar* bar = view.verticalScrollBar();
    QObject::connect(bar, &QScrollBar::valueChanged, &view, [this] { lookAtVisible(); });
    QObject::connect(bar, &QScrollBar::rangeChanged, &view, [this] { lookAtVisible(); });
    QObject::connect(view.selectionModel(), &QItemSelectionModel::currentChanged, &view, [this] {
        noteCurrent();
        lookAtVisible();
        showMoments();
    });
    // It may stand in a tab that is not shown.
    (new Watch(&view))->shown = [this] { lookAtVisible(); };
    QTableView& table = *outlets.momentsTableView;
    table.setModel(moments);
    table.setAccessibleName(platform::localized("moments.name"));
    table.setToolTip(platform::localized("moments.tip"));
    table.verticalHeader()->hide();
    table.verticalHeader()->setDefaultSectionSize(24);
    table.horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table.horizontalHeader()->setHighlightSections(false);
    table.sortByColumn(MomentsModel::when, Qt::AscendingOrder);
    QObject::connect(&table, &QTableView::doubleClicked, &table,
        [this](const QModelIndex& row) { chooseMoment(row.row()); });
    listed();
}

void DrivesPanel::setRecordings(std::vector<ZVKMedia> recordings)
{
    readsAll = false;
    drives.setRecordings(std::move(recordings));
}

void DrivesPanel::movedTo(const std::string& from, const std::string& to)
{
    drives.movedTo(from, to);
    noteCurrent();
    lookAtVisible();
}

void DrivesPanel::readAll()
{
    if (!std::exchange(readsAll, true))
        lookAtVisible();
}

void DrivesPanel::setShowsMiles(bool miles)
{
    model->setShowsMiles(miles);
}

void DrivesPanel::listed()
{
    const std::string current = currentPath;
    const std::string top = topPath;
    const int offset = topOffset;
    model->reload();
    const bool isEmpty = drives.drives().empty();
    outlets.drivesListView->setVisible(!isEmpty);
    outlets.drivesStateLabel->setVisible(isEmpty);
    outlets.drivesStateLabel->setText(
        platform::localized(drives.isReading() ? "drives.reading" : "drives.none"));
    QListView& view = *outlets.drivesListView;
    // What is selected may well be out of sight.
    view.setAutoScroll(false);
    if (const auto drive = drives.driveOf(current))
        view.selectionModel()->setCurrentIndex(
            model->index(int(*drive)), QItemSelectionModel::ClearAndSelect);
    view.setAutoScroll(true);
    if (const auto drive = drives.driveOf(top)) {
        view.scrollTo(model->index(int(*drive)), QListView::PositionAtTop);
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() - offset);
    }
    showMoments();
    lookAtVisible();
    told.changed();
}

void DrivesPanel::measured()
{
    model->drivesChanged();
    told.changed();
}

void DrivesPanel::noteCurrent()
{
    if (const auto drive = currentDrive())
        currentPath = drives.drives()[*drive].takes.front().first.path();
}

std::optional<size_t> DrivesPanel::currentDrive() const
{
    const QModelIndex current = outlets.drivesListView->currentIndex();
    return current.isValid() ? std::optional(size_t(current.row())) : std::nullopt;
}

bool DrivesPanel::hasFocus() const
{
    return outlets.drivesListView->hasFocus() || outlets.momentsTableView->hasFocus();
}

void DrivesPanel::chooseCurrent()
{
    if (outlets.momentsTableView->hasFocus())
        chooseMoment(outlets.momentsTableView->currentIndex().row());
    else if (const auto drive = currentDrive())
        told.chosen(*drive);
}

void DrivesPanel::chooseMoment(int row)
{
    const auto drive = currentDrive();
    if (drive && row >= 0 && row < moments->rowCount())
        told.momentChosen(*drive, DriveMoment(moments->moment(row)));
}

/// The table takes its room only where there is something in it.
void DrivesPanel::showMoments()
{
    const auto drive = currentDrive();
    const DriveFigures* figures = drive ? drives.figures(*drive) : nullptr;
    const bool hasMoments = figures && !figures->moments.empty();
    if (hasMoments)
        moments->setMoments(drives.drives()[*drive], figures->moments);
    else
        moments->clear();
    outlets.momentsTableView->setVisible(hasMoments);
}

void DrivesPanel::figured(size_t drive)
{
    model->driveChanged(drive);
    pictures.lookAgain();
    if (drive == currentDrive())
        showMoments();
    told.figured(drive);
}

/// The row with the selection first, then what is on screen, from top to bottom.
void DrivesPanel::lookAtVisible()
{
    const QListView& view = *outlets.drivesListView;
    std::vector<size_t> rows;
    if (view.isVisible()) {
        const int first = std::max(view.indexAt({1, 1}).row(), 0);
        const QModelIndex lowest = view.indexAt({1, view.viewport()->height() - 1});
        const int last = lowest.isValid() ? lowest.row() : model->rowCount() - 1;
        for (int row = first; row <= last; ++row)
            rows.push_back(size_t(row));
        if (!rows.empty()) {
            topPath = drives.drives()[rows.front()].takes.front().first.path();
            topOffset = view.visualRect(model->index(int(rows.front()))).top();
        }
    }
    pictures.lookAt(rows, DriveRowDelegate::pictureWidth(view));
    if (const QModelIndex current = view.currentIndex(); current.isValid())
        rows.insert(rows.begin(), size_t(current.row()));
    for (int row = 0; readsAll && row < model->rowCount(); ++row)
        rows.push_back(size_t(row));
    drives.lookAt(std::move(rows));
}
