#pragma once

#include "drives/DriveFigures.h"
#include "drives/DriveTimeline.h"

#include <QAbstractTableModel>

#include <cstddef>
#include <vector>

/// The moments of a drive as a table: when, what, how strong, from where. Sortable by each column.
class MomentsModel final : public QAbstractTableModel {
public:
    enum Column { when, kind, strength, direction, columnCountOf };

    explicit MomentsModel(QObject* parent);

    void setMoments(const Drive& drive, std::vector<DriveMoment> moments);
    void clear();
    /// Of a row as it stands in the table.
    const DriveMoment& moment(int row) const { return moments[size_t(row)]; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    QString timeText(const DriveMoment& moment) const;
    void arrange();

    std::vector<DriveMoment> moments;
    std::vector<CameraTime> starts; // of the takes
    Column sortedBy = when;
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
};
