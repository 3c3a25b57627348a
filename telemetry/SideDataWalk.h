#pragma once

#include "common/ByteCursor.h"
#include "telemetry/AviRecords.h"
#include "telemetry/WalkEnd.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stop_token>

class ZVKBlackBoxData;
struct ZVKGpsRecord;

/// One walk over a recording's side data. Appends to a ZVKBlackBoxData, which describes file layout and
/// rules.
class SideDataWalk {
public:
    SideDataWalk(ZVKBlackBoxData& into, ByteSource& source, std::stop_token stop);

    WalkEnd run();

private:
    // Each step says why the walk ends with it, or nothing when it goes on.
    using Step = std::optional<WalkEnd>;

    Step readFileHeader();
    Step findSideData();
    Step readNextRecord();
    Step readGSensorRecord();
    Step readGpsRecord();
    Step readText(const _AVI_GPS_DATA_T& header);
    Step finishGpsRecord(const _AVI_GPS_DATA_T& header);
    void pairWithWaitingSamples(ZVKGpsRecord& record);
    Step countDown(uint32_t recordSize);
    bool fits(int32_t textLength) const;
    WalkEnd endOfShortRead(WalkEnd atEndOfData) const;

    ZVKBlackBoxData& target;
    ByteCursor cursor;
    uint64_t sourceSize = 0;
    uint32_t remaining = 0; // wraps when the sizes in the file lie
};
