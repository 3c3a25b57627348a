#include "telemetry/SentenceText.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

TEST(SentenceText, ReadsTheNumberThatATextBeginsWith)
{
    const float infinity = INFINITY;
    struct Row {
        std::string text;
        float number;
        int32_t integer;
    };
    const Row rows[] = {
        {"", 0, 0},
        {"12.5abc", 12.5, 12},
        {" \t-3.25", -3.25, -3},
        {".", 0, 0},
        {"16777217.1", 16777218, 16777217},
        {"1e5", 1, 1},
        {"0x10", 0, 0},
        {"nan", 0, 0},
        {"2147483648", 2147483648.f, INT_MAX},
        {"1" + std::string(39, '0'), infinity, INT_MAX},
        {"-" + std::string(400, '9'), -infinity, INT_MIN},
        {std::string(400, '0') + "7", 7, 7},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(textNumber(row.text), row.number) << row.text;
        EXPECT_EQ(textInteger(row.text), row.integer) << row.text;
    }
}

TEST(SentenceText, ScansPairsOfDigitsLikeScanf)
{
    const std::pair<std::string_view, std::array<int32_t, 3>> cases[] = {
        {"235958", {23, 59, 58}},
        {" 1\t2345", {1, 23, 45}},
        {"-1+23", {-1, 2, 3}},
        {"1.2345", {1, 0, 0}},
        {"12- 34", {12, 0, 0}},
        {"", {0, 0, 0}},
    };
    for (auto [text, wanted] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(scanThreePairs(text), wanted);
    }
}
