#include "platform/mpv/MpvStream.h"

#include "common/PatientFile.h"

#include <mpv/client.h>
#include <mpv/stream_cb.h>
#include <string_view>
#include <utility>

namespace platform {

namespace {

constexpr const char* scheme = "zavik";

/// One opening of the file by the core.
struct Cookie {
    std::shared_ptr<PatientFile> file;
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
    const int64_t size = cookie(opaque).file->size();
    return size < 0 ? int64_t(MPV_ERROR_GENERIC) : size;
}

void cancelStream(void* opaque)
{
    cookie(opaque).file->giveUp();
}

void closeStream(void* opaque)
{
    delete &cookie(opaque);
}

} // namespace

bool MpvStreams::addTo(mpv_handle* mpv)
{
    return mpv_stream_cb_add_ro(mpv, scheme, this, open) >= 0;
}

std::string MpvStreams::announce(const std::string& path)
{
    auto file = std::make_shared<PatientFile>(path);
    const std::lock_guard lock(mutex);
    if (current)
        current->giveUp();
    current = std::move(file);
    return std::string(scheme) + "://" + std::to_string(++number);
}

void MpvStreams::giveUp()
{
    const std::lock_guard lock(mutex);
    if (current)
        current->giveUp();
    current.reset();
}

std::string MpvStreams::failure() const
{
    const std::lock_guard lock(mutex);
    return current ? current->failure() : std::string();
}

int MpvStreams::open(void* opaque, char* address, mpv_stream_cb_info* info)
{
    auto& self = *static_cast<MpvStreams*>(opaque);
    const std::lock_guard lock(self.mutex);
    if (!self.current
        || std::string_view(address) != std::string(scheme) + "://" + std::to_string(self.number))
        return MPV_ERROR_LOADING_FAILED;
    info->cookie = new Cookie{self.current};
    info->read_fn = readStream;
    info->seek_fn = seekStream;
    info->size_fn = sizeOfStream;
    info->cancel_fn = cancelStream;
    info->close_fn = closeStream;
    return 0;
}

} // namespace platform
