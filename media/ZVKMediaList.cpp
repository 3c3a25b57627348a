#include "media/ZVKMediaList.h"

#include "common/Log.h"
#include "common/Text.h"
#include "media/FolderWalk.h"
#include "media/MediaPath.h"
#include "media/RecordingName.h"

#include <algorithm>
#include <utility>

namespace {

std::vector<ZVKMedia> sortedByDate(std::vector<ZVKMedia> found)
{
    // Sorting the keys and moving every entry once is several times quicker than sorting the entries.
    struct Place {
        int64_t sortKey;
        ZVKMedia* media;
    };
    std::vector<Place> places;
    places.reserve(found.size());
    for (ZVKMedia& media : found)
        places.push_back({media.sortKey(), &media});
    std::ranges::stable_sort(places, {}, &Place::sortKey);

    std::vector<ZVKMedia> sorted;
    sorted.reserve(found.size());
    for (const Place& place : places)
        sorted.push_back(std::move(*place.media));
    return sorted;
}

} // namespace

ZVKMediaList::ZVKMediaList(platform::Dispatcher& queues)
    : dispatcher(queues)
{
}

ZVKMediaList::~ZVKMediaList()
{
    scan.request_stop();
}

std::unique_ptr<ZVKMediaList> ZVKMediaList::mediaList(platform::Dispatcher& queues)
{
    return std::make_unique<ZVKMediaList>(queues);
}

void ZVKMediaList::setDirectoryPath(std::optional<std::string> path)
{
    directory = std::move(path);
    scan.request_stop();
    if (!directory)
        return;
    medias.clear();
    scan = std::stop_source();
    // A stop is requested on the main thread only: a scan that is not void there still has its list.
    dispatcher.inBackground(
        [this, &queues = dispatcher, folder = standardizedPath(*directory), token = scan.get_token()] {
            auto found = std::make_shared<std::vector<ZVKMedia>>();
            const bool isWhole = eachDir(folder, *found, token);
            *found = sortedByDate(std::move(*found));
            queues.onMain([this, token, found, isWhole] {
                if (!token.stop_requested())
                    replaceMedias(std::move(*found), isWhole);
            });
        });
}

void ZVKMediaList::movedTo(const std::string& path)
{
    const std::string from = standardizedPath(directory.value_or("")) + "/";
    directory = path;
    for (ZVKMedia& media : medias) {
        if (media.path().starts_with(from))
            media = ZVKMedia::mediaWithPath(path + "/" + media.path().substr(from.size()));
    }
}

void ZVKMediaList::replaceMedias(std::vector<ZVKMedia> scanned, bool isWhole)
{
    medias = std::move(scanned);
    readable = isWhole;
    if (delegate)
        delegate->mediaListChanged(*this);
}

const ZVKMedia* ZVKMediaList::mediaAtIndex(int64_t index) const
{
    return index >= 0 && index < count() ? &medias[static_cast<size_t>(index)] : nullptr;
}

void ZVKMediaList::addMedia(ZVKMedia media)
{
    medias.push_back(std::move(media));
}

std::optional<ZVKMedia> ZVKMediaList::createMediaByPath(std::string path)
{
    path = standardizedPath(std::move(path));
    const RecordingNameUnits units(piecesOfPath(path).name);
    if (!hasRecordingNameLength(units))
        return {};
    const RecordingNameTemplate* known = recordingNameTemplate(units);
    if (known && !_checkTimeByName(units, known->datePosition()))
        return {};
    return ZVKMedia::mediaWithPath(std::move(path));
}

bool ZVKMediaList::_checkTimeByName(std::string_view units, int64_t position)
{
    return static_cast<int64_t>(units.size())
        >= static_cast<int64_t>(recordingDateTemplate.size()) + position;
}

bool ZVKMediaList::eachDir(const std::string& folder, std::vector<ZVKMedia>& array, std::stop_token stop)
{
    const auto addRecording = [&](std::string path) {
        if (asciiLower(piecesOfPath(path).extension) != "avi")
            return true;
        auto media = createMediaByPath(std::move(path));
        if (!media)
            return true;
        array.push_back(std::move(*media));
        return array.size() < maximumCount;
    };
    FolderWalk walk(addRecording, std::move(stop));
    walk.enter(standardizedPath(folder));
    const std::string failures = walk.failures();
    if (!failures.empty())
        logFormat("could not read %s", failures.c_str());
    return failures.empty();
}

std::vector<ZVKMedia> ZVKMediaList::sortedMedias(const std::string& folder, std::stop_token stop)
{
    std::vector<ZVKMedia> found;
    eachDir(folder, found, std::move(stop));
    return sortedByDate(std::move(found));
}
