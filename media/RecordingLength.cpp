#include "media/RecordingLength.h"

#include "common/FilePlace.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

using std::chrono::microseconds;

/// The bytes of a header with bounds: what lies outside reads as nothing.
class Header {
public:
    explicit Header(std::span<const std::byte> all)
        : bytes(all)
    {
    }

    std::optional<uint32_t> word(size_t at) const
    {
        if (at > bytes.size() || bytes.size() - at < sizeof(uint32_t))
            return {};
        uint32_t value = 0;
        std::memcpy(&value, bytes.data() + at, sizeof value);
        return value;
    }

    bool says(size_t at, std::string_view id) const
    {
        return at <= bytes.size() && bytes.size() - at >= id.size()
            && std::memcmp(bytes.data() + at, id.data(), id.size()) == 0;
    }

private:
    std::span<const std::byte> bytes;
};

/// count x scale / rate seconds.
std::optional<microseconds> lengthOf(uint64_t count, uint64_t scale, uint64_t rate)
{
    constexpr microseconds longest = std::chrono::days(1);
    if (count == 0 || scale == 0 || rate == 0)
        return {};
    const long double length = 1e6L * static_cast<long double>(count) * static_cast<long double>(scale)
        / static_cast<long double>(rate);
    if (length > static_cast<long double>(longest.count()) || length < 1)
        return {};
    return microseconds(static_cast<int64_t>(length + 0.5L));
}

std::optional<microseconds> lengthOfStream(const Header& header, size_t at)
{
    const auto scale = header.word(at + 20);
    const auto rate = header.word(at + 24);
    const auto count = header.word(at + 32);
    return scale && rate && count ? lengthOf(*count, *scale, *rate) : std::nullopt;
}

std::optional<microseconds> lengthOfMainHeader(const Header& header, size_t at)
{
    const auto period = header.word(at);
    const auto count = header.word(at + 16);
    return period && count ? lengthOf(*count, *period, 1000000) : std::nullopt;
}

constexpr size_t headSize = 8; // a chunk's id and size

} // namespace

std::optional<microseconds> recordingLength(std::span<const std::byte> bytes)
{
    const Header header(bytes);
    if (!header.says(0, "RIFF") || !header.says(8, "AVI LIST") || !header.says(20, "hdrl"))
        return {};
    std::optional<microseconds> ofMainHeader;
    for (size_t at = 24;;) {
        const auto size = header.word(at + 4);
        if (!size)
            return ofMainHeader;
        if (header.says(at, "avih"))
            ofMainHeader = lengthOfMainHeader(header, at + headSize);
        const bool isStream = header.says(at, "LIST") && header.says(at + headSize, "strlstrh");
        const size_t stream = at + headSize + 4 + headSize;
        if (isStream && header.says(stream, "vids")) {
            if (const auto length = lengthOfStream(header, stream))
                return length;
        }
        at += headSize + *size + *size % 2;
    }
}

std::optional<microseconds> recordingLengthOfFile(const std::string& path)
{
    // A link in the folder was accepted by the walk, which looks where it leads.
    const Descriptor file(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file)
        return {};
    // A folder or a pipe cannot be read at an offset; a device tells no header.
    std::array<std::byte, recordingHeaderSize> bytes;
    const ssize_t count = ::pread(file.get(), bytes.data(), bytes.size(), 0);
    if (count <= 0)
        return {};
    return recordingLength(std::span(bytes).first(static_cast<size_t>(count)));
}
