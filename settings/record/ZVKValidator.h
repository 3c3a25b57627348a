#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

/// A text for the user: the key of a localised text and, when that is a format, the two numbers it receives.
struct ValidationMessage {
    std::string key;
    std::optional<std::pair<double, double>> range = {};

    bool operator==(const ValidationMessage&) const = default;
};

/// Reads the decimal number that the text begins with: white space and line breaks, a sign, digits with a
/// fraction, an exponent; as much as forms a number, "." in every locale. Moves the text behind it. Nothing,
/// and the text as it was, when there is none. Too large a number is infinite.
std::optional<double> readNumber(std::string_view& text);

/// Checks of what the user types. Each returns a message, or nothing when valid.
class ZVKValidator {
public:
    static constexpr double smallestThreshold = 0.05; // g
    static constexpr double largestThreshold = 1.5; // g
    static constexpr int smallestShare = 10; // percent of the card

    /// A number can be read and only white space follows it.
    static bool stringIsNumber(std::string_view text);
    /// The text without the characters at its end that make it no number; empty when none is left.
    static std::string numericStringFromString(std::string_view text);
    /// An impact threshold in g; an empty text is valid, what follows the number does not matter.
    static std::optional<ValidationMessage> validateGsensorThreshold(std::string_view text);
    /// The share of the card of one kind of recording, in percent.
    static std::optional<ValidationMessage> validateSDCardSizeRatio(int percent);
};
