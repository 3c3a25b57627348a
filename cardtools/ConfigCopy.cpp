#include "cardtools/ConfigCopy.h"

#include "platform/CardRoot.h"
#include "platform/PrivateFolder.h"
#include "platform/ReplaceFile.h"

#include <filesystem>
#include <optional>

namespace {

namespace fs = std::filesystem;

// The camera's file has some hundred bytes; anything like this is none of its files.
constexpr size_t largest = 1 << 20;

platform::FilePlace onCard(const std::string& cardRoot)
{
    return platform::CardRoot(cardRoot).file("config.bin");
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
    const platform::FilePlace original = onCard(cardRoot);
    if (!original.error() && !original.isThere())
        return {};
    platform::FileError error;
    const auto bytes = original.contents(largest, error);
    if (!bytes)
        return error.text();
    std::string why;
    folder = platform::makePrivateFolder(why);
    if (folder.empty())
        return why;
    const auto copy = platform::FilePlace::chosen(folder + "/config.bin");
    error = platform::replaceFile(copy, *bytes);
    if (!error && original.contents(largest, error) != bytes)
        error.code = platform::FileError::notReadBack;
    if (error)
        return error.text();
    file = copy.path();
    contents = *bytes;
    return {};
}

std::string ConfigCopy::putBack(const std::string& cardRoot) const
{
    return platform::replaceFile(onCard(cardRoot), contents).text();
}

bool ConfigCopy::isOn(const std::string& cardRoot) const
{
    platform::FileError ignored;
    return isThere() && onCard(cardRoot).contents(largest, ignored) == contents;
}

std::string ConfigCopy::keep()
{
    stays = isThere();
    return file;
}
