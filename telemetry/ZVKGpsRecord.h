#pragma once

#include "telemetry/AviRecords.h"

#include <cstddef>

/// One GPS record of a recording with everything that belongs to it, for exporting a track: the header alone
/// has no hemisphere, and the lists of headers and of snapshots do not tell which of them belong together.
struct ZVKGpsRecord {
    _AVI_GPS_DATA_T header;
    char NS = 'N'; ///< the hemispheres as they stood after the record's sentences
    char EW = 'E';
    size_t firstSnapshot = 0; ///< index in `m_NMEAs` of the first snapshot that the record added
    size_t snapshotCount = 0; ///< how many it added, possibly none
    size_t samplesBefore = 0; ///< G-sensor samples that stand before it in the file
};
