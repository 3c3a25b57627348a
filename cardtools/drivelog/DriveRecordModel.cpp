#include "cardtools/drivelog/DriveRecordModel.h"

#include <utility>

DriveRecordModel::DriveRecordModel(const DriveLogFormat& kind, QStringList names, QObject* parent)
    : QAbstractTableModel(parent),
      format(kind),
      columnNames(std::move(names))
{
}

void DriveRecordModel::setLog(std::shared_ptr<const DriveLog> log)
{
    beginResetModel();
    shown = std::move(log);
    endResetModel();
}

int DriveRecordModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !shown ? 0 : static_cast<int>(shown->count());
}

int DriveRecordModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(format.columns.size());
}

QVariant DriveRecordModel::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // for a column that is too narrow
        return shown ? QString::fromStdString(shown->shownText(index.column(), index.row())) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant DriveRecordModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnNames.size())
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: // for a column that was made narrower
        return columnNames[section];
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    default:
        return {};
    }
}
