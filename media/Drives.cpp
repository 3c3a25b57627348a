#include "media/Drives.h"

#include "common/Log.h"
#include "media/MediaDirection.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <utility>

namespace {

using std::chrono::microseconds;

constexpr int32_t front = 0;
constexpr int32_t rear = 1;
constexpr std::chrono::seconds pairTolerance{1};

/// The recordings with a start, as takes of their own.
std::vector<Take> singleTakes(std::span<const ZVKMedia> recordings, const LengthOf& lengthOf)
{
    std::vector<Take> takes;
    takes.reserve(recordings.size());
    for (const ZVKMedia& media : recordings) {
        if (const auto start = cameraTimeOf(media))
            takes.push_back({media, {}, *start, lengthOf(media)});
    }
    // The calendar may order what is no date otherwise than the digits do.
    std::ranges::stable_sort(takes, {}, &Take::start);
    return takes;
}

/// Front recordings of one division that have no rear one yet, by their start.
class FrontTakes {
public:
    void add(CameraTime start, size_t index) { unpaired.emplace(start, index); }

    /// The nearest one within the tolerance, which is no longer among them then; the earlier of two.
    std::optional<size_t> takeNearest(CameraTime start)
    {
        auto nearest = unpaired.lower_bound({start, 0});
        if (nearest != unpaired.begin()) {
            const auto before = std::prev(nearest);
            if (nearest == unpaired.end() || start - before->first <= nearest->first - start)
                nearest = before;
        }
        if (nearest == unpaired.end() || std::chrono::abs(nearest->first - start) > pairTolerance)
            return {};
        const size_t index = nearest->second;
        unpaired.erase(nearest);
        return index;
    }

private:
    std::set<std::pair<CameraTime, size_t>> unpaired;
};

/// Rear recordings move to their front ones.
void pairCameras(std::vector<Take>& takes)
{
    std::map<int32_t, FrontTakes> fronts;
    for (size_t i = 0; i < takes.size(); ++i) {
        if (mediaDirection(takes[i].first.path()) == front)
            fronts[takes[i].first.mediaDivision()].add(takes[i].start, i);
    }
    std::vector<bool> isTaken(takes.size());
    for (size_t i = 0; i < takes.size(); ++i) {
        if (mediaDirection(takes[i].first.path()) != rear)
            continue;
        if (const auto of = fronts[takes[i].first.mediaDivision()].takeNearest(takes[i].start)) {
            takes[*of].rear = takes[i].first;
            isTaken[i] = true;
        }
    }
    size_t kept = 0;
    for (size_t i = 0; i < takes.size(); ++i) {
        if (!isTaken[i] && kept++ != i)
            takes[kept - 1] = std::move(takes[i]);
    }
    takes.erase(takes.begin() + static_cast<std::ptrdiff_t>(kept), takes.end());
}

} // namespace

std::optional<CameraTime> cameraTimeOf(const ZVKMedia& media)
{
    using namespace std::chrono;
    if (media.year() < 1)
        return {};
    const local_days firstOfMonth(year(media.year()) / month(static_cast<unsigned>(media.month())) / 1);
    return firstOfMonth + days(media.day() - 1) + hours(media.hour()) + minutes(media.minute())
        + seconds(media.second());
}

std::string cameraTimeText(CameraTime time)
{
    using namespace std::chrono;
    const auto rounded = round<seconds>(time);
    const auto day = floor<days>(rounded);
    const year_month_day date(day);
    const hh_mm_ss clock(rounded - day);
    return formatted("%04d-%02u-%02uT%02d:%02d:%02d", int(date.year()), unsigned(date.month()),
        unsigned(date.day()), int(clock.hours().count()), int(clock.minutes().count()),
        int(clock.seconds().count()));
}

std::vector<Drive> drivesOf(std::span<const ZVKMedia> recordings, const LengthOf& lengthOf)
{
    std::vector<Take> takes = singleTakes(recordings, lengthOf);
    pairCameras(takes);
    std::vector<Drive> drives;
    for (Take& take : takes) {
        if (drives.empty() || take.start - drives.back().end > Drive::longestGap)
            drives.push_back({{}, take.end()});
        Drive& drive = drives.back();
        drive.end = std::max(drive.end, take.end());
        drive.takes.push_back(std::move(take));
    }
    return drives;
}

std::optional<ZVKMedia> otherCameraOf(std::span<const ZVKMedia> recordings, size_t index)
{
    // What a card could hold of one second at the most.
    constexpr size_t reach = 32;
    const auto startTogether = [&](size_t earlier) {
        const auto start = cameraTimeOf(recordings[earlier]);
        const auto next = cameraTimeOf(recordings[earlier + 1]);
        return start && next && std::chrono::abs(*next - *start) <= pairTolerance;
    };
    if (index >= recordings.size())
        return {};
    size_t begin = index;
    while (begin > 0 && index - begin < reach && startTogether(begin - 1))
        --begin;
    size_t end = index + 1;
    while (end < recordings.size() && end - index < reach && startTogether(end - 1))
        ++end;
    std::vector<Take> takes =
        singleTakes(recordings.subspan(begin, end - begin), [](const ZVKMedia&) { return std::nullopt; });
    pairCameras(takes);
    for (Take& take : takes) {
        if (take.rear && take.first.path() == recordings[index].path())
            return std::move(take.rear);
        if (take.rear && take.rear->path() == recordings[index].path())
            return std::move(take.first);
    }
    return {};
}

void moveMedia(ZVKMedia& media, const std::string& from, const std::string& to)
{
    if (media.path().starts_with(from + "/"))
        media = ZVKMedia::mediaWithPath(to + media.path().substr(from.size()));
}

void moveTakes(std::vector<Take>& takes, const std::string& from, const std::string& to)
{
    for (Take& take : takes) {
        moveMedia(take.first, from, to);
        if (take.rear)
            moveMedia(*take.rear, from, to);
    }
}
