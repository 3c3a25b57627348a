#pragma once

#include "media/Drives.h"

#include <cstddef>
#include <vector>

/// A drive as one line: its takes one after the other as they are played, without the gaps between them. All
/// numbers are seconds.
class DriveTimeline {
public:
    struct Place {
        size_t take = 0;
        double seconds = 0; ///< into the take

        bool operator==(const Place&) const = default;
    };

    DriveTimeline() = default;
    explicit DriveTimeline(const Drive& drive);

    size_t takeCount() const { return lengths.size(); }
    double length() const;
    double lengthOf(size_t take) const { return lengths[take]; }
    /// Where a take begins on the line; `takeCount()` gives the line's end.
    double startOf(size_t take) const;
    /// The player knows a take's length better than its header. Below 0 and NaN change nothing.
    void setLength(size_t take, double seconds);

    /// The place at a point of the line, within the takes; the end of a take is the start of the next one.
    /// The line is not empty.
    Place placeAt(double seconds) const;
    /// The point of a place on the line, within its take.
    double pointOf(Place place) const;

private:
    std::vector<double> lengths;
    std::vector<double> starts; // of each take, and the end
    void addUp();
};
