#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// The pieces of a sentence between its commas; field 0 is the sentence's name.
using SentenceFields = std::span<const std::string_view>;

/// The fields of a sentence: the text before its one "*", split at ",". They point into the sentence.
/// Nothing when the text is not UTF-8 or has no "*" or more than one. The checksum is not verified.
std::optional<std::vector<std::string_view>> sentenceFields(std::string_view sentence);

/// The decimal number that the text begins with: white space, a sign, digits, a point and digits; 0 when
/// there is none. No exponent, no words, no locale. Rounded to the nearest float; too large a number is
/// infinity with its sign, too small a one is 0.
float textNumber(std::string_view text);

/// The integer that the text begins with, kept within the signed 32-bit range; 0 when there is none.
int32_t textInteger(std::string_view text);

/// Consumes what scanf's "%<width>d" would: white space, then a sign and digits, at most `width` characters.
/// Nothing, and the text unspecified, when there is no number.
std::optional<int32_t> scanInteger(std::string_view& text, size_t width);

/// scanf's "%02d%02d%02d": three numbers of two characters; from the first that cannot be read on, 0.
std::array<int32_t, 3> scanThreePairs(std::string_view& text);
