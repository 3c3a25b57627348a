#include "platform/MediaPlayer.h"
#include "tests/support/Testing.h"

using platform::MediaTime;

TEST(MediaTime, ShowsWholeSecondsCutTowardZero)
{
    const std::pair<int64_t, std::string> cases[] = {{3'599'999, "59:59"}, {3'600'000, "1:00:00"},
        {-3'723'004, "-1:02:03"}, {INT64_MIN, "-2562047788015:12:55"}};
    for (const auto& [milliseconds, text] : cases)
        EXPECT_EQ(MediaTime::timeWithInt(milliseconds).stringValue(), text) << milliseconds;
    EXPECT_EQ(MediaTime::nullTime().stringValue(), "--:--") << "no time is not the start";
}
