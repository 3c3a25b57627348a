#pragma once

#include "tools/samplecard/AviWriter.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The header chunk of a recording: a main header, and the header of a video stream.
struct RecordingHeader {
    uint32_t period = 40000; // microseconds a picture, in the main header
    uint32_t mainCount = 0; // pictures
    uint32_t scale = 1;
    uint32_t rate = 25;
    uint32_t count = 0; // of the stream
    std::string stream = "vids";

    std::string bytes() const
    {
        const std::string mainHeader =
            word(period) + std::string(12, 0) + word(mainCount) + std::string(36, 0);
        const std::string streamHeader = stream + std::string(16, 0) + word(scale) + word(rate) + word(0)
            + word(count) + std::string(20, 0);
        const std::string list = "strl" + chunk("strh", streamHeader);
        return "hdrl" + chunk("avih", mainHeader) + chunk("LIST", list);
    }

    static std::string word(uint32_t value)
    {
        std::string four;
        for (int i = 0; i < 4; ++i)
            four.push_back(static_cast<char>(value >> 8 * i));
        return four;
    }
    static std::string chunk(std::string_view id, const std::string& body)
    {
        return std::string(id) + word(static_cast<uint32_t>(body.size())) + body;
    }
};

/// A minute with an impact of 2 g in its middle, one G otherwise.
inline SideDataWriter minuteWithImpact()
{
    SideDataWriter hit;
    for (int i = 0; i < 600; ++i)
        hit.gsensor(1716023520000 + i * 100, 0, i == 300 ? 512 : 0, 256);
    return hit;
}

/// A file of that length with that side data.
inline std::vector<std::byte> recordingFile(uint32_t seconds, const SideDataWriter& sideData = {})
{
    const std::string header = RecordingHeader{.count = seconds * 25}.bytes();
    return AviWriter().chunk("LIST", std::as_bytes(std::span(header))).junk(sideData).bytes();
}
