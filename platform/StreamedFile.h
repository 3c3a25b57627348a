#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// Creates or replaces a file, written in pieces, so that its readers find the old or the new contents and
/// never a mixture: written beside it, synced, renamed, the folder synced. Where no file can be made beside
/// it (and only there), a file that is there is written in place. A symbolic link is followed; anything that
/// is neither a regular file nor missing is refused. One thread at a time.
class StreamedFile {
public:
    explicit StreamedFile(const std::string& path);
    StreamedFile(const StreamedFile&) = delete;
    StreamedFile& operator=(const StreamedFile&) = delete;
    /// Without a successful finish() nothing is left beside the file, and it is as it was (unless it was
    /// written in place).
    ~StreamedFile();

    /// False, also for the pieces after that, when the piece or an earlier one could not be written.
    bool write(std::string_view piece);
    /// Puts the file into its place. Empty on success; otherwise why not, as the system says it.
    [[nodiscard]] std::string finish();

private:
    void fail();
    void close();

    std::string target;
    std::string beside; // the temporary file; empty when written in place
    int descriptor = -1;
    int64_t length = 0; // written so far
    int failure = 0; // errno
};

} // namespace platform
