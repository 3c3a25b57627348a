#include "cardtools/ConfigCopy.h"

#include "platform/PrivateFolder.h"
#include "platform/ReplaceFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

namespace fs = std::filesystem;

// The camera's file has some hundred bytes; anything like this is none of its files.
constexpr size_t largest = 1 << 20;

std::optional<std::string> bytesOf(const std::string& path, std::string& why)
{
    std::error_code error;
    if (fs::file_type type = fs::symlink_status(path, error).type(); type != fs::file_type::regular) {
        why = error ? error.message() : std::strerror(EINVAL);
        return {};
    }
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    std::string bytes(largest + 1, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    // The end of the file is no failure, but a device that cannot be read is.
    if (in.bad() || !in.eof()) {
        why = std::strerror(errno != 0 ? errno : EFBIG);
        return {};
    }
    bytes.resize(static_cast<size_t>(in.gcount()));
    return bytes;
}

std::string onCard(const std::string& cardRoot)
{
    return (fs::path(cardRoot) / "config.bin").native();
}

} // namespace

ConfigCopy::~ConfigCopy()
{
    std::error_code ignored;
    if (!folder.empty() && !stays)
        fs::remove_all(folder, ignored);
}

std::string ConfigCopy::take(const std::string& cardRoot)
{
    std::error_code error;
    const fs::file_type type = fs::symlink_status(onCard(cardRoot), error).type();
    if (type == fs::file_type::not_found)
        return {};
    std::string why;
    const auto bytes = bytesOf(onCard(cardRoot), why);
    if (!bytes)
        return why;
    folder = platform::makePrivateFolder(why);
    if (folder.empty())
        return why;
    const std::string path = folder + "/config.bin";
    why = platform::replaceFile(path, *bytes);
    if (!why.empty())
        return why;
    std::string ignored;
    if (bytesOf(path, ignored) != bytes || bytesOf(onCard(cardRoot), ignored) != bytes)
        return std::strerror(EIO);
    file = path;
    contents = *bytes;
    return {};
}

std::string ConfigCopy::putBack(const std::string& cardRoot) const
{
    const std::string why = platform::replaceFile(onCard(cardRoot), contents);
    if (!why.empty())
        return why;
    return isOn(cardRoot) ? std::string() : std::strerror(EIO);
}

bool ConfigCopy::isOn(const std::string& cardRoot) const
{
    std::string ignored;
    return isThere() && bytesOf(onCard(cardRoot), ignored) == contents;
}

std::string ConfigCopy::keep()
{
    stays = isThere();
    return file;
}
