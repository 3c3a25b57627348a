#pragma once

#include "media/Drives.h"
#include "media/RecordingLength.h"
#include "media/ZVKMediaList.h"
#include "tests/support/RecordingFile.h"
#include "tests/support/TempFolder.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

/// 1,250 drives of six minutes with both cameras, two hours apart: as many recordings as a list takes.
inline const std::vector<ZVKMedia>& manyRecordings()
{
    static const TempFolder card;
    static const std::vector<ZVKMedia> all = [] {
        const auto bytes = recordingFile(60);
        const auto first = std::chrono::local_days(std::chrono::year(2024) / 1 / 1);
        for (int i = 0; i < static_cast<int>(ZVKMediaList::maximumCount); ++i) {
            const auto start = first + std::chrono::hours(i / 12 * 2) + std::chrono::minutes(i / 2 % 6);
            std::string name = "alwa_" + cameraTimeText(start) + (i % 2 == 0 ? "_F.avi" : "_R.avi");
            std::erase_if(name, [](char c) { return c == '-' || c == ':'; });
            std::ranges::replace(name, 'T', '_');
            card.file(name, bytes);
        }
        return ZVKMediaList::scan(card.path()).medias;
    }();
    return all;
}

/// The yardstick: a header read of each.
inline void readHeadersBare()
{
    std::array<char, recordingHeaderSize> bytes;
    for (const ZVKMedia& media : manyRecordings()) {
        const int file = ::open(media.path().c_str(), O_RDONLY | O_CLOEXEC);
        benchmark::DoNotOptimize(::pread(file, bytes.data(), bytes.size(), 0));
        ::close(file);
    }
}
