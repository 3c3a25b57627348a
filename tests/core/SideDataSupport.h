#pragma once

#include "telemetry/ZVKBlackBoxData.h"
#include "tests/support/CollectedLog.h"
#include "tests/support/UnreliableSource.h"

#include <string>
#include <utility>
#include <vector>

struct Extraction {
    bool result = false;
    ZVKBlackBoxData data;
};

inline Extraction extract(ByteSource& source, std::stop_token stop = {})
{
    const CollectedLog log;
    Extraction extraction;
    extraction.result = extraction.data.ExtractStreamInformation(source, std::move(stop));
    return extraction;
}

inline Extraction extract(std::span<const std::byte> bytes)
{
    MemoryByteSource source(bytes);
    return extract(source);
}

inline std::span<const std::byte> asBytes(std::string_view text)
{
    return std::as_bytes(std::span(text));
}
