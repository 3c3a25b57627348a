#pragma once

#include "telemetry/AviRecords.h"

#include <cstring>

/// A raw copy of one GPS record header.
struct ZVKAviGpsData {
    _AVI_GPS_DATA_T data;

    /// Copies the 41 bytes at `bytes`, which need no alignment.
    static ZVKAviGpsData aviGpsDataWithData(const void* bytes)
    {
        ZVKAviGpsData copy;
        std::memcpy(&copy.data, bytes, sizeof copy.data);
        return copy;
    }
};
