#pragma once

#include <cstdint>

/// A UTC date and time.
struct _SYSTEMTIME {
    uint16_t wYear = 0; ///< full year
    uint16_t wMonth = 0; ///< 1 to 12
    uint16_t wDayOfWeek = 0;
    uint16_t wDay = 0;
    uint16_t wHour = 0;
    uint16_t wMinute = 0;
    uint16_t wSecond = 0;
    uint16_t wMilliseconds = 0;

    bool operator==(const _SYSTEMTIME&) const = default;
};
static_assert(sizeof(_SYSTEMTIME) == 16);
