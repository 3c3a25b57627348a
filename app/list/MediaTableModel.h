#pragma once

#include <QAbstractTableModel>

#include <array>
#include <string_view>
#include <vector>

class ZVKMediaList;

/// The library as a table: kind, date, time and file name of each recording.
class MediaTableModel final : public QAbstractTableModel {
public:
    struct Column {
        std::string_view identifier;
        std::string_view titleKey;
        Qt::Alignment alignment;
        /// The widest text that the column must hold, or the keys of all its texts; none: it takes the rest
        /// of the width.
        const char* widest;
        std::vector<const char*> textKeys;
        bool hasIcon;
    };
    static const std::array<Column, 4> columns;

    MediaTableModel(const ZVKMediaList& list, QObject* parent);

    /// The list has other entries now.
    void reload();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const ZVKMediaList& mediaList;
    QStringList columnNames;
};
