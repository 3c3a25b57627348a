#include "telemetry/SentenceText.h"

#include "common/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace {

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

void skipSpace(std::string_view& text)
{
    while (!text.empty() && isSpace(text.front()))
        text.remove_prefix(1);
}

/// Takes a leading sign; true for "-".
bool takeSign(std::string_view& text)
{
    if (text.empty() || (text.front() != '-' && text.front() != '+'))
        return false;
    const bool isNegative = text.front() == '-';
    text.remove_prefix(1);
    return isNegative;
}

size_t digitCount(std::string_view text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    return static_cast<size_t>(end - text.begin());
}

int32_t saturated(std::string_view digits, bool isNegative)
{
    const int64_t limit = isNegative ? -int64_t{std::numeric_limits<int32_t>::min()}
                                     : int64_t{std::numeric_limits<int32_t>::max()};
    int64_t value = 0;
    for (const char digit : digits)
        value = std::min(value * 10 + (digit - '0'), limit);
    return static_cast<int32_t>(isNegative ? -value : value);
}

} // namespace

std::optional<std::vector<std::string_view>> sentenceFields(std::string_view sentence)
{
    if (std::count(sentence.begin(), sentence.end(), '*') != 1 || !isValidUtf8(sentence))
        return {};
    std::string_view body = sentence.substr(0, sentence.find('*'));
    std::vector<std::string_view> fields;
    fields.reserve(static_cast<size_t>(std::count(body.begin(), body.end(), ',')) + 1);
    for (size_t comma = body.find(','); comma != body.npos; comma = body.find(',')) {
        fields.push_back(body.substr(0, comma));
        body.remove_prefix(comma + 1);
    }
    fields.push_back(body);
    return fields;
}

float textNumber(std::string_view text)
{
    skipSpace(text);
    const bool isNegative = takeSign(text);
    const size_t whole = digitCount(text);
    size_t length = whole;
    if (length < text.size() && text[length] == '.')
        length += 1 + digitCount(text.substr(length + 1));

    float value = 0;
    const auto read = std::from_chars(text.data(), text.data() + length, value, std::chars_format::fixed);
    if (read.ec == std::errc::invalid_argument)
        return 0;
    if (read.ec == std::errc::result_out_of_range) {
        const bool isLarge = text.substr(0, whole).find_first_not_of('0') != text.npos;
        value = isLarge ? std::numeric_limits<float>::infinity() : 0;
    }
    return isNegative ? -value : value;
}

int32_t textInteger(std::string_view text)
{
    skipSpace(text);
    const bool isNegative = takeSign(text);
    return saturated(text.substr(0, digitCount(text)), isNegative);
}

std::optional<int32_t> scanInteger(std::string_view& text, size_t width)
{
    skipSpace(text);
    std::string_view window = text.substr(0, width);
    const bool isNegative = takeSign(window);
    const std::string_view digits = window.substr(0, digitCount(window));
    if (digits.empty())
        return {};
    text.remove_prefix(static_cast<size_t>(digits.data() + digits.size() - text.data()));
    return saturated(digits, isNegative);
}

std::array<int32_t, 3> scanThreePairs(std::string_view& text)
{
    std::array<int32_t, 3> values{};
    for (int32_t& value : values) {
        const std::optional<int32_t> read = scanInteger(text, 2);
        if (!read) {
            text = {};
            break;
        }
        value = *read;
    }
    return values;
}
