#include "common/ByteCursor.h"

#include <algorithm>
#include <bit>
#include <utility>

static_assert(std::endian::native == std::endian::little);

ByteCursor::ByteCursor(ByteSource& source, std::stop_token stop)
    : bytes(source),
      stopToken(std::move(stop))
{
}

size_t ByteCursor::read(std::span<std::byte> into)
{
    lack = Shortfall::none;
    size_t done = 0;
    while (done < into.size()) {
        if (next == filled && !refill())
            break;
        const size_t count = std::min(into.size() - done, filled - next);
        std::memcpy(into.data() + done, buffer.data() + next, count);
        next += count;
        done += count;
    }
    return done;
}

std::optional<uint32_t> ByteCursor::readWordAcrossRefill()
{
    uint32_t word = 0;
    if (!readWhole(std::as_writable_bytes(std::span(&word, 1))))
        return {};
    return word;
}

std::optional<uint32_t> ByteCursor::readWordsUntil(uint32_t one, uint32_t other)
{
    while (const std::optional<uint32_t> word = readWord()) {
        if (*word == one || *word == other)
            return word;
        skipBufferedWordsBut(one, other);
    }
    return {};
}

void ByteCursor::skipBufferedWordsBut(uint32_t one, uint32_t other)
{
    // Padding may fill a whole file, so this loop keeps its place in registers.
    const std::byte* place = buffer.data() + next;
    for (size_t left = (filled - next) / sizeof one; left > 0; --left) {
        uint32_t word = 0;
        std::memcpy(&word, place, sizeof word);
        if (word == one || word == other)
            break;
        place += sizeof word;
    }
    next = static_cast<size_t>(place - buffer.data());
}

void ByteCursor::skip(uint64_t count)
{
    if (count <= filled - next)
        next += static_cast<size_t>(count);
    else
        forgetBufferAndGoTo(position() + count);
}

void ByteCursor::stepBack()
{
    if (next > 0)
        --next;
    else if (bufferOffset > 0)
        forgetBufferAndGoTo(bufferOffset - 1);
}

void ByteCursor::forgetBufferAndGoTo(uint64_t offset)
{
    bufferOffset = offset;
    filled = next = 0;
    isInOrder = false;
}

bool ByteCursor::refill()
{
    if (stopToken.stop_requested()) {
        lack = Shortfall::stopped;
        return false;
    }
    if (isInOrder) {
        prepareSequentialWindow();
    } else if (!prepareNewWindow()) {
        lack = Shortfall::deviceFailed;
        return false;
    }
    const auto count = bytes.read(std::span(buffer).subspan(filled, window));
    filled += count.value_or(0);
    isInOrder = count.value_or(0) > 0;
    if (!count)
        lack = Shortfall::deviceFailed;
    else if (*count == 0)
        lack = Shortfall::endOfData;
    return lack == Shortfall::none;
}

/// Keeps the last byte in front of the new ones, so that stepping back over it needs no seek.
void ByteCursor::prepareSequentialWindow()
{
    if (filled >= window)
        window = std::min(window * 2, largestWindow);
    bufferOffset += filled - 1;
    buffer[0] = buffer[filled - 1];
    filled = next = 1;
    buffer.resize(std::max(buffer.size(), 1 + window));
}

bool ByteCursor::prepareNewWindow()
{
    forgetBufferAndGoTo(position());
    window = smallestWindow;
    buffer.resize(std::max(buffer.size(), 1 + window));
    return bytes.seek(bufferOffset);
}
