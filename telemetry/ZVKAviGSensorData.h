#pragma once

#include "telemetry/AviRecords.h"

#include <cstring>

/// A raw copy of one G-sensor record.
struct ZVKAviGSensorData {
    _AVI_GSENSOR_DATA_T data;

    /// Copies the 24 bytes at `bytes`, which need no alignment.
    static ZVKAviGSensorData aviGSensorDataWithData(const void* bytes)
    {
        ZVKAviGSensorData copy;
        std::memcpy(&copy.data, bytes, sizeof copy.data);
        return copy;
    }
};
