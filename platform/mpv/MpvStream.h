#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

struct mpv_handle;
struct mpv_stream_cb_info;

namespace platform {

/// Which of the two files of a moment.
enum class MpvRole { first, second };

struct MpvStreamFile;

/// The only source of bytes for mpv: files that the player has announced, under addresses of its own.
/// Closing a file never waits for a read that hangs. Must outlive the core that it was given to.
class MpvStreams {
public:
    /// False when the core takes no streams.
    bool addTo(mpv_handle* mpv);

    /// Opens the file behind an address that is used once. The file of that role before is given up.
    std::string announce(const std::string& path, MpvRole role);
    /// Ends every wait of the core for the file announced last in that role.
    void giveUp(MpvRole role);
    /// Why that file could not be opened or read; empty if it could.
    std::string failure(MpvRole role) const;
    /// For how long the core has been waiting for bytes of that file; 0 while it waits for none.
    std::chrono::milliseconds waited(MpvRole role) const;
    /// Seconds of pictures in that file as its header has them; 0 when it doesn't tell.
    double pictureSeconds(MpvRole role) const;

private:
    static int open(void* self, char* address, mpv_stream_cb_info* info);
    std::shared_ptr<MpvStreamFile> file(MpvRole role) const;

    mutable std::mutex mutex;
    uint64_t number = 0;
    std::array<std::shared_ptr<MpvStreamFile>, 2> current;
};

} // namespace platform
