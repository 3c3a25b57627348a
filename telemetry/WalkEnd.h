#pragma once

/// Why the walk over a recording's side data ended.
enum class WalkEnd {
    // The walk succeeded.
    complete, ///< all bytes of the side data's size were read
    endOfFile, ///< the file ended where a record was expected, or inside a GPS record
    impossibleText, ///< a GPS record announces a text longer than the rest of the file
    // It did not; what was gathered before stays.
    notWalked,
    cannotOpen,
    notAvi,
    noSideData, ///< no "JUNK" chunk
    cutGSensorRecord, ///< the file ended inside a G-sensor record
    readError, ///< the device failed
    stopped, ///< a stop was requested
    noMemory, ///< nothing stays
};

constexpr bool isSuccess(WalkEnd end)
{
    return end <= WalkEnd::impossibleText;
}
