#include "common/ByteCount.h"

#include <gtest/gtest.h>

TEST(ByteCount, IsShortAndRoundedHalfToEven)
{
    const std::pair<uint64_t, const char*> cases[] = {{0, "0 B"}, {1023, "1023 B"}, {1024, "1.0 kB"},
        {1536, "1.5 kB"}, {1996, "2.0 kB"}, {10'752, "10 kB"}, {11'776, "12 kB"}, {1'977'614'336, "1.9 GB"},
        {~uint64_t{0}, "16 EB"},
        // A byte below the half takes it up.
        {uint64_t{10} * 1024 * 1024 + 512 * 1024 + 1, "11 MB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(formatByteCount(bytes), text) << bytes;
}
