#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// One recording file of the camera: the pieces of its path, and its kind and start time as its name tells
/// them. The file is never opened. Filled once, by `mediaWithPath`; a value afterwards.
///
/// Names: "alwa_yyyymmdd_hhmiss", "motion_yyyymmdd_hhmiss" or "event_yyyymmdd_hhmiss"; a name of any of the
/// three lengths is read by its own prefix ("alwa_20150321_142530_F"). Lengths are UTF-16 code units.
/// Paths are bytes, not necessarily UTF-8.
class ZVKMedia {
public:
    static ZVKMedia mediaWithPath(std::string path);
    /// The same of a path that is absolute and lexically normal already.
    static ZVKMedia mediaWithStandardizedPath(std::string path);

    /// Absolute and lexically normal.
    const std::string& path() const { return wholePath; }
    /// The last path component without its extension.
    std::string_view mediaName() const;
    /// The last component's extension as written; empty when there is none.
    std::string_view extension() const;
    /// `path` without its last component.
    std::string_view dir() const;

    /// The start of the recording; all six are 0 when it is unknown. No calendar check: a 31st of February,
    /// hour 24 and second 60 pass.
    int32_t year() const { return start.year; }
    int32_t month() const { return start.month; }
    int32_t day() const { return start.day; }
    int32_t hour() const { return start.hour; }
    int32_t minute() const { return start.minute; }
    int32_t second() const { return start.second; }

    /// The kind: 0 always (also for a name without a known prefix), 1 motion, 2 event.
    int32_t mediaDivision() const { return division; }
    bool isAlwaysMedia() const { return division == 0; }
    bool isMotionMedia() const { return division == 1; }
    bool isEventMedia() const { return division == 2; }

    /// "mediaName.extension".
    std::string fileName() const;
    /// The start as 14 digits; "00000000000000" when it is unknown.
    std::string yyyymmddhhmiss() const;

    /// Negative when this one sorts before the other, 0 when equal, positive when after: the older start
    /// first, an unknown one before all; at the same second event before motion before always.
    int64_t compareDate(const ZVKMedia& other) const { return sortKey() - other.sortKey(); }
    /// Numbers whose order is that of `compareDate`.
    int64_t sortKey() const;
    /// The order among recordings that compare equal: by file name in any letter case, then by path.
    bool standsBefore(const ZVKMedia& other) const;

private:
    struct Start {
        int32_t year = 0;
        int32_t month = 0;
        int32_t day = 0;
        int32_t hour = 0;
        int32_t minute = 0;
        int32_t second = 0;
    };

    void parsePath(std::string path);
    bool _parseTimeByName(std::string_view units, int64_t position);
    void _updateToUknown();
    int64_t startNumber() const; // yyyymmddhhmiss

    std::string wholePath;
    Start start;
    int32_t division = 0;
};
