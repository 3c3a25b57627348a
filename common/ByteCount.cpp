#include "common/ByteCount.h"

#include "common/Log.h"

namespace {

constexpr char units[] = "kMGTPEZY";
constexpr int largestUnit = 8;
constexpr uint64_t step = 1024;

/// Rounds half to even; a remainder above the half rounds up.
bool roundsUp(uint64_t rest, uint64_t half, bool isOdd, bool somethingBelow)
{
    return rest > half || (rest == half && (isOdd || somethingBelow));
}

} // namespace

std::string formatByteCount(uint64_t bytes)
{
    using Number = unsigned long long;
    if (bytes < step)
        return formatted("%llu B", Number{bytes});

    uint64_t before;
    uint64_t whole = bytes;
    uint64_t rest = 0;
    bool somethingBelow = false;
    int unit = 0;
    do {
        somethingBelow = somethingBelow || rest != 0;
        before = whole;
        rest = before % step;
        whole = before / step;
        ++unit;
    } while (before >= step * step && unit < largestUnit);
    const char letter = units[unit - 1];

    if (whole >= 10) {
        whole += roundsUp(rest, step / 2, whole % 2 != 0, somethingBelow) ? 1 : 0;
        if (whole == step && unit < largestUnit)
            return formatted("1.0 %cB", units[unit]);
        return formatted("%llu %cB", Number{whole}, letter);
    }
    // The digit counts hundreds of the remainder, not tenths of the unit.
    uint64_t digit = rest / 100;
    digit += roundsUp(rest % 100, 50, digit % 2 != 0, somethingBelow) ? 1 : 0;
    if (rest >= 950) {
        ++whole;
        digit = 0;
    }
    if (whole == 10)
        return formatted("10 %cB", letter);
    return formatted("%llu.%llu %cB", Number{whole}, Number{digit}, letter);
}
