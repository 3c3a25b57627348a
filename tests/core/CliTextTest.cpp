#include "cli/Escapes.h"
#include "cli/Numbers.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>

TEST(CliText, WritesAnyBytesAsAJsonString)
{
    const struct {
        std::string_view bytes;
        std::string json;
    } cases[] = {
        {"앞 \U0001F697", "\"앞 \U0001F697\""},
        {std::string_view("\0\n\x1F\x7F", 4), R"("\u0000\u000a\u001f\u007f")"},
        {"\xED\xB3\xBF", R"("\udced\udcb3\udcbf")"}, // an encoded surrogate is no UTF-8
        {"\xF0\x9F\x9A", R"("\udcf0\udc9f\udc9a")"},
        {"\xEC\x95x", R"("\udcec\udc95x")"},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(cli::jsonString(expected.bytes), expected.json);
}

TEST(CliText, WritesAnyBytesAsXmlText)
{
    EXPECT_EQ(cli::xmlText("<앞 & \"뒤\">'\t\n"), "&#60;앞 &#38; &#34;뒤&#34;&#62;&#39;&#9;&#10;");
    EXPECT_EQ(cli::xmlText(std::string_view("a\0\x1F\xFF\xEF\xBF\xBF", 7)), "a\uFFFD\uFFFD\uFFFD\uFFFD");
}

TEST(CliText, WritesNumbersThatReadBackTheSame)
{
    using Limits = std::numeric_limits<double>;
    for (const double number :
        {0.0, -0.0, 1.0, -1.5, 0.1, 1.0 / 3, double{0.1f}, 3723.456787109375, 1e22, 1e-7, Limits::max(),
            Limits::lowest(), Limits::min(), Limits::denorm_min(), 9007199254740993.0}) {
        for (const auto& text : {cli::numberText(number), cli::decimalText(number)}) {
            ASSERT_TRUE(text);
            double back = 1;
            std::from_chars(text->data(), text->data() + text->size(), back);
            EXPECT_EQ(back, number) << *text;
            EXPECT_EQ(std::signbit(back), std::signbit(number));
        }
        EXPECT_EQ(cli::decimalText(number)->find('e'), std::string::npos);
    }
    for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()})
        EXPECT_FALSE(cli::numberText(number) || cli::decimalText(number));
}

TEST(CliText, WritesMomentsInUtc)
{
    const struct {
        int64_t milliseconds;
        std::optional<std::string> text;
    } cases[] = {
        {1426947930250, "2015-03-21T14:25:30.250Z"},
        {-1, "1969-12-31T23:59:59.999Z"},
        {-62135596800000, "0001-01-01T00:00:00Z"},
        {-62135596800001, std::nullopt},
        {253402300799999, "9999-12-31T23:59:59.999Z"},
        {253402300800000, std::nullopt},
        {std::numeric_limits<int64_t>::min(), std::nullopt},
        {std::numeric_limits<int64_t>::max(), std::nullopt},
    };
    for (const auto& expected : cases)
        EXPECT_EQ(cli::utcText(expected.milliseconds), expected.text) << expected.milliseconds;
}
