#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Appends the lowest `size` bytes of the value, the least significant first.
inline void putNumber(std::vector<std::byte>& bytes, uint64_t value, size_t size)
{
    for (size_t i = 0; i < size; ++i)
        bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
}

/// Appends an IEEE 754 double.
inline void putDouble(std::vector<std::byte>& bytes, double value)
{
    putNumber(bytes, std::bit_cast<uint64_t>(value), 8);
}

inline void putText(std::vector<std::byte>& bytes, std::string_view text)
{
    for (const char c : text)
        bytes.push_back(static_cast<std::byte>(c));
}
