#include "platform/ReplaceFile.h"

#include "platform/StreamedFile.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>

namespace platform {

namespace {

/// The first bytes of the file, at most so many; nothing when it cannot be read.
std::optional<std::string> beginning(const std::string& path, size_t most)
{
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    // Opening a pipe would wait for its other end.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return std::nullopt;
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return std::nullopt;
    std::string bytes(most, '\0');
    bytes.resize(std::fread(bytes.data(), 1, most, file.get()));
    if (std::ferror(file.get()))
        return std::nullopt;
    return bytes;
}

std::string written(const std::string& path, std::string_view contents)
{
    StreamedFile file(path);
    file.write(contents);
    return file.finish();
}

} // namespace

std::string replaceFile(const std::string& path, std::string_view contents)
{
    constexpr size_t mostToKeep = size_t{1} << 20;
    const auto before = beginning(path, mostToKeep + 1);
    std::string failure = written(path, contents);
    if (failure.empty()) {
        if (beginning(path, contents.size() + 1) == contents)
            return {};
        failure = "what was written does not read back";
    }
    // A write in place may have come half way.
    if (before && before->size() <= mostToKeep && beginning(path, mostToKeep + 1) != before)
        (void)written(path, *before);
    return failure;
}

} // namespace platform
