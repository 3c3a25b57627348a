#include "media/ZVKMediaList.h"
#include "tests/support/CollectedLog.h"
#include "tests/support/TempFolder.h"
#include "tests/support/VirtualDispatcher.h"

#include <gtest/gtest.h>

TEST(MediaListWhole, OnlyWhatCannotBeReadMakesAListIncomplete)
{
    const TempFolder card;
    card.file("alwa_20150321_142530.avi");
    std::filesystem::create_symlink("nothing", card.path("dangling"));
    const CollectedLog log;
    VirtualDispatcher dispatcher;
    const auto list = ZVKMediaList::mediaList(dispatcher);
    const auto isWhole = [&] {
        list->setDirectoryPath(card.path());
        dispatcher.runAll();
        EXPECT_EQ(list->count(), 1);
        return list->isReadable();
    };
    EXPECT_TRUE(isWhole()) << "a link that leads nowhere";
    // Where it leads cannot be found out.
    std::filesystem::create_symlink(std::string(300, 'x'), card.path("unreadable"));
    EXPECT_FALSE(isWhole());
}
