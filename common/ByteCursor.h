#pragma once

#include "common/ByteSource.h"

#include <cstring>
#include <stop_token>
#include <vector>

/// Reads a source forwards, in small pieces at little cost: it starts with a small buffer at every new place
/// and enlarges it while reading goes on without a gap; skipping inside the buffer does not touch the source.
class ByteCursor {
public:
    /// Why a read gave less than it was asked for.
    enum class Shortfall { none, endOfData, deviceFailed, stopped };

    /// Starts at the source's beginning. A stop request is noticed whenever the buffer is filled anew.
    explicit ByteCursor(ByteSource& source, std::stop_token stop = {});

    /// Copies up to the span's size and moves on by as much. Less than that only for `shortfall()`.
    size_t read(std::span<std::byte> into);
    bool readWhole(std::span<std::byte> into) { return read(into) == into.size(); }
    /// A 32-bit little-endian word.
    std::optional<uint32_t> readWord()
    {
        uint32_t word = 0;
        if (filled - next < sizeof word)
            return readWordAcrossRefill();
        lack = Shortfall::none;
        std::memcpy(&word, buffer.data() + next, sizeof word);
        next += sizeof word;
        return word;
    }

    /// Reads words until one of the two is met, which is the last one read; nothing when the data ends
    /// before.
    std::optional<uint32_t> readWordsUntil(uint32_t one, uint32_t other);

    /// Moves forward, also past the end.
    void skip(uint64_t count);
    /// Moves back by one byte; at the beginning it stays.
    void stepBack();

    uint64_t position() const { return bufferOffset + next; }
    /// Why the last read fell short; none when it did not.
    Shortfall shortfall() const { return lack; }

    static constexpr size_t smallestWindow = 4 * 1024;
    static constexpr size_t largestWindow = 256 * 1024;

private:
    std::optional<uint32_t> readWordAcrossRefill();
    void skipBufferedWordsBut(uint32_t one, uint32_t other);
    bool refill();
    void prepareSequentialWindow();
    bool prepareNewWindow();
    void forgetBufferAndGoTo(uint64_t offset);

    ByteSource& bytes;
    std::stop_token stopToken;
    std::vector<std::byte> buffer;
    size_t window = smallestWindow;
    uint64_t bufferOffset = 0; // of buffer[0] in the source
    size_t filled = 0;
    size_t next = 0;
    bool isInOrder = false; // the source stands at the end of the buffer
    Shortfall lack = Shortfall::none;
};
