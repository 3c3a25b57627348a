#include "app/drives/DrivePlayback.h"

#include "media/ZVKMediaList.h"

#include <algorithm>
#include <utility>

namespace {

constexpr double lead = 2; // seconds before a moment

} // namespace

DrivePlayback::DrivePlayback(
    PlaybackSession& player, const ZVKMediaList& recordings, std::function<void()> listener)
    : session(player),
      list(recordings),
      changed(std::move(listener))
{
}

void DrivePlayback::play(const Drive& drive, const std::optional<DriveMoment>& moment)
{
    takes = drive.takes;
    timeline = DriveTimeline(drive);
    found.clear();
    findRows();
    const double point = moment ? timeline.pointOf({moment->take, moment->seconds}) - lead : 0;
    DriveTimeline::Place from = timeline.placeAt(std::max(point, 0.0));
    if (rows[from.take] < 0) {
        const auto firstThere = std::ranges::find_if(rows, [](int64_t row) { return row >= 0; });
        if (firstThere == rows.end())
            return end();
        from = {size_t(firstThere - rows.begin()), 0};
    }
    current = from.take;
    session.goTo(rows[current], {from.seconds, true, false, false});
    changed();
}

bool DrivePlayback::plays(const Drive& drive) const
{
    return isActive() && takes.size() == drive.takes.size()
        && takes.front().first.path() == drive.takes.front().first.path();
}

bool DrivePlayback::update(const Drive& drive)
{
    const auto path = [](const Take& take) { return take.first.path(); };
    const auto isSame = [](const Take& one, const Take& other) {
        return one.first.path() == other.first.path() && one.rear.has_value() == other.rear.has_value()
            && one.length == other.length;
    };
    if (!isActive() || std::ranges::equal(takes, drive.takes, isSame))
        return false;
    const auto atHand = std::ranges::find(drive.takes, takes[current].first.path(), path);
    if (atHand == drive.takes.end())
        return false;
    current = size_t(atHand - drive.takes.begin());
    takes = drive.takes;
    timeline = DriveTimeline(drive);
    found.clear();
    findRows();
    changed();
    return true;
}

void DrivePlayback::setMoments(std::vector<DriveMoment> moments)
{
    found = std::move(moments);
    changed();
}

void DrivePlayback::end()
{
    if (!isActive())
        return;
    takes.clear();
    rows.clear();
    found.clear();
    timeline = {};
    changed();
}

void DrivePlayback::findRows()
{
    std::map<std::string, int64_t> rowOf;
    if (isActive()) {
        for (int64_t row = 0; row < list.count(); ++row)
            rowOf[list.mediaAtIndex(row)->path()] = row;
    }
    rows.clear();
    for (const Take& take : takes) {
        const auto at = rowOf.find(take.first.path());
        rows.push_back(at == rowOf.end() ? -1 : at->second);
    }
}

std::optional<size_t> DrivePlayback::takeOfRow(int64_t row) const
{
    const auto at = row < 0 ? rows.end() : std::ranges::find(rows, row);
    return at == rows.end() ? std::nullopt : std::optional(size_t(at - rows.begin()));
}

double DrivePlayback::fractionAt(double position) const
{
    if (!isActive() || timeline.length() <= 0)
        return 0;
    const double seconds = std::clamp(position, 0.0, 1.0) * timeline.lengthOf(current);
    return timeline.pointOf({current, seconds}) / timeline.length();
}

void DrivePlayback::goTo(double fraction)
{
    goToPoint(std::clamp(fraction, 0.0, 1.0) * timeline.length(), isPaused());
}

void DrivePlayback::goTo(const DriveMoment& moment)
{
    goToPoint(timeline.pointOf({moment.take, moment.seconds}) - lead, isPaused());
}

void DrivePlayback::goTo(const DriveTimeline::Place& place)
{
    goToPoint(timeline.pointOf(place), isPaused());
}

void DrivePlayback::playFromStart()
{
    goToPoint(0, false);
}

void DrivePlayback::goToPoint(double seconds, bool staysPaused)
{
    if (!isActive())
        return;
    const DriveTimeline::Place place = timeline.placeAt(std::max(seconds, 0.0));
    if (rows[place.take] < 0)
        return;
    session.goTo(rows[place.take], {place.seconds, true, true, staysPaused});
}

/// A file that is being started rests when the one before did.
bool DrivePlayback::isPaused() const
{
    return session.isWaiting()
        ? session.arrival().staysPaused
        : session.state() == PlaybackSession::State::open && !session.playInfo().isPlaying();
}

bool DrivePlayback::playNeighbour(int direction)
{
    if (!isActive())
        return false;
    for (auto take = std::ptrdiff_t(current) + direction; take >= 0 && take < std::ptrdiff_t(rows.size());
         take += direction) {
        if (rows[size_t(take)] >= 0) {
            session.goTo(rows[size_t(take)], {0, true, true, isPaused()});
            return true;
        }
    }
    return false;
}

void DrivePlayback::movedTo(const std::string& from, const std::string& to)
{
    moveTakes(takes, from, to);
}

void DrivePlayback::jumpToMoment(int direction, double position)
{
    // A jump that is repeated while the picture plays on goes further.
    constexpr double forwardSlack = 0.5;
    constexpr double backwardSlack = 1.5;
    const double here = fractionAt(position) * timeline.length();
    std::optional<double> target;
    for (const DriveMoment& moment : found) {
        const double point = std::max(timeline.pointOf({moment.take, moment.seconds}) - lead, 0.0);
        if (direction > 0 ? point > here + forwardSlack && (!target || point < *target)
                          : point < here - backwardSlack && (!target || point > *target))
            target = point;
    }
    if (target)
        goToPoint(*target, isPaused());
}

std::optional<Following> DrivePlayback::following(int64_t index) const
{
    const auto take = takeOfRow(index);
    if (!take)
        return {};
    for (size_t next = *take + 1; next < rows.size(); ++next) {
        if (rows[next] >= 0)
            return Following{rows[next], true};
    }
    return Following{-1};
}

void DrivePlayback::entryChosen(int64_t index)
{
    if (!isActive())
        return;
    const auto take = takeOfRow(index);
    if (!take || !session.arrival().ofDrive)
        return end();
    current = *take;
    changed();
}

void DrivePlayback::lengthKnown(double seconds)
{
    if (!isActive() || seconds <= 0 || timeline.lengthOf(current) == seconds)
        return;
    timeline.setLength(current, seconds);
    changed();
}
