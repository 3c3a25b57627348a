#include "app/list/MediaTableModel.h"

#include "common/Log.h"
#include "media/ZVKMediaList.h"
#include "platform/Images.h"
#include "platform/Texts.h"

#include <QFont>
#include <QIcon>

namespace {

struct Kind {
    const char* labelKey;
    const char* imageName;
};

Kind kindOf(const ZVKMedia& media)
{
    if (media.isEventMedia())
        return {"media.event", "car_event"};
    if (media.isMotionMedia())
        return {"media.motion", "car_motion"};
    return {"media.always", "car_alwa"};
}

QString cellText(const ZVKMedia& media, std::string_view identifier)
{
    const bool isTimeKnown = media.year() >= 1;
    if (identifier == "saveMode")
        return platform::localized(kindOf(media).labelKey);
    if (identifier == "date" && isTimeKnown)
        return QString::fromStdString(formatted("%04d-%02d-%02d", media.year(), media.month(), media.day()));
    if (identifier == "time" && isTimeKnown)
        return QString::fromStdString(
            formatted("%02d:%02d:%02d", media.hour(), media.minute(), media.second()));
    if (identifier == "file")
        return QString::fromStdString(media.fileName());
    return {};
}

QIcon cellIcon(const ZVKMedia& media)
{
    return platform::imageNamed(QLatin1String(kindOf(media).imageName)).icon();
}

} // namespace

const std::array<MediaTableModel::Column, 4> MediaTableModel::columns = {{
    {"saveMode", "filelist.mode", Qt::AlignCenter, "", {"media.always", "media.motion", "media.event"}, true},
    {"date", "filelist.date", Qt::AlignCenter, "2000-00-00", {}, false},
    {"time", "filelist.time", Qt::AlignCenter, "00:00:00", {}, false},
    {"file", "filelist.file", Qt::AlignLeft | Qt::AlignVCenter, "", {}, false},
}};

MediaTableModel::MediaTableModel(const ZVKMediaList& list, QObject* parent)
    : QAbstractTableModel(parent),
      mediaList(list)
{
    for (const Column& column : columns)
        columnNames.append(platform::localized(column.titleKey));
}

void MediaTableModel::reload()
{
    beginResetModel();
    endResetModel();
}

int MediaTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(mediaList.count());
}

int MediaTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(columns.size());
}

QVariant MediaTableModel::data(const QModelIndex& index, int role) const
{
    const ZVKMedia* media = mediaList.mediaAtIndex(index.row());
    if (!media || index.column() < 0 || size_t(index.column()) >= columns.size())
        return {};
    const Column& column = columns[size_t(index.column())];
    switch (role) {
    case Qt::DisplayRole:
        return cellText(*media, column.identifier);
    case Qt::DecorationRole:
        return column.identifier == "saveMode" ? QVariant(cellIcon(*media)) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(column.alignment);
    case Qt::ToolTipRole:
        return column.identifier == "file" ? QVariant(QString::fromStdString(media->path())) : QVariant();
    default:
        return {};
    }
}

QVariant MediaTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnNames.size())
        return {};
    if (role == Qt::DisplayRole)
        return columnNames[section];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(columns[size_t(section)].alignment);
    return {};
}
