#pragma once

#include "common/FilePlace.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Creates or replaces a file, written in pieces, so that its readers find the old or the new contents and
/// never a mixture: written beside it, synced, renamed, synced again, the folder synced. Where no file can be
/// made beside it (and only there), a file that is there is written in place, if its length is known to stay
/// the same.
/// Anything in its place that is neither a regular file nor missing is refused. What killed programs have
/// left beside it (".zvk*.tmp") is removed. One thread at a time.
class StreamedFile {
public:
    /// `length`, when it is known before, in bytes.
    explicit StreamedFile(FilePlace place, std::optional<int64_t> length = std::nullopt);
    StreamedFile(const StreamedFile&) = delete;
    StreamedFile& operator=(const StreamedFile&) = delete;
    /// Without a successful finish() nothing is left beside the file, and it is as it was (unless it was
    /// written in place).
    ~StreamedFile();

    /// False, also for the pieces after that, when the piece or an earlier one could not be written.
    bool write(std::string_view piece);
    /// Puts the file into its place.
    [[nodiscard]] FileError finish();
    /// Whether readers may have seen a part of the new contents: after a failure the old ones are to be
    /// written again. Never after the rename.
    bool isInPlace() const { return beside.empty() && !isRenamed; }

private:
    void fail();
    void sync();
    void close();
    bool createBeside();

    FilePlace target;
    std::string beside; // the temporary file's name; empty when written in place
    Descriptor file;
    int64_t length = 0; // written so far
    FileError failure;
    bool isRenamed = false;
};
