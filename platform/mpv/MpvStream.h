#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>

struct mpv_handle;
struct mpv_stream_cb_info;
class PatientFile;

namespace platform {

/// The only source of bytes for mpv: files that the player has announced, under addresses of its own.
/// Closing a file never waits for a read that hangs. Must outlive the core that it was given to.
class MpvStreams {
public:
    /// False when the core takes no streams.
    bool addTo(mpv_handle* mpv);

    /// Opens the file behind an address that is used once. The file before is given up.
    std::string announce(const std::string& path);
    /// Ends every wait of the core for the file announced last.
    void giveUp();
    /// Why that file could not be opened or read; empty if it could.
    std::string failure() const;

private:
    static int open(void* self, char* address, mpv_stream_cb_info* info);

    mutable std::mutex mutex;
    uint64_t number = 0;
    std::shared_ptr<PatientFile> current;
};

} // namespace platform
