#pragma once

#include "common/ByteSource.h"

#include <cstdio>
#include <memory>

/// A file on disk, read byte for byte and closed with the source. It does no buffering of its own.
class FileByteSource : public ByteSource {
public:
    /// Nothing when there is no regular file under that path (a folder, a pipe and a device are none) or it
    /// cannot be opened.
    static std::unique_ptr<FileByteSource> open(const char* path);
    /// Takes the descriptor of a regular file that is open for reading.
    static std::unique_ptr<FileByteSource> take(int descriptor);

    std::optional<size_t> read(std::span<std::byte> into) override;
    bool seek(uint64_t offset) override;
    uint64_t size() const override { return length; }

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    using File = std::unique_ptr<std::FILE, Close>;

    static std::unique_ptr<FileByteSource> opened(File file);
    FileByteSource(File file, uint64_t size);

    File handle;
    uint64_t length = 0;
};
