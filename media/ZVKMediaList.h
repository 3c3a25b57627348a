#pragma once

#include "common/Life.h"
#include "media/ZVKMedia.h"
#include "platform/Dispatcher.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

class ZVKMediaList;

class ZVKMediaListDelegate {
public:
    virtual ~ZVKMediaListDelegate() = default;
    /// The list holds the result of a scan, also an empty one. Called on the main thread.
    virtual void mediaListChanged(ZVKMediaList& list) = 0;
};

/// How the walk through a folder went.
struct MediaScanState {
    bool isReadable = true; ///< the folder itself; false as well when the scan failed as a whole
    std::string unread; ///< what below it could not be read first: a path below it; empty when all could
    size_t unreadCount = 0;
    /// There may be more recordings than the list takes.
    bool isCut = false;
    std::string failure; ///< what could not be read, and why; empty when all could
};

struct MediaScan {
    std::vector<ZVKMedia> medias;
    MediaScanState state;
};

/// The recordings of a folder and of all folders below it, oldest first; at the same second event before
/// motion before always, then by file name in any letter case (front before rear), then by path.
///
/// Main thread only. A scan runs in the background; its result becomes the entries on the main thread in one
/// step, right before the delegate is told, and until then the list is empty. A scan is void once a newer
/// path has been set or the list is gone: it stops early, and nobody is told. Destroying the list waits for
/// nothing.
class ZVKMediaList {
public:
    /// A scan takes no more files once it has this many, except that every folder which is still being listed
    /// adds at most one more.
    static constexpr size_t maximumCount = 15000;

    explicit ZVKMediaList(platform::Dispatcher& queues);
    ~ZVKMediaList();
    ZVKMediaList(const ZVKMediaList&) = delete;
    ZVKMediaList& operator=(const ZVKMediaList&) = delete;

    static std::unique_ptr<ZVKMediaList> mediaList(platform::Dispatcher& queues);

    /// Starts a scan of the folder and returns at once. No path: the entries stay, and nobody is told.
    void setDirectoryPath(std::optional<std::string> path);
    /// As it was set.
    const std::optional<std::string>& directoryPath() const { return directory; }

    /// No entries and no scan; the path stays. Nobody is told.
    void clear();

    /// The folder is at another path now, and the entries with it, in one step; nobody is told.
    void movedTo(const std::string& path);

    /// Not owned; null for none.
    void setDelegate(ZVKMediaListDelegate* listener) { delegate = listener; }

    /// How the last scan went.
    const MediaScanState& scanState() const { return state; }
    int64_t count() const { return static_cast<int64_t>(medias.size()); }
    /// Null when the index is negative or not below `count`. Valid until the entries change.
    const ZVKMedia* mediaAtIndex(int64_t index) const;
    /// All entries. Valid until they change.
    const std::vector<ZVKMedia>& all() const { return medias; }
    /// Appends at the end.
    void addMedia(ZVKMedia media);

    /// The recording at the path, or nothing when its name is none of a recording (the extension is not
    /// looked at).
    static std::optional<ZVKMedia> createMediaByPath(std::string path);
    /// Whether the name, a character for each UTF-16 code unit, has room for a date at the position.
    static bool _checkTimeByName(std::string_view units, int64_t position);
    /// Appends the recordings below the folder (.avi in any letter case) in the order of the walk. What
    /// cannot be read is left out; the state says what, and so does one log line.
    static MediaScanState eachDir(
        const std::string& folder, std::vector<ZVKMedia>& array, std::stop_token stop = {});
    /// `eachDir`, sorted. Callable from any thread. Never throws: a scan for which there is not enough memory
    /// is empty and not readable.
    static MediaScan scan(const std::string& folder, std::stop_token stop = {});

private:
    void replaceMedias(MediaScan& scanned);

    platform::Dispatcher& dispatcher;
    ZVKMediaListDelegate* delegate = nullptr;
    std::optional<std::string> directory;
    std::vector<ZVKMedia> medias;
    MediaScanState state;
    std::stop_source newestScan;
    Life scanLife; // of the newest scan
};
