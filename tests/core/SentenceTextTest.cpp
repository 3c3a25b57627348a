#include "telemetry/SentenceText.h"
#include "tests/support/Testing.h"

#include <climits>

TEST(SentenceText, ReadsTheNumberThatATextBeginsWith)
{
    const float infinity = INFINITY;
    const std::tuple<std::string, float, int32_t> rows[] = {{"", 0, 0}, {"12.5abc", 12.5, 12},
        {" \t-3.25", -3.25, -3}, {".", 0, 0}, {"16777217.1", 16777218, 16777217}, {"1e5", 1, 1},
        {"0x10", 0, 0}, {"nan", 0, 0}, {"2147483648", 2147483648.f, INT_MAX},
        {"1" + std::string(39, '0'), infinity, INT_MAX}, {"-" + std::string(400, '9'), -infinity, INT_MIN},
        {std::string(400, '0') + "7", 7, 7}};
    for (const auto& [text, number, integer] : rows) {
        EXPECT_EQ(textNumber(text), number) << text;
        EXPECT_EQ(textInteger(text), integer) << text;
    }
}

TEST(SentenceText, ScansPairsOfDigitsLikeScanf)
{
    const std::pair<std::string_view, std::array<int32_t, 3>> cases[] = {{"235958", {23, 59, 58}},
        {" 1\t2345", {1, 23, 45}}, {"-1+23", {-1, 2, 3}}, {"1.2345", {1, 0, 0}}, {"12- 34", {12, 0, 0}},
        {"", {0, 0, 0}}};
    for (auto [text, wanted] : cases)
        EXPECT_EQ(scanThreePairs(text), wanted) << text;
}
