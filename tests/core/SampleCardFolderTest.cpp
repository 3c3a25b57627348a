#include "tests/support/TempFolder.h"
#include "tools/samplecard/CardMaker.h"
#include "tools/samplecard/CardStamp.h"

#include <gmock/gmock.h>

#include <cstdlib>

using testing::HasSubstr;

namespace {

/// A folder where a card shall be made, by an `ffmpeg` that only complains.
class SampleCardFolder : public testing::Test {
protected:
    SampleCardFolder()
    {
        root.program("bin/ffmpeg", "cat > /dev/null\necho no such codec >&2\nexit 1\n");
        setenv("PATH", (root.path("bin") + ":" + path).c_str(), 1);
        root.file("card/holiday.avi");
    }
    ~SampleCardFolder() override { setenv("PATH", path.c_str(), 1); }

    std::string make(bool force)
    {
        const std::atomic<bool> stopped = false;
        return samplecard::makeCard({root.path("card"), 1, force}, stopped, [](const std::string&) {
        }).value_or("made");
    }

    const std::string path = std::getenv("PATH");
    TempFolder root;
};

TEST_F(SampleCardFolder, RefusesFoldersOfOthersAndAsksBeforeItDropsWhatSomebodyAdded)
{
    EXPECT_THAT(make(false), HasSubstr("is no sample card"));
    EXPECT_THAT(make(true), HasSubstr("is no sample card"));
    root.file("card/.samplecard", "some other text\n");
    EXPECT_THAT(make(true), HasSubstr("is no sample card"));
    EXPECT_TRUE(std::filesystem::exists(root.path("card/holiday.avi")));

    std::filesystem::remove(root.path("card/holiday.avi"));
    root.file("card/AlwaysMovie/a.avi");
    ASSERT_TRUE(samplecard::CardStamp::write(root.path("card"), "samplecard 0 of before"));
    root.file("card/holiday.avi");
    EXPECT_THAT(make(false), HasSubstr("holiday.avi"));
    EXPECT_THAT(make(true), HasSubstr("no such codec")); // it went on
    EXPECT_TRUE(std::filesystem::exists(root.path("card/holiday.avi"))) << "and left all when it failed";
}

} // namespace
