#include "platform/MediaPlayer.h"

#include <cstdint>
#include <gtest/gtest.h>

using platform::MediaTime;

TEST(MediaTime, ShowsWholeSecondsCutTowardZero)
{
    const struct {
        int64_t milliseconds;
        std::string text;
    } cases[] = {
        {3'599'999, "59:59"},
        {3'600'000, "1:00:00"},
        {-3'723'004, "-1:02:03"},
        {INT64_MIN, "-2562047788015:12:55"},
    };
    for (const auto& [milliseconds, text] : cases)
        EXPECT_EQ(MediaTime::timeWithInt(milliseconds).stringValue(), text) << milliseconds;
    EXPECT_EQ(MediaTime::nullTime().stringValue(), "--:--") << "no time is not the start";
}
