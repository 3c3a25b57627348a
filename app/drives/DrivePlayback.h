#pragma once

#include "app/player/PlaybackSession.h"
#include "drives/DriveFigures.h"
#include "drives/DriveTimeline.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Plays a whole drive as one line of time: which file follows which, where a point of the line is, and the
/// moments to jump to. It ends when a file is played that the user chose elsewhere. Main thread only.
class DrivePlayback {
public:
    /// All live longer. `changed` is called when another drive is played, or none, or it is known better.
    DrivePlayback(PlaybackSession& session, const ZVKMediaList& list, std::function<void()> changed);

    /// Plays the drive from its start, or from two seconds before the moment.
    void play(const Drive& drive, const std::optional<DriveMoment>& moment = {});
    /// Whether it is the drive that is played.
    bool plays(const Drive& drive) const;
    /// The drive that plays has these takes and lengths. False when that was known, or it is no part of it.
    bool update(const Drive& drive);
    /// What is known of the drive that plays.
    void setMoments(std::vector<DriveMoment> found);
    bool isActive() const { return !takes.empty(); }
    size_t takeAtHand() const { return current; }
    const std::vector<Take>& takesOfDrive() const { return takes; }
    const DriveTimeline& line() const { return timeline; }
    const std::vector<DriveMoment>& moments() const { return found; }

    /// Where the line is played, 0.0 to 1.0, at that fraction of the file at hand.
    double fractionAt(double position) const;
    /// The drive at hand again, with what the user set.
    void playFromStart();
    /// The user goes to a point of the line, 0.0 to 1.0; what rests goes on resting.
    void goTo(double fraction);
    void goTo(const DriveMoment& moment);
    void goTo(const DriveTimeline::Place& place);
    /// Two seconds before the next (1) or previous (-1) moment; nothing where there is none.
    void jumpToMoment(int direction, double position);

    /// What follows the entry of the list while a drive is played; nothing for a file of no drive.
    std::optional<Following> following(int64_t index) const;
    /// Plays the next (1) or previous (-1) take. False where no drive is played or it has no further one.
    bool playNeighbour(int direction);
    /// An entry is the file at hand now.
    void entryChosen(int64_t index);
    /// The file at hand is that long, in seconds; 0: not known.
    void lengthKnown(double seconds);
    /// The list has other entries: the rows of the drive's files may have changed.
    void findRows();
    void movedTo(const std::string& from, const std::string& to);
    void end();

private:
    void goToPoint(double seconds, bool staysPaused);
    bool isPaused() const;
    std::optional<size_t> takeOfRow(int64_t row) const;

    PlaybackSession& session;
    const ZVKMediaList& list;
    std::function<void()> changed;
    std::vector<Take> takes;
    std::vector<int64_t> rows; // of each take's first recording in the list; -1: not there
    std::vector<DriveMoment> found;
    DriveTimeline timeline;
    size_t current = 0; // the take at hand
};
