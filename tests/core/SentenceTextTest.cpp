#include "telemetry/SentenceText.h"

#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

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
        {"x1", 0, 0},
        {"08", 8, 8},
        {"12.5abc", 12.5, 12},
        {" \t-3.25", -3.25, -3},
        {"+4", 4, 4},
        {".5", 0.5, 0},
        {"5.", 5, 5},
        {".", 0, 0},
        {"-", 0, 0},
        {"--1", 0, 0},
        {"1e5", 1, 1},
        {"0x10", 0, 0},
        {"inf", 0, 0},
        {"nan", 0, 0},
        {"1,5", 1, 1},
        {"3723.4567", 3723.4567f, 3723},
        {"2147483648", 2147483648.f, INT_MAX},
        {"-2147483649", -2147483648.f, INT_MIN},
        {"1" + std::string(39, '0'), infinity, INT_MAX},
        {"-" + std::string(400, '9'), -infinity, INT_MIN},
        {"0." + std::string(400, '0') + "1", 0, 0},
        {std::string(400, '0') + "7", 7, 7},
        {"0." + std::string(60, '0') + "9", 0, 0},
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

TEST(SentenceText, SplitsASentenceWithExactlyOneChecksum)
{
    using testing::ElementsAre;
    EXPECT_THAT(*sentenceFields("$GA,1,,x*00"), ElementsAre("$GA", "1", "", "x"));
    EXPECT_THAT(*sentenceFields("*"), ElementsAre(""));
    EXPECT_THAT(*sentenceFields(",*,5"), ElementsAre("", ""));
    for (const char* refused : {"", "$GA,1", "$GA*1*", "$G\xC0\x80*", "$GA*\xFF"})
        EXPECT_FALSE(sentenceFields(refused)) << refused;
}
