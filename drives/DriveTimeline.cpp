#include "drives/DriveTimeline.h"

#include <algorithm>
#include <chrono>

DriveTimeline::DriveTimeline(const Drive& drive)
{
    for (const Take& take : drive.takes)
        lengths.push_back(
            std::chrono::duration<double>(take.length.value_or(std::chrono::microseconds(0))).count());
    addUp();
}

void DriveTimeline::addUp()
{
    starts.assign(1, 0);
    for (const double length : lengths)
        starts.push_back(starts.back() + length);
}

double DriveTimeline::length() const
{
    return starts.empty() ? 0 : starts.back();
}

double DriveTimeline::startOf(size_t take) const
{
    return take < starts.size() ? starts[take] : length();
}

void DriveTimeline::setLength(size_t take, double seconds)
{
    if (take >= lengths.size() || !(seconds >= 0) || lengths[take] == seconds)
        return;
    lengths[take] = seconds;
    addUp();
}

DriveTimeline::Place DriveTimeline::placeAt(double seconds) const
{
    // The line begins with its first take, also where that has no length.
    if (!(seconds > 0))
        return {};
    const auto after = std::ranges::upper_bound(starts, seconds);
    const auto take = std::clamp<std::ptrdiff_t>(
        after - starts.begin() - 1, 0, static_cast<std::ptrdiff_t>(lengths.size()) - 1);
    const auto index = static_cast<size_t>(take);
    return {index, std::clamp(seconds - starts[index], 0.0, lengths[index])};
}

double DriveTimeline::pointOf(Place place) const
{
    if (place.take >= lengths.size())
        return length();
    return starts[place.take] + std::clamp(place.seconds, 0.0, lengths[place.take]);
}
