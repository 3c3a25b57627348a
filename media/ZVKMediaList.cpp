#include "media/ZVKMediaList.h"

#include "common/Log.h"
#include "common/Text.h"
#include "media/FolderWalk.h"
#include "media/MediaPath.h"
#include "media/RecordingName.h"

#include <algorithm>
#include <new>
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
    std::ranges::sort(places, [](const Place& one, const Place& other) {
        return one.sortKey != other.sortKey ? one.sortKey < other.sortKey
                                            : one.media->standsBefore(*other.media);
    });

    std::vector<ZVKMedia> sorted;
    sorted.reserve(found.size());
    for (const Place& place : places)
        sorted.push_back(std::move(*place.media));
    return sorted;
}

/// Whether a file of that name (without its extension) is listed.
bool isRecordingName(std::string_view name)
{
    const RecordingNameUnits units(name);
    if (!hasRecordingNameLength(units))
        return false;
    const RecordingNameTemplate* known = recordingNameTemplate(units);
    return !known || ZVKMediaList::_checkTimeByName(units, known->datePosition());
}

MediaScanState stateOf(const FolderWalk& walk, const std::string& root)
{
    MediaScanState state;
    state.isReadable = !walk.rootError();
    state.isCut = walk.hasPassedOver();
    state.unreadCount = walk.failureCount();
    if (walk.failureCount() > 0)
        state.unread = walk.firstFailure().substr(root == "/" ? 1 : root.size() + 1);
    if (walk.rootError())
        state.failure = root + ": " + walk.rootError().message();
    else if (walk.failureCount() > 0)
        state.failure = walk.firstFailure() + ": " + walk.firstError().message();
    if (walk.failureCount() > 1)
        state.failure += " (and " + std::to_string(walk.failureCount() - 1) + " more)";
    return state;
}

} // namespace

ZVKMediaList::ZVKMediaList(platform::Dispatcher& queues)
    : dispatcher(queues)
{
}

ZVKMediaList::~ZVKMediaList()
{
    newestScan.request_stop();
}

std::unique_ptr<ZVKMediaList> ZVKMediaList::mediaList(platform::Dispatcher& queues)
{
    return std::make_unique<ZVKMediaList>(queues);
}

void ZVKMediaList::setDirectoryPath(std::optional<std::string> path)
{
    directory = std::move(path);
    if (!directory) {
        newestScan.request_stop();
        scanLife.renew();
        return;
    }
    clear();
    newestScan = std::stop_source();
    dispatcher.inBackgroundThen([folder = standardizedPath(*directory),
                                    token = newestScan.get_token()] { return scan(folder, token); },
        scanLife.guarded([this](MediaScan found) { replaceMedias(found); }));
}

void ZVKMediaList::clear()
{
    newestScan.request_stop();
    scanLife.renew();
    medias.clear();
    state = {};
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

void ZVKMediaList::replaceMedias(MediaScan& scanned)
{
    medias = std::move(scanned.medias);
    state = std::move(scanned.state);
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
    if (!isRecordingName(piecesOfPath(path).name))
        return {};
    return ZVKMedia::mediaWithStandardizedPath(std::move(path));
}

bool ZVKMediaList::_checkTimeByName(std::string_view units, int64_t position)
{
    return static_cast<int64_t>(units.size())
        >= static_cast<int64_t>(recordingDateTemplate.size()) + position;
}

MediaScanState ZVKMediaList::eachDir(
    const std::string& folder, std::vector<ZVKMedia>& array, std::stop_token stop)
{
    const auto isRecording = [](std::string_view name) {
        constexpr std::string_view extension = ".avi";
        return name.size() > extension.size()
            && asciiLower(name.substr(name.size() - extension.size())) == extension
            && isRecordingName(name.substr(0, name.size() - extension.size()));
    };
    const auto addRecording = [&](std::string path) {
        array.push_back(ZVKMedia::mediaWithStandardizedPath(std::move(path)));
        return array.size() < maximumCount;
    };
    FolderWalk walk(isRecording, addRecording, std::move(stop));
    const std::string root = standardizedPath(folder);
    walk.run(root);
    MediaScanState state = stateOf(walk, root);
    if (!state.failure.empty())
        logFormat("cannot read %s", state.failure.c_str());
    return state;
}

MediaScan ZVKMediaList::scan(const std::string& folder, std::stop_token stop)
{
    try {
        MediaScan found;
        found.state = eachDir(folder, found.medias, std::move(stop));
        found.medias = sortedByDate(std::move(found.medias));
        return found;
    } catch (const std::bad_alloc&) {
        logLine("not enough memory for the list of recordings");
        MediaScan none;
        none.state.isReadable = false;
        none.state.failure = "the list of recordings: not enough memory";
        return none;
    }
}
