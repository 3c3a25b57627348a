#include "common/Coordinates.h"

#include <cmath>

namespace {

double degrees(double value)
{
    const double whole = std::trunc(value / 100);
    return whole + (value / 100 - whole) * 100 / 60;
}

} // namespace

void nmeaCoordinateToDegrees(double* first, double* second, double firstValue, double secondValue)
{
    if (first)
        *first = degrees(firstValue);
    if (second)
        *second = degrees(secondValue);
}
