#include "cardtools/drivelog/DriveCells.h"

#include "common/Coordinates.h"

#include <array>
#include <charconv>
#include <string_view>

void appendInteger(std::string& text, int64_t value, size_t width, char fill)
{
    std::array<char, 24> digits;
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    const auto length = static_cast<size_t>(end - digits.data());
    if (length < width)
        text.append(width - length, fill);
    text.append(digits.data(), length);
}

void appendTenths(std::string& text, double value)
{
    std::array<char, 32> digits;
    const char* end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, 1).ptr;
    text.append(digits.data(), static_cast<size_t>(end - digits.data()));
}

void appendGForce(std::string& text, int16_t steps)
{
    // Hundredths, rounded to the nearest and ties to even as printf does; 100/256 is 25/64.
    const int scaled = std::abs(int{steps}) * 25;
    int hundredths = scaled / 64;
    const int rest = scaled % 64;
    if (rest > 32 || (rest == 32 && hundredths % 2 == 1))
        ++hundredths;
    text += steps < 0 ? '-' : '+';
    appendInteger(text, hundredths / 100);
    text += '.';
    appendInteger(text, hundredths % 100, 2);
}

void appendDayOfWeek(std::string& text, uint8_t yoil)
{
    static constexpr std::array<std::string_view, 7> names{"SUN", "MON", "TUE", "WED", "THU", "FRI", "SAT"};
    text += yoil < names.size() ? names[yoil] : "-";
}

void appendCoordinate(std::string& text, uint16_t whole, size_t wholeWidth, uint16_t fraction)
{
    appendInteger(text, whole, wholeWidth);
    text += '.';
    appendInteger(text, fraction, 4);
}

namespace {

double readBack(uint16_t whole, size_t wholeWidth, uint16_t fraction)
{
    std::string text;
    appendCoordinate(text, whole, wholeWidth, fraction);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

} // namespace

// A fraction of more than four digits counts as the cell shows it.
DrivePlace drivePlace(uint16_t latWhole, uint16_t latFraction, uint16_t lonWhole, uint16_t lonFraction)
{
    DrivePlace place;
    nmeaCoordinateToDegrees(&place.latitude, &place.longitude, readBack(latWhole, 4, latFraction),
        readBack(lonWhole, 5, lonFraction));
    return place;
}
