#pragma once

#include "telemetry/AviRecords.h"

#include <cstddef>

/// One GPS record of a recording with everything that belongs to it: the header alone has no hemisphere.
struct ZVKGpsRecord {
    _AVI_GPS_DATA_T header;
    char NS = 'N'; ///< the hemispheres as they stood after the record's sentences
    char EW = 'E';
    size_t firstSnapshot = 0; ///< index in `m_NMEAs` of the first snapshot that the record added
    size_t snapshotCount = 0; ///< how many it added, possibly none
    size_t samplesBefore = 0; ///< G-sensor samples that stand before it in the file
    size_t pairedUpTo = 0; ///< how many samples are paired with this record or one before it
};
