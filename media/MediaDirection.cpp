#include "media/MediaDirection.h"

#include "common/Text.h"

int32_t mediaDirection(std::optional<std::string_view> path)
{
    constexpr size_t suffixLength = std::string_view("_R.avi").size();
    if (!path || path->size() < suffixLength)
        return 2;
    // The suffixes are ASCII: comparing six bytes is comparing six characters.
    const auto suffix = asciiLower(path->substr(path->size() - suffixLength));
    return suffix == "_r.avi" ? 1 : suffix == "_f.avi" ? 0 : 2;
}

bool isFrontMedia(std::optional<std::string_view> path)
{
    return mediaDirection(path) == 0;
}

bool isRearMedia(std::optional<std::string_view> path)
{
    return mediaDirection(path) == 1;
}
