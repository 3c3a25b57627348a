#include "platform/ReplaceFile.h"

#include "platform/StreamedFile.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace platform {

namespace {

bool holds(const std::string& path, std::string_view contents)
{
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    const std::unique_ptr<std::FILE, Close> file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return false;
    std::vector<char> found(contents.size() + 1);
    const size_t count = std::fread(found.data(), 1, found.size(), file.get());
    return !std::ferror(file.get()) && std::string_view(found.data(), count) == contents;
}

} // namespace

std::string replaceFile(const std::string& path, std::string_view contents)
{
    StreamedFile file(path);
    file.write(contents);
    std::string failure = file.finish();
    if (failure.empty() && !holds(path, contents))
        failure = "what was written does not read back";
    return failure;
}

} // namespace platform
