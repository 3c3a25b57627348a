#include "tests/support/Testing.h"
#include "tools/samplecard/CardMaker.h"

TEST(SampleCardFolder, RefusesFoldersOfOthers)
{
    const TempFolder root;
    root.file("card/holiday.avi");
    root.file("card/.samplecard", "some other text\n");
    const std::atomic<bool> stopped = true;
    const auto why = samplecard::makeCard({root.path("card"), 1, true}, stopped, [](const std::string&) {});
    EXPECT_THAT(why.value_or("made"), HasSubstr("is no sample card"));
    EXPECT_TRUE(fs::exists(root.path("card/holiday.avi")));
}
