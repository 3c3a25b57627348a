#pragma once

#include "common/MemoryByteSource.h"

#include <algorithm>
#include <functional>
#include <limits>

/// A device with faults: it gives bytes in small portions and fails at a position.
class UnreliableSource : public MemoryByteSource {
public:
    using MemoryByteSource::MemoryByteSource;

    uint64_t failsAt = std::numeric_limits<uint64_t>::max();
    size_t portion = std::numeric_limits<size_t>::max();
    bool canSeek = true;
    std::function<void()> beforeRead = [] {};
    size_t readCount = 0;

    std::optional<size_t> read(std::span<std::byte> into) override
    {
        ++readCount;
        beforeRead();
        if (position >= failsAt)
            return {};
        const uint64_t allowed = std::min<uint64_t>({into.size(), portion, failsAt - position});
        const auto count = MemoryByteSource::read(into.first(static_cast<size_t>(allowed)));
        position += *count;
        return count;
    }

    bool seek(uint64_t offset) override
    {
        position = offset;
        return canSeek && MemoryByteSource::seek(offset);
    }

private:
    uint64_t position = 0;
};
