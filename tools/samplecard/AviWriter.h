#pragma once

#include "tools/samplecard/SideDataWriter.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// The smallest file that a recording's reader accepts: "RIFF", size, "AVI ", then top-level chunks in
/// the order given (4-byte id, 32-bit size, body; no padding). It holds no video.
class AviWriter {
public:
    AviWriter();

    /// A size may be given that is not the body's.
    AviWriter& chunk(
        std::string_view id, std::span<const std::byte> body, std::optional<uint32_t> declaredSize = {});
    /// A "LIST" chunk of that many bytes, where the video would be.
    AviWriter& filler(size_t size);
    AviWriter& junk(const SideDataWriter& sideData, std::optional<uint32_t> declaredSize = {});

    /// The whole file, its RIFF size set.
    std::vector<std::byte> bytes() const;
    /// Where the side-data area of the last `junk` begins in the file; 0 before one is added.
    size_t sideDataOffset() const { return sideDataAt; }

private:
    std::vector<std::byte> chunks;
    size_t sideDataAt = 0;
};
