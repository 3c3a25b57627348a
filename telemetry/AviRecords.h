#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

// The records are copied from the file as they stand.
static_assert(std::endian::native == std::endian::little);

#pragma pack(push, 1)

/// A "0GDA" record of a recording's side data: little-endian, packed.
struct _AVI_GSENSOR_DATA_T {
    int64_t nTimestamp = 0; ///< milliseconds since 1970-01-01 00:00 UTC
    int32_t xAxis = 0; ///< 1/256 g
    int32_t yAxis = 0; ///< 1/256 g
    int32_t zAxis = 0; ///< 1/256 g
    int32_t nTemperature = 0; ///< carried, not interpreted
};

/// The header of a "0GPS" record: little-endian, packed. `dwExtLength` bytes of sentence text follow it.
struct _AVI_GPS_DATA_T {
    int64_t nTimestamp = 0; ///< milliseconds since 1970-01-01 00:00 UTC
    int32_t dwExtLength = 0; ///< bytes of text
    int32_t nQualityIndicator = 0; ///< carried, not interpreted
    double fLatitude = 0; ///< ddmm.mmmm, a magnitude: the hemisphere comes from the sentences
    double fLongitude = 0; ///< dddmm.mmmm, a magnitude
    double fSpeed = 0; ///< its unit depends on `KM`
    char KM = 0; ///< '1' or '9': 7 further bytes follow the text
};

#pragma pack(pop)

static_assert(sizeof(_AVI_GSENSOR_DATA_T) == 24);
static_assert(offsetof(_AVI_GSENSOR_DATA_T, nTimestamp) == 0);
static_assert(offsetof(_AVI_GSENSOR_DATA_T, xAxis) == 8);
static_assert(offsetof(_AVI_GSENSOR_DATA_T, yAxis) == 12);
static_assert(offsetof(_AVI_GSENSOR_DATA_T, zAxis) == 16);
static_assert(offsetof(_AVI_GSENSOR_DATA_T, nTemperature) == 20);

static_assert(sizeof(_AVI_GPS_DATA_T) == 41);
static_assert(offsetof(_AVI_GPS_DATA_T, nTimestamp) == 0);
static_assert(offsetof(_AVI_GPS_DATA_T, dwExtLength) == 8);
static_assert(offsetof(_AVI_GPS_DATA_T, nQualityIndicator) == 12);
static_assert(offsetof(_AVI_GPS_DATA_T, fLatitude) == 16);
static_assert(offsetof(_AVI_GPS_DATA_T, fLongitude) == 24);
static_assert(offsetof(_AVI_GPS_DATA_T, fSpeed) == 32);
static_assert(offsetof(_AVI_GPS_DATA_T, KM) == 40);
