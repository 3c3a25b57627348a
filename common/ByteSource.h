#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

/// Bytes that may come from a device that can fail or be pulled at any moment.
class ByteSource {
public:
    ByteSource() = default;
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;
    virtual ~ByteSource() = default;

    /// Reads from the current place, at most the span's size, and moves on. Fewer bytes than asked are
    /// allowed; 0 for a span that is not empty means the end. Nothing when the device failed.
    virtual std::optional<size_t> read(std::span<std::byte> into) = 0;
    /// Moves to an offset from the beginning, which may lie past the end. False when the device cannot.
    virtual bool seek(uint64_t offset) = 0;
    /// How many bytes there were when the source was opened.
    virtual uint64_t size() const = 0;
};
