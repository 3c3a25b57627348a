#pragma once

/// Why the walk over a recording's side data ended.
enum class WalkEnd {
    // The walk succeeded.
    Complete, ///< the side data's size has been counted down to nothing
    EndOfFile, ///< the file ended where a record was expected, or inside a GPS record
    ImpossibleText, ///< a GPS record announces a text that cannot be there
    // It did not; what was gathered before stays.
    NotWalked,
    CannotOpen,
    NotAvi,
    NoSideData, ///< no "JUNK" chunk
    CutGSensorRecord, ///< the file ended inside a G-sensor record
    ReadError, ///< the device failed
    Stopped, ///< somebody asked for it
    NoMemory, ///< nothing stays
};

constexpr bool isSuccess(WalkEnd end)
{
    return end <= WalkEnd::ImpossibleText;
}
