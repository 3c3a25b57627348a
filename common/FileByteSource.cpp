#include "common/FileByteSource.h"

#include <cerrno>
#include <limits>
#include <utility>

std::unique_ptr<FileByteSource> FileByteSource::open(const char* path, FileError& why)
{
    return open(FilePlace::chosen(path ? path : ""), why);
}

std::unique_ptr<FileByteSource> FileByteSource::open(const FilePlace& place, FileError& why)
{
    Descriptor descriptor = place.open(why);
    File file(descriptor ? ::fdopen(descriptor.get(), "rb") : nullptr);
    if (file)
        (void)descriptor.release();
    long size = -1;
    if (file && std::fseek(file.get(), 0, SEEK_END) == 0)
        size = std::ftell(file.get());
    if (size < 0 || std::fseek(file.get(), 0, SEEK_SET) != 0) {
        if (!why)
            why.code = errno;
        return {};
    }
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return std::unique_ptr<FileByteSource>(new FileByteSource(std::move(file), static_cast<uint64_t>(size)));
}

FileByteSource::FileByteSource(File file, uint64_t size)
    : handle(std::move(file)),
      length(size)
{
}

std::optional<size_t> FileByteSource::read(std::span<std::byte> into)
{
    const size_t count = std::fread(into.data(), 1, into.size(), handle.get());
    // What came before the failure counts; the failure is reported by the next call.
    if (count == 0 && std::ferror(handle.get()))
        return {};
    return count;
}

bool FileByteSource::seek(uint64_t offset)
{
    if (offset > static_cast<uint64_t>(std::numeric_limits<long>::max()))
        return false;
    return std::fseek(handle.get(), static_cast<long>(offset), SEEK_SET) == 0;
}
