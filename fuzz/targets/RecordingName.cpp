#include "fuzz/Require.h"
#include "media/ZVKMedia.h"
#include "media/ZVKMediaList.h"

void fuzz(std::string_view input)
{
    const std::string path(input);
    const ZVKMedia media = ZVKMedia::mediaWithPath(path);
    require(media.mediaDivision() >= 0 && media.mediaDivision() <= 2);
    require(media.yyyymmddhhmiss().size() == 14);
    require(media.compareDate(media) == 0);
    if (const auto listed = ZVKMediaList::createMediaByPath(path))
        require(listed->sortKey() == media.sortKey() && listed->path() == media.path());
}
