#pragma once

#include <cstdint>
#include <functional>
#include <optional>

/// How many bytes formatting writes to a card of this size: the reserved sectors, both allocation tables and
/// the root folder's cluster. The system writes whole blocks, which makes it up to 4 kB more.
uint64_t bytesOfFormat(uint64_t volumeSize);

/// How far the writing of a format is, by what has arrived on the card since this was made.
class FormatWriting {
public:
    /// What has arrived on the card so far, in bytes, counted from any moment; nothing when that is not
    /// known.
    using Count = std::function<std::optional<uint64_t>()>;

    FormatWriting(uint64_t volumeSize, Count count);

    /// Counts again: 0 for nothing yet, 1 for all of it. Never less than before; what cannot be counted
    /// changes nothing.
    double share();

private:
    uint64_t whole;
    Count written;
    std::optional<uint64_t> before;
    double latest = 0;
};
