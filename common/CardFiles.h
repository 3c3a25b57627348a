#pragma once

/// What the camera calls its card and the files on it; paths are relative to the card's root.
namespace cardFiles {

inline constexpr const char* label = "ZAVIK";
inline constexpr const char* settings = "config.bin";
inline constexpr const char* copyEnding = ".bak"; // of the settings of before, beside them
inline constexpr const char* clock = "timeset.cfg";
inline constexpr const char* driveLogFolder = "DrvInfo";
inline constexpr const char* driveLog = "DrvInfo/zavik_000.drv";
inline constexpr const char* alwaysFolder = "AlwaysMovie";
inline constexpr const char* eventFolder = "EventMovie";
inline constexpr const char* motionFolder = "MotionMovie";
inline constexpr const char* recordingFolders[] = {alwaysFolder, eventFolder, motionFolder};

} // namespace cardFiles
