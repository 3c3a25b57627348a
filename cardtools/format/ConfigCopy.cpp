#include "cardtools/format/ConfigCopy.h"

#include "common/CardFiles.h"
#include "common/CardRoot.h"
#include "common/ReplaceFile.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

// The camera's file has some hundred bytes; anything larger than this is not its.
constexpr size_t largest = 1 << 20;

FilePlace onCard(const std::string& cardRoot)
{
    return CardRoot(cardRoot).file(cardFiles::settings);
}

/// The path of a new empty file that only this user can read; empty on failure.
std::string newFile(const std::string& folder, bool& madeFolder, std::string& why)
{
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char day[32];
    std::strftime(day, sizeof day, "config-%Y%m%d-%H%M%S", &local);
    std::error_code error;
    madeFolder = fs::create_directories(folder, error);
    constexpr int mostInASecond = 100;
    for (int number = 1; number < mostInASecond; ++number) {
        const std::string name = number == 1 ? day : std::string(day) + "-" + std::to_string(number);
        const std::string path = (fs::path(folder) / (name + ".bin")).native();
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        if (descriptor >= 0) {
            ::close(descriptor);
            return path;
        }
        if (errno != EEXIST)
            break;
    }
    why = error ? error.message() : std::strerror(errno);
    return {};
}

} // namespace

std::string ConfigCopy::take(const std::string& cardRoot)
{
    const FilePlace original = onCard(cardRoot);
    if (!original.error() && !original.isThere())
        return {};
    FileError error;
    const auto bytes = original.contents(largest, error);
    if (!bytes)
        return error.text();
    std::string why;
    file = newFile(folder, madeFolder, why);
    if (file.empty())
        return why;
    contents = *bytes;
    error = replaceFile(FilePlace::chosen(file), contents);
    if (!error && !isOn(cardRoot))
        error.code = FileError::notReadBack;
    if (error)
        drop();
    return error.text();
}

std::string ConfigCopy::putBack(const std::string& cardRoot) const
{
    return replaceFile(onCard(cardRoot), contents).text();
}

bool ConfigCopy::isOn(const std::string& cardRoot) const
{
    FileError ignored;
    return !file.empty() && onCard(cardRoot).contents(largest, ignored) == contents;
}

void ConfigCopy::drop()
{
    std::error_code ignored;
    if (file.empty())
        return;
    fs::remove(file, ignored);
    if (madeFolder)
        fs::remove(folder, ignored); // unless something else is in it by now
    file.clear();
}
