#pragma once

#include "common/ByteSource.h"

#include <algorithm>

/// Bytes in memory, which must outlive the source.
class MemoryByteSource : public ByteSource {
public:
    explicit MemoryByteSource(std::span<const std::byte> bytes)
        : held(bytes)
    {
    }

    std::optional<size_t> read(std::span<std::byte> into) override
    {
        const uint64_t begin = std::min<uint64_t>(place, held.size());
        const auto rest = held.subspan(static_cast<size_t>(begin));
        const size_t count = std::min(into.size(), rest.size());
        std::copy_n(rest.begin(), count, into.begin());
        place = begin + count;
        return count;
    }

    bool seek(uint64_t offset) override
    {
        place = offset;
        return true;
    }

    uint64_t size() const override { return held.size(); }

private:
    std::span<const std::byte> held;
    uint64_t place = 0;
};
