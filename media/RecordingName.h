#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// How the camera names its recordings: a prefix that tells the kind, then the start time.
struct RecordingNameTemplate {
    std::string_view text;
    std::string_view prefix;
    int32_t mediaDivision; // 0 always, 1 motion, 2 event

    int64_t datePosition() const { return static_cast<int64_t>(prefix.size()); }
};

inline constexpr std::string_view recordingDateTemplate = "yyyymmdd_hhmiss";

/// Whether a name is as long as one of the templates, whichever its prefix: a camera suffix ("_F") gives an
/// always recording the length of a motion one.
bool hasRecordingNameLength(std::string_view units);

/// The template whose prefix (in the same letter case) the name has; null for none.
const RecordingNameTemplate* recordingNameTemplate(std::string_view units);

/// A file's name (without directory and extension) as the templates measure it: one character for each UTF-16
/// code unit, "?" where that is not ASCII, which no template holds.
class RecordingNameUnits {
public:
    /// The name must outlive this.
    explicit RecordingNameUnits(std::string_view name);
    RecordingNameUnits(const RecordingNameUnits&) = delete;
    RecordingNameUnits& operator=(const RecordingNameUnits&) = delete;

    operator std::string_view() const { return units; }

private:
    std::string converted;
    std::string_view units;
};
