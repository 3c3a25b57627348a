#pragma once

#include "common/Life.h"
#include "drives/DriveFigures.h"
#include "platform/Dispatcher.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

/// The drives that the recordings of a folder make: at once as if each recording lasted a minute, and again
/// as their lengths become known. Lengths, and then telemetry, are read in the background, of the drives that
/// are looked at first; nothing waits for them. A file that hangs is given up, and after a few of them the
/// rest stays unread. What was asked for before the recordings changed is dropped. Main thread only.
class DriveLibrary {
public:
    struct Told {
        /// Other drives are known than before, or none any more.
        std::function<void()> listed;
        /// The same drives; lengths of recordings were read.
        std::function<void()> measured;
        /// The figures of that drive were read.
        std::function<void(size_t drive)> figured;
    };

    DriveLibrary(platform::Dispatcher& dispatcher, Told told);
    ~DriveLibrary();

    /// The recordings as a scan sorts them. No drives until they were found.
    void setRecordings(std::vector<ZVKMedia> recordings);
    void clear() { setRecordings({}); }
    /// The recordings have other paths; the drives stay, and what is not read yet is read there.
    void movedTo(const std::string& from, const std::string& to);

    const std::vector<Drive>& drives() const { return found; }
    /// Whether there may be others, or other lengths, yet.
    bool isReading() const { return readingLengths; }
    /// Whether the lengths of all its recordings were read, so that its end is known.
    bool isMeasured(size_t drive) const { return drive < measured.size() && measured[drive]; }
    /// Null until they were read. The track is left out.
    const DriveFigures* figures(size_t drive) const;
    /// Paths of files that hang.
    const std::set<std::string>& filesGivenUp() const { return givenUp; }
    /// The drive with a recording of that path.
    std::optional<size_t> driveOf(const std::string& path) const;

    /// Whether an impact was found in the recording; nothing while its drive was not read. A recording in no
    /// drive has none.
    std::optional<bool> hasImpact(const std::string& path) const;

    /// These are looked at now, the first one first; earlier wishes are void.
    void lookAt(std::vector<size_t> drives);

private:
    struct Where {
        size_t drive;
        size_t take;
    };
    using Places = std::unordered_map<std::string, Where>; // by path
    struct Length {
        bool isRead = false;
        std::optional<std::chrono::microseconds> value;
    };
    using Lengths = std::vector<Length>; // parallel to the recordings
    /// The drives by what is known.
    struct Grouped {
        std::vector<Drive> drives;
        std::vector<bool> measured;
        Places places;
    };
    /// What was read in one go, and what follows.
    struct Piece {
        Lengths lengths;
        Grouped grouped;
    };
    /// A read in the background that may hang.
    struct Reading {
        Life life;
        std::stop_source stop;
        std::shared_ptr<std::atomic<size_t>> progress; ///< what was read
        size_t seen = 0; ///< of the progress
        int idleLooks = 0;

        void begin();
        void end();
        bool hangs();
    };
    static Places placesOf(const std::vector<Drive>& drives);
    static Grouped groupedBy(const std::vector<ZVKMedia>& recordings, const Lengths& lengths);
    bool isAllRead() const;
    std::vector<size_t> unread() const;
    void showByNames();
    void readLengths(std::chrono::milliseconds budget);
    void watch(Reading& reading, std::function<void(size_t at)> hung);
    void lengthHangs(size_t recording);
    void lengthsRead(Piece piece);
    void group(Grouped grouped);
    bool hasGivenUp() const;
    void readNext();
    void figuresHang(const Take& take);
    void figuresRead(const Drive& drive, DriveFigures figures);

    platform::Dispatcher& dispatcher;
    Told told;
    std::shared_ptr<const std::vector<ZVKMedia>> recordings = std::make_shared<const std::vector<ZVKMedia>>();
    Lengths lengths;
    std::vector<Drive> found;
    std::vector<bool> measured; // parallel to `found`
    std::vector<std::optional<DriveFigures>> known; // parallel to `found`
    std::vector<size_t> wanted;
    Places places;
    bool readingLengths = false;
    bool readingFigures = false;
    std::set<std::string> givenUp;
    Life namesLife;
    Reading lengthReading;
    Reading figureReading;
};
