#include "cli/Escapes.h"
#include "cli/Numbers.h"
#include "tests/support/Testing.h"

TEST(CliText, WritesAnyBytesAsAJsonString)
{
    const std::pair<std::string_view, std::string> cases[] = {{"앞 \U0001F697", "\"앞 \U0001F697\""},
        {std::string_view("\0\n\x1F\x7F", 4), R"("\u0000\u000a\u001f\u007f")"},
        {"\xED\xB3\xBF", R"("\udced\udcb3\udcbf")"}, // an encoded surrogate is no UTF-8
        {"\xEC\x95x", R"("\udcec\udc95x")"}};
    for (const auto& [bytes, json] : cases)
        EXPECT_EQ(cli::jsonString(bytes), json);
}

TEST(CliText, WritesMomentsInUtc)
{
    const std::pair<int64_t, std::optional<std::string>> cases[] = {
        {1426947930250, "2015-03-21T14:25:30.250Z"}, {-62135596800001, std::nullopt},
        {253402300800000, std::nullopt}, {std::numeric_limits<int64_t>::min(), std::nullopt},
        {std::numeric_limits<int64_t>::max(), std::nullopt}};
    for (const auto& [milliseconds, text] : cases)
        EXPECT_EQ(cli::utcText(milliseconds), text) << milliseconds;
}
