#pragma once

#include "platform/MediaPlayer.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct mpv_event_property;
struct mpv_node;

namespace platform {

/// Seconds as reported by mpv; 0 for impossible values: negative, above a day, not a number.
double plausibleSeconds(double claimed);

/// A position to seek to.
struct SeekTarget {
    enum class Unit { seconds, fraction } unit = Unit::seconds;
    double value = 0;
    bool operator==(const SeekTarget&) const = default;
};

/// What mpv is doing for the player; one thing at a time, as its events don't tell what they belong to.
enum class MpvErrand { seek, camera, step };

/// An errand on its way through mpv: sent, accepted (the command's reply), begun (the seek event), arrived
/// (playback restarted) and its time being read.
enum class SeekStage { none, sent, accepted, begun, arrived };

/// What is known of the file that mpv has been told to open. Times in seconds.
struct MpvFile {
    /// mpv's number for the file, and whether mpv has begun with it.
    std::optional<int64_t> entry;
    bool begun = false;
    /// Answers that are still missing before the file counts as open; none are asked for at first.
    std::optional<int> missingAnswers;

    /// 0 while it is not known.
    double duration = 0;
    double time = 0;
    VideoSize size;
    bool hasSound = false;
    std::vector<int> audioTracks;
    bool ended = false;
    /// It ended long before its length.
    bool breaksOff = false;
    bool isTimeKnown = false; // of the picture that is shown
    bool isTimeHeld = false; // a change of the camera while paused doesn't move it

    MpvErrand errand = MpvErrand::seek;
    SeekStage stage = SeekStage::none;
    bool errandSeeks = true; ///< it leads to a seek of mpv's
    int errandAnswers = 0; ///< that are still missing
    /// The newest seek's target; empty when it has arrived.
    std::optional<SeekTarget> target;
    /// The pending seek goes to another place than `target`.
    bool targetIsNewer = false;

    /// Pictures still to go, back when negative, and whether the one under way leads forward.
    int steps = 0;
    bool stepsOn = false;
    double timeBeforeStep = 0;
    bool isSilenced = false; ///< since the first step, until it plays on
    bool isStepRepeated = false;
    bool isEndIgnored = false; ///< mpv's word on the end is not to be had between steps
    /// A step found no picture after the one on screen. The file ends when it plays on.
    bool isAtLastPicture = false;

    double seconds(const SeekTarget& place) const;
    bool leadsToEnd(const SeekTarget& place) const;
    /// Where the file is, or will be after the seek.
    double currentTime() const;
    /// 0 to 1, exactly 1 at the end.
    double currentFraction() const;
};

/// A readable message for mpv's error number.
std::string mpvFailureReason(int error);
/// A property's value; 0 and false for one of another kind.
double propertyNumber(const mpv_event_property& property);
bool propertyFlag(const mpv_event_property& property);
/// The list's values; none for another kind of node.
std::span<const mpv_node> nodeList(const mpv_node& list);
/// The map's value of that name; null when there is none.
const mpv_node* nodeField(const mpv_node& map, std::string_view name);
/// The numbers of the audio tracks in mpv's "track-list", without those of other files.
std::vector<int> audioTracksOf(const mpv_node& trackList);

} // namespace platform
