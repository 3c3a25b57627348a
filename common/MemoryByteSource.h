#pragma once

#include "common/ByteSource.h"

#include <algorithm>

/// Bytes in memory, which must outlive the source.
class MemoryByteSource : public ByteSource {
public:
    explicit MemoryByteSource(std::span<const std::byte> bytes)
        : m_bytes(bytes)
    {
    }

    std::optional<size_t> read(std::span<std::byte> into) override
    {
        const uint64_t begin = std::min<uint64_t>(m_offset, m_bytes.size());
        const auto rest = m_bytes.subspan(static_cast<size_t>(begin));
        const size_t count = std::min(into.size(), rest.size());
        std::copy_n(rest.begin(), count, into.begin());
        m_offset = begin + count;
        return count;
    }

    bool seek(uint64_t offset) override
    {
        m_offset = offset;
        return true;
    }

    uint64_t size() const override { return m_bytes.size(); }

private:
    std::span<const std::byte> m_bytes;
    uint64_t m_offset = 0;
};
