#pragma once

#include "media/ZVKMedia.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

/// The camera's own clock, which knows no time zone: days and seconds as the names of recordings tell them.
using CameraTime = std::chrono::local_time<std::chrono::microseconds>;

/// The start of a recording; nothing when its name tells none. A 31st of February is the 2nd or 3rd of March.
std::optional<CameraTime> cameraTimeOf(const ZVKMedia& media);

/// "2024-05-18T18:12:13", to the nearest second.
std::string cameraTimeText(CameraTime time);

/// What the cameras recorded from one start on: the front recording and the rear one that started within a
/// second of it, or one recording alone.
struct Take {
    ZVKMedia first; ///< the front recording when there is one
    std::optional<ZVKMedia> rear; ///< of the same start as a front recording
    CameraTime start;
    /// How long it plays; nothing when the header of `first` tells none.
    std::optional<std::chrono::microseconds> length;

    CameraTime end() const { return start + length.value_or(std::chrono::microseconds(0)); }
};

/// Takes that follow each other: none begins later than `longestGap` after the end of all before it.
struct Drive {
    static constexpr std::chrono::seconds longestGap{60};

    std::vector<Take> takes; ///< oldest first; never empty
    CameraTime end; ///< of the take that ends last

    CameraTime start() const { return takes.front().start; }
};

/// Tells a recording's length; nothing when it is unknown. Called once for each recording with a start, in
/// their order, until it was asked for all.
using LengthOf = std::function<std::optional<std::chrono::microseconds>(const ZVKMedia&)>;

/// The recordings as drives, oldest first. The recordings stand as a scan sorts them. One without a start is
/// in no drive; one of unknown length counts as having none.
std::vector<Drive> drivesOf(std::span<const ZVKMedia> recordings, const LengthOf& lengthOf);

/// The recording of the other camera that is of one take with the recording at `index`; nothing when there is
/// none. Found among the neighbours by their names alone, so it costs the same in a list of any length.
std::optional<ZVKMedia> otherCameraOf(std::span<const ZVKMedia> recordings, size_t index);

/// The recordings of a folder are at another path now.
void moveMedia(ZVKMedia& media, const std::string& from, const std::string& to);
void moveTakes(std::vector<Take>& takes, const std::string& from, const std::string& to);
