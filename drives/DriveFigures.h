#pragma once

#include "media/Drives.h"
#include "telemetry/TripFigures.h"

#include <atomic>
#include <cstddef>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

/// A moment with the place where it is played.
struct DriveMoment {
    size_t take = 0; ///< index in the drive
    std::string file; ///< the recording that tells it
    double seconds = 0; ///< into that file
    Moment moment;
};

/// What a drive adds up to. Nothing where no recording tells it.
struct DriveFigures {
    std::optional<double> distanceKm;
    std::optional<double> topSpeedKmh;
    std::optional<double> strongestG; ///< from rest
    std::vector<DriveMoment> moments; ///< as they are played
    std::vector<TrackSegment> track; ///< of all takes, each with segments of its own
    std::vector<std::string> unread; ///< recordings that could not be read; what they tell is missing
};

/// The figures of a recording, read from its file; nothing when it cannot be read as one. Blocks as long as
/// the card.
std::optional<RecordingFigures> figuresOfFile(const std::string& path, std::stop_token stop = {});

/// How long a recording plays as far as it is known: by its header, else by the times of its telemetry.
double secondsOf(const std::optional<std::chrono::microseconds>& length, const RecordingFigures& figures);

/// The same for one of the take's two files, of which the rear one may be longer or shorter. Blocks as long
/// as the card.
double secondsOfFile(const Take& take, const std::string& file, const RecordingFigures& figures);

/// What a read of telemetry heeds, and how far it is.
struct FiguresReading {
    std::stop_token stop; ///< ends it early
    std::set<std::string> skipped = {}; ///< paths that count as unread
    std::atomic<size_t>* takesRead = nullptr; ///< counted up
};

/// Reads the telemetry of a whole drive: of each take the front recording's, or the rear one's where the
/// front has none.
DriveFigures figuresOf(const Drive& drive, const FiguresReading& reading = {});
