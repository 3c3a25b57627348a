#include "common/FileByteSource.h"

#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

std::unique_ptr<FileByteSource> FileByteSource::open(const char* path)
{
    if (!path)
        return {};
    // Opening a pipe would wait for its writer, so the type is checked first.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    return opened(File(std::fopen(path, "rb")));
}

std::unique_ptr<FileByteSource> FileByteSource::take(int descriptor)
{
    return opened(File(descriptor >= 0 ? ::fdopen(descriptor, "rb") : nullptr));
}

std::unique_ptr<FileByteSource> FileByteSource::opened(File file)
{
    if (!file)
        return {};
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    if (std::fseek(file.get(), 0, SEEK_END) != 0)
        return {};
    const long size = std::ftell(file.get());
    if (size < 0 || std::fseek(file.get(), 0, SEEK_SET) != 0)
        return {};
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
