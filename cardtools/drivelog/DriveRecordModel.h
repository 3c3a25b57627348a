#pragma once

#include "cardtools/drivelog/DriveLog.h"

#include <QAbstractTableModel>
#include <QStringList>

#include <memory>

/// A drive log as a table. Cells are made when the view asks for them.
class DriveRecordModel final : public QAbstractTableModel {
public:
    DriveRecordModel(const DriveLogFormat& format, QStringList columnNames, QObject* parent);

    /// Shows another log; null for none.
    void setLog(std::shared_ptr<const DriveLog> log);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const DriveLogFormat& format;
    QStringList columnNames;
    std::shared_ptr<const DriveLog> shown;
};
