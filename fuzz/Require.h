#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What must hold for every input; a finding otherwise.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What comes before the next separator, which is taken away with it; the rest when there is none.
inline std::string_view nextPart(std::string_view& rest, char separator)
{
    const std::string_view part = rest.substr(0, rest.find(separator));
    rest.remove_prefix(part.size() == rest.size() ? part.size() : part.size() + 1);
    return part;
}

/// The next byte, which is taken away; 0 when there is none.
inline unsigned char nextByte(std::string_view& rest)
{
    const unsigned char byte = rest.empty() ? 0 : static_cast<unsigned char>(rest.front());
    rest.remove_prefix(rest.empty() ? 0 : 1);
    return byte;
}

/// What a target does with an input.
void fuzz(std::string_view input);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    fuzz({reinterpret_cast<const char*>(input), size});
    return 0;
}
