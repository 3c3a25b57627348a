#include "app/drives/MomentsModel.h"

#include "common/Log.h"
#include "platform/Texts.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace {

constexpr std::array titles = {"moments.time", "moments.kind", "moments.strength", "moments.direction"};

constexpr std::array kindTexts = {"moments.impact", "moments.braking"};
constexpr std::array directionTexts = {
    "moments.front", "moments.rear", "moments.left", "moments.right", "moments.above", "moments.below"};

} // namespace

MomentsModel::MomentsModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void MomentsModel::setMoments(const Drive& drive, std::vector<DriveMoment> found)
{
    beginResetModel();
    moments = std::move(found);
    starts.clear();
    for (const Take& take : drive.takes)
        starts.push_back(take.start);
    arrange();
    endResetModel();
}

void MomentsModel::clear()
{
    beginResetModel();
    moments.clear();
    starts.clear();
    endResetModel();
}

void MomentsModel::sort(int column, Qt::SortOrder order)
{
    sortedBy = Column(std::clamp<int>(column, when, direction));
    sortOrder = order;
    beginResetModel();
    arrange();
    endResetModel();
}

void MomentsModel::arrange()
{
    const auto isBefore = [this](const DriveMoment& one, const DriveMoment& other) {
        switch (sortedBy) {
        case kind:
            return one.moment.kind < other.moment.kind;
        case strength:
            return one.moment.g < other.moment.g;
        case direction:
            return one.moment.direction < other.moment.direction;
        default:
            return std::pair(one.take, one.seconds) < std::pair(other.take, other.seconds);
        }
    };
    std::ranges::stable_sort(moments, [&](const DriveMoment& one, const DriveMoment& other) {
        return sortOrder == Qt::AscendingOrder ? isBefore(one, other) : isBefore(other, one);
    });
}

int MomentsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(moments.size());
}

int MomentsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(columnCountOf);
}

/// The camera's time of day, to the tenth of a second begun.
QString MomentsModel::timeText(const DriveMoment& moment) const
{
    using namespace std::chrono;
    const auto at = starts[moment.take] + duration_cast<microseconds>(duration<double>(moment.seconds));
    const auto second = floor<seconds>(at);
    const int tenth = int((at - second) / milliseconds(100));
    return QString::fromStdString(cameraTimeText(second).substr(11)) + QStringLiteral(".%1").arg(tenth);
}

QVariant MomentsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const DriveMoment& found = moments[size_t(index.row())];
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case when:
        return timeText(found);
    case kind:
        return platform::localized(kindTexts[size_t(found.moment.kind)]);
    case strength:
        return QString::fromStdString(formatted("%.2f g", found.moment.g));
    case direction:
        return platform::localized(directionTexts[size_t(found.moment.direction)]);
    default:
        return {};
    }
}

QVariant MomentsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCountOf)
        return {};
    if (role == Qt::DisplayRole)
        return platform::localized(titles[size_t(section)]);
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    return {};
}
