#include "cardtools/ByteCount.h"

#include <gtest/gtest.h>

TEST(ByteCount, IsShortAndRoundedHalfToEven)
{
    const std::pair<uint64_t, const char*> cases[] = {{0, "0 B"}, {1023, "1023 B"}, {1024, "1.0 kB"},
        {1536, "1.5 kB"}, {1974, "2.0 kB"}, {1996, "2.0 kB"}, {10'239, "10 kB"}, {10'240, "10 kB"},
        {10'752, "10 kB"}, {11'776, "12 kB"}, {1'048'064, "1.0 MB"}, {1'000'000'000, "954 MB"},
        {1'977'614'336, "1.9 GB"}, {4'000'000'000, "3.7 GB"}, {uint64_t{8} << 30, "8.0 GB"},
        {~uint64_t{0}, "16 EB"},
        // A byte below the half takes it up.
        {uint64_t{10} * 1024 * 1024 + 512 * 1024, "10 MB"},
        {uint64_t{10} * 1024 * 1024 + 512 * 1024 + 1, "11 MB"}, {1024 + 50, "1.0 kB"}, {1024 + 150, "1.2 kB"},
        {1024 * 1024 + 50 * 1024 + 1, "1.1 MB"}};
    for (const auto& [bytes, text] : cases)
        EXPECT_EQ(formatByteCount(bytes), text) << bytes;
}
