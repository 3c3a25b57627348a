#include "telemetry/SentenceText.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

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

TEST(SentenceText, RoundsToTheNearestFloat)
{
    std::mt19937 random(1);
    for (int i = 0; i < 20'000; ++i) {
        std::string text(1 + random() % 12, '0');
        for (char& c : text)
            c = static_cast<char>('0' + random() % 10);
        text.insert(random() % text.size(), ".");
        ASSERT_EQ(textNumber(text), std::strtof(text.c_str(), nullptr)) << text;
    }
}

TEST(SentenceText, ScansPairsOfDigitsLikeScanf)
{
    std::mt19937 random(1);
    const std::string alphabet = "0123456789 +-.x\t";
    for (int i = 0; i < 50'000; ++i) {
        std::string text(random() % 9, ' ');
        for (char& c : text)
            c = alphabet[random() % (random() % 2 ? 10 : alphabet.size())];
        std::array<int32_t, 3> wanted{};
        std::sscanf(text.c_str(), "%2d%2d%2d", &wanted[0], &wanted[1], &wanted[2]);
        std::string_view rest = text;
        ASSERT_EQ(scanThreePairs(rest), wanted) << '"' << text << '"';
    }
}
