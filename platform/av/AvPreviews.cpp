#include "platform/av/AvPreviews.h"

#include "common/PatientFile.h"
#include "platform/av/AvFile.h"

#include <chrono>
#include <utility>

extern "C" {
#include <libavutil/log.h>
}

namespace platform {

namespace {

constexpr std::chrono::seconds patience(2);

class AvPreviews final : public Previews {
public:
    AvPreviews() { av_log_set_level(AV_LOG_QUIET); }

    std::optional<PreviewPicture> pictureAt(
        const std::string& path, double seconds, int width, std::stop_token stop) override
    {
        if (path != openPath || !file)
            open(path);
        bytes->waitUntil(std::chrono::steady_clock::now() + patience, std::move(stop));
        if (!file)
            file = AvFile::open([source = bytes](uint64_t offset, char* into,
                                    size_t count) { return source->read(offset, into, count); },
                static_cast<uint64_t>(std::max<int64_t>(bytes->size(), 0)));
        auto picture = file ? file->pictureAt(seconds, width) : std::nullopt;
        // What failed once may have been given up.
        if (!picture)
            close();
        return picture;
    }

    void close() override
    {
        file.reset();
        bytes.reset();
        openPath.clear();
    }

private:
    void open(const std::string& path)
    {
        close();
        bytes = std::make_shared<PatientFile>(path);
        openPath = path;
    }

    std::string openPath;
    std::shared_ptr<PatientFile> bytes;
    std::unique_ptr<AvFile> file;
};

} // namespace

std::unique_ptr<Previews> makeAvPreviews()
{
    return std::make_unique<AvPreviews>();
}

} // namespace platform
