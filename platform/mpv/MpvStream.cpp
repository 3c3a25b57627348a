#include "platform/mpv/MpvStream.h"

#include "common/PatientFile.h"
#include "platform/mpv/AviHeader.h"

#include <atomic>
#include <mpv/client.h>
#include <mpv/stream_cb.h>
#include <string_view>
#include <utility>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr const char* scheme = "zavik";

} // namespace

struct MpvStreamFile {
    explicit MpvStreamFile(const std::string& path, std::string under)
        : bytes(path),
          address(std::move(under))
    {
    }

    int64_t read(uint64_t offset, char* into, size_t count)
    {
        waitsSince = Clock::now().time_since_epoch().count();
        const int64_t got = bytes.read(offset, into, count);
        waitsSince = 0;
        if (got == 0 && std::cmp_less(offset, bytes.size()))
            isCutOff = true;
        return got;
    }

    PatientFile bytes;
    const std::string address;
    std::atomic<Clock::rep> waitsSince = 0;
    std::atomic<double> pictureSeconds = 0;
    std::atomic<bool> isCutOff = false; // since it was opened
};

namespace {

/// One opening of the file by the core.
struct Cookie {
    std::shared_ptr<MpvStreamFile> file;
    uint64_t offset = 0;
};

Cookie& cookie(void* opaque)
{
    return *static_cast<Cookie*>(opaque);
}

int64_t readStream(void* opaque, char* into, uint64_t count)
{
    Cookie& stream = cookie(opaque);
    const int64_t got = stream.file->read(stream.offset, into, count);
    if (got > 0)
        stream.offset += static_cast<uint64_t>(got);
    return got;
}

int64_t seekStream(void* opaque, int64_t offset)
{
    if (offset < 0)
        return MPV_ERROR_GENERIC;
    cookie(opaque).offset = static_cast<uint64_t>(offset);
    return offset;
}

int64_t sizeOfStream(void* opaque)
{
    const int64_t size = cookie(opaque).file->bytes.size();
    return size < 0 ? int64_t(MPV_ERROR_GENERIC) : size;
}

void cancelStream(void* opaque)
{
    cookie(opaque).file->bytes.giveUp();
}

void closeStream(void* opaque)
{
    delete &cookie(opaque);
}

void readHeader(MpvStreamFile& file)
{
    constexpr size_t enough = 4096;
    std::string head(enough, '\0');
    const int64_t got = file.read(0, head.data(), head.size());
    head.resize(got > 0 ? static_cast<size_t>(got) : 0);
    if (got > 0)
        file.pictureSeconds = pictureSecondsOf(head, static_cast<uint64_t>(file.bytes.size()));
}

} // namespace

bool MpvStreams::addTo(mpv_handle* mpv)
{
    return mpv_stream_cb_add_ro(mpv, scheme, this, open) >= 0;
}

std::string MpvStreams::announce(const std::string& path, MpvRole role)
{
    const std::lock_guard lock(mutex);
    auto& place = current[size_t(role)];
    if (place)
        place->bytes.giveUp();
    place = std::make_shared<MpvStreamFile>(path, std::string(scheme) + "://" + std::to_string(++number));
    return place->address;
}

std::shared_ptr<MpvStreamFile> MpvStreams::file(MpvRole role) const
{
    const std::lock_guard lock(mutex);
    return current[size_t(role)];
}

void MpvStreams::giveUp(MpvRole role)
{
    const std::lock_guard lock(mutex);
    auto& place = current[size_t(role)];
    if (place)
        place->bytes.giveUp();
    place.reset();
}

std::string MpvStreams::failure(MpvRole role) const
{
    const auto there = file(role);
    if (!there)
        return {};
    if (role == MpvRole::second && there->isCutOff)
        return "It was cut off while it played";
    return there->bytes.failure();
}

std::chrono::milliseconds MpvStreams::waited(MpvRole role) const
{
    const auto there = file(role);
    const Clock::rep since = there ? there->waitsSince.load() : 0;
    if (since == 0)
        return {};
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        Clock::now().time_since_epoch() - Clock::duration(since));
}

double MpvStreams::pictureSeconds(MpvRole role) const
{
    const auto there = file(role);
    return there ? there->pictureSeconds.load() : 0;
}

int MpvStreams::open(void* opaque, char* address, mpv_stream_cb_info* info)
{
    auto& self = *static_cast<MpvStreams*>(opaque);
    for (const MpvRole role : {MpvRole::first, MpvRole::second}) {
        const auto file = self.file(role);
        if (!file || file->address != address)
            continue;
        // Of the first the core tells how long it is.
        if (role == MpvRole::second)
            readHeader(*file);
        info->cookie = new Cookie{file};
        info->read_fn = readStream;
        info->seek_fn = seekStream;
        info->size_fn = sizeOfStream;
        info->cancel_fn = cancelStream;
        info->close_fn = closeStream;
        return 0;
    }
    return MPV_ERROR_LOADING_FAILED;
}

} // namespace platform
