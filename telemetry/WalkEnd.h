#pragma once

/// Why the walk over a recording's side data ended.
enum class WalkEnd {
    // The walk succeeded.
    complete, ///< the side data's size has been counted down to nothing
    endOfFile, ///< the file ended where a record was expected, or inside a GPS record
    impossibleText, ///< a GPS record announces a text that cannot be there
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
