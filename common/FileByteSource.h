#pragma once

#include "common/ByteSource.h"
#include "common/FilePlace.h"

#include <cstdio>
#include <memory>

/// A file on disk, read byte for byte and closed with the source. It does no buffering of its own.
class FileByteSource : public ByteSource {
public:
    /// A file that the user named; links to it are followed. Nothing, and why, when it is no regular file (a
    /// folder, a pipe and a device are none) or cannot be opened.
    static std::unique_ptr<FileByteSource> open(const char* path, FileError& why);
    static std::unique_ptr<FileByteSource> open(const FilePlace& place, FileError& why);

    std::optional<size_t> read(std::span<std::byte> into) override;
    bool seek(uint64_t offset) override;
    uint64_t size() const override { return length; }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using File = std::unique_ptr<std::FILE, Close>;

    FileByteSource(File file, uint64_t size);

    File handle;
    uint64_t length = 0;
};
