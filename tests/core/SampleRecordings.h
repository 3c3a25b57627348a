#pragma once

#include "tools/samplecard/AviWriter.h"

#include <algorithm>
#include <cstddef>
#include <vector>

inline GpsRecordFields gpsAt(int64_t timestamp, char km = '1', bool zeroByte = true)
{
    return {.timestamp = timestamp, .km = km, .text = "$GA,,,,,,,*00\r\n", .zeroByte = zeroByte};
}

/// A file with this side data, some other chunk before it.
inline AviWriter recordingOf(const SideDataWriter& area, std::optional<uint32_t> declaredSize = {})
{
    AviWriter avi;
    avi.filler(16).junk(area, declaredSize);
    return avi;
}

/// A recording with records of every kind, and where its records stand in the file.
struct Recording {
    struct Place {
        size_t begin;
        size_t end;
        size_t textEnd; // 0 for a sample
    };
    std::vector<std::byte> bytes;
    std::vector<Place> places;

    Recording()
    {
        SideDataWriter area;
        for (const char km : {'1', '0', '9', '\0'}) {
            for (const bool zeroByte : {true, false}) {
                area.gsensor(100, 1, 2, 3).gsensor(200, 4, 5, 6).gps(gpsAt(200, km, zeroByte));
            }
        }
        area.gsensor(300, 7, 8, 9);
        AviWriter avi;
        avi.filler(77).junk(area, area.countedSize());
        bytes = avi.bytes();
        size_t begin = avi.sideDataOffset();
        for (const size_t boundary : area.boundaries()) {
            const size_t end = avi.sideDataOffset() + boundary;
            places.push_back({begin, end, textEnd(begin)});
            begin = end;
        }
    }

    size_t sampleCount(size_t cut) const
    {
        return count([&](const Place& place) { return place.textEnd == 0 && place.end <= cut; });
    }
    size_t gpsHeaderCount(size_t cut) const
    {
        return count([&](const Place& place) { return place.textEnd != 0 && place.begin + 4 + 41 <= cut; });
    }
    size_t gpsTextCount(size_t cut) const
    {
        return count([&](const Place& place) { return place.textEnd != 0 && place.textEnd <= cut; });
    }
    bool cutsSample(size_t cut) const
    {
        return 0 != count([&](const Place& place) {
            return place.textEnd == 0 && place.begin + 4 <= cut && cut < place.end;
        });
    }

private:
    template <typename Rule> size_t count(Rule rule) const
    {
        return static_cast<size_t>(std::ranges::count_if(places, rule));
    }
    /// Where the text of the GPS record at that place ends; 0 for a sample.
    size_t textEnd(size_t begin) const
    {
        const bool isGps = bytes[begin + 2] == std::byte{'P'};
        return isGps ? begin + 4 + 41 + std::to_integer<size_t>(bytes[begin + 4 + 8]) : 0;
    }
};
