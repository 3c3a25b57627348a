#pragma once

#include "common/Life.h"
#include "drives/DriveFigures.h"
#include "platform/Dispatcher.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <unordered_map>
#include <vector>

/// The drives that the recordings of a folder make. Lengths and telemetry are read in the background,
/// telemetry drive by drive in the order in which the drives are looked at; nothing waits for it. What was
/// asked for before the recordings changed is dropped. Main thread only.
class DriveLibrary {
public:
    struct Told {
        /// The drives of the recordings are known, or there are none any more.
        std::function<void()> listed;
        /// The figures of that drive were read.
        std::function<void(size_t drive)> figured;
    };

    DriveLibrary(platform::Dispatcher& dispatcher, Told told);
    ~DriveLibrary();

    /// The recordings as a scan sorts them. No drives until they were found.
    void setRecordings(std::vector<ZVKMedia> recordings);
    void clear() { setRecordings({}); }
    /// The recordings have other paths; the drives stay.
    void movedTo(const std::string& from, const std::string& to);

    const std::vector<Drive>& drives() const { return found; }
    bool isReading() const { return readingLengths; }
    /// Null until they were read. The track is left out.
    const DriveFigures* figures(size_t drive) const;
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
    void findPlaces();
    void drivesFound(std::vector<Drive> drives);
    void readNext();
    void figuresRead(size_t drive, DriveFigures figures);

    platform::Dispatcher& dispatcher;
    Told told;
    std::vector<Drive> found;
    std::vector<std::optional<DriveFigures>> known; // parallel to `found`
    std::vector<size_t> wanted;
    std::unordered_map<std::string, Where> places; // of the recordings, by path
    bool readingLengths = false;
    bool readingFigures = false;
    std::stop_source stop;
    Life reading; // of the recordings at hand
};
