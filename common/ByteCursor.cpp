#include "common/ByteCursor.h"

#include <algorithm>
#include <bit>
#include <utility>

static_assert(std::endian::native == std::endian::little);

ByteCursor::ByteCursor(ByteSource& source, std::stop_token stop)
    : m_source(source),
      m_stop(std::move(stop))
{
}

size_t ByteCursor::read(std::span<std::byte> into)
{
    m_shortfall = Shortfall::None;
    size_t done = 0;
    while (done < into.size()) {
        if (m_next == m_filled && !refill())
            break;
        const size_t count = std::min(into.size() - done, m_filled - m_next);
        std::memcpy(into.data() + done, m_buffer.data() + m_next, count);
        m_next += count;
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
    const std::byte* place = m_buffer.data() + m_next;
    for (size_t left = (m_filled - m_next) / sizeof one; left > 0; --left) {
        uint32_t word = 0;
        std::memcpy(&word, place, sizeof word);
        if (word == one || word == other)
            break;
        place += sizeof word;
    }
    m_next = static_cast<size_t>(place - m_buffer.data());
}

void ByteCursor::skip(uint64_t count)
{
    if (count <= m_filled - m_next)
        m_next += static_cast<size_t>(count);
    else
        forgetBufferAndGoTo(position() + count);
}

void ByteCursor::stepBack()
{
    if (m_next > 0)
        --m_next;
    else if (m_bufferOffset > 0)
        forgetBufferAndGoTo(m_bufferOffset - 1);
}

void ByteCursor::forgetBufferAndGoTo(uint64_t offset)
{
    m_bufferOffset = offset;
    m_filled = m_next = 0;
    m_isInOrder = false;
}

bool ByteCursor::refill()
{
    if (m_stop.stop_requested()) {
        m_shortfall = Shortfall::Stopped;
        return false;
    }
    if (m_isInOrder) {
        prepareSequentialWindow();
    } else if (!prepareNewWindow()) {
        m_shortfall = Shortfall::DeviceFailed;
        return false;
    }
    const auto count = m_source.read(std::span(m_buffer).subspan(m_filled, m_window));
    m_filled += count.value_or(0);
    m_isInOrder = count.value_or(0) > 0;
    if (!count)
        m_shortfall = Shortfall::DeviceFailed;
    else if (*count == 0)
        m_shortfall = Shortfall::EndOfData;
    return m_shortfall == Shortfall::None;
}

/// Keeps the last byte in front of the new ones, so that stepping back over it needs no seek.
void ByteCursor::prepareSequentialWindow()
{
    if (m_filled >= m_window)
        m_window = std::min(m_window * 2, largestWindow);
    m_bufferOffset += m_filled - 1;
    m_buffer[0] = m_buffer[m_filled - 1];
    m_filled = m_next = 1;
    m_buffer.resize(std::max(m_buffer.size(), 1 + m_window));
}

bool ByteCursor::prepareNewWindow()
{
    forgetBufferAndGoTo(position());
    m_window = smallestWindow;
    m_buffer.resize(std::max(m_buffer.size(), 1 + m_window));
    return m_source.seek(m_bufferOffset);
}
