#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace platform {

/// A length or a moment of a media file in whole milliseconds; negative for a remaining time;
/// the null time is no time at all.
class MediaTime {
public:
    static MediaTime nullTime() { return {}; }
    static MediaTime timeWithInt(int64_t milliseconds);

    bool isNull() const { return !milliseconds; }
    /// Milliseconds; 0 for the null time.
    int64_t intValue() const { return milliseconds.value_or(0); }
    /// "mm:ss" or "h:mm:ss" with whole seconds cut toward zero, a "-" before a negative time
    /// ("-00:00" for the last second's fraction), "--:--" for the null time.
    std::string stringValue() const;

private:
    std::optional<int64_t> milliseconds;
};

/// A file to play. Nothing is opened until a player plays it.
class Media {
public:
    static std::shared_ptr<Media> mediaWithPath(std::string path);

    /// The file's path; nothing for a media without a location.
    const std::optional<std::string>& url() const { return location; }
    /// The file is at another path now; a player that has it open goes on.
    void moveTo(std::string path) { location = std::move(path); }
    /// Null until a player has opened the file, and for an impossible length.
    MediaTime length() const { return duration; }
    void setLength(MediaTime length) { duration = length; }

private:
    std::optional<std::string> location;
    MediaTime duration;
};

struct VideoSize {
    double width = 0;
    double height = 0;
};

/// The player's state numbers. Controllers use only `paused`: the state while paused and at the end of a
/// file, where the last picture is kept.
enum class PlayerState : int {
    stopped = 0,
    opening = 1,
    buffering = 2,
    ended = 3,
    error = 4,
    playing = 5,
    paused = 6
};

class MediaPlayer;

/// Told on the main thread, never from inside a call of the player.
class MediaPlayerDelegate {
public:
    virtual ~MediaPlayerDelegate() = default;
    virtual void mediaPlayerStateChanged(MediaPlayer& player) = 0;
    /// At most 30 times a second while the file plays, and once after every seek.
    virtual void mediaPlayerTimeChanged(MediaPlayer& player) = 0;
    /// The file could not be opened or holds nothing that can be played.
    virtual void mediaPlayerFailed(MediaPlayer& player, const std::string& why) = 0;
};

/// Plays one file at a time into the video view that it was made with. Main thread only.
/// Every operation is harmless without a media: queries give 0, false or an empty list.
class MediaPlayer {
public:
    virtual ~MediaPlayer() = default;

    /// Gives the file to play next, or takes it away (null). A file that plays is stopped first.
    virtual void setMedia(std::shared_ptr<Media> media) = 0;
    virtual std::shared_ptr<Media> media() const = 0;

    /// Opens the media when it is not open yet; otherwise continues. At the end of the file the picture
    /// stays.
    virtual void play() = 0;
    virtual void pause() = 0;
    /// Closes the file, keeps the media.
    virtual void stop() = 0;

    /// True only while the file is open and runs: not while opening, paused, or at its end.
    virtual bool isPlaying() const = 0;
    virtual PlayerState state() const = 0;

    /// Fraction of the file's length, 0 to 1; 1.0 at the end of the file.
    virtual float position() const = 0;
    virtual void setPosition(float position) = 0;
    /// Time played; the null time without an open file.
    virtual MediaTime time() const = 0;
    /// The null time seeks to the start; a time at or beyond the length to the end.
    virtual void setTime(MediaTime time) = 0;
    /// Time left, negative or 0; the null time without an open file or when its length is not known.
    virtual MediaTime remainingTime() const = 0;
    virtual float rate() const = 0;
    virtual void setRate(float rate) = 0;
    /// Jumps forward by whole seconds, at most to the end.
    virtual void jumpForward(int seconds) = 0;
    /// Whether a seek is pending: meanwhile position and time are its target. When it has ended the new
    /// picture is shown, and a time report follows.
    virtual bool isSeeking() const = 0;
    /// Whether the file has ended long before its length, as a recording does that was cut off: the player
    /// rests at the last picture, and position and time are that picture's.
    virtual bool breaksOff() const = 0;

    virtual bool hasVideoOut() const = 0;
    /// Width and height of the video as it is to be shown, in pixels; zeros before the first picture.
    virtual VideoSize videoSize() const = 0;

    virtual void setMute(bool mute) = 0;
    /// 0 to 200, 100 being the file's own loudness.
    virtual void setVolume(int volume) = 0;
    /// Numbers of the file's audio tracks; empty before the file is open.
    virtual std::vector<int> audioTrackIndexes() const = 0;

    /// Writes the picture on screen to a file; the format follows the path's extension.
    /// Width and height 0: the video's own size. False when there is no picture or it could not be written.
    virtual bool saveVideoSnapshotAt(const std::string& path, int width, int height) = 0;

    /// Not owned; null for none.
    virtual void setDelegate(MediaPlayerDelegate* delegate) = 0;
};

} // namespace platform
