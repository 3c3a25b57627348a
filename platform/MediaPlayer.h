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

/// A part of a picture, as fractions of its width and height.
struct PictureArea {
    double x = 0;
    double y = 0;
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

/// What is on screen of the two files of one moment. A small picture lies in the upper right corner, a third
/// as wide as the large one; side by side the first is on the left, swapped on the right.
enum class CameraView {
    first,
    second,
    pictureInPicture,
    pictureInPictureSwapped,
    sideBySide,
    sideBySideSwapped
};

/// How long the choice of a view holds.
enum class CameraChoice {
    thisFile, ///< the next media begins with the first camera
    nextFilesToo ///< the next media begins with the same view
};

/// The file of the other camera.
enum class SecondFile {
    none,
    opening,
    ready,
    ended, ///< its pictures end before the moment played; ready again after a seek back
    failed ///< missing, broken, without a picture, or no longer there
};

class MediaPlayer;

/// Told on the main thread, never from inside a call of the player.
class MediaPlayerDelegate {
public:
    virtual ~MediaPlayerDelegate() = default;
    virtual void mediaPlayerStateChanged(MediaPlayer& player) = 0;
    /// At most 30 times a second while the file plays, and once after every seek, every step and every change
    /// of the camera.
    virtual void mediaPlayerTimeChanged(MediaPlayer& player) = 0;
    /// The file could not be opened or holds nothing that can be played.
    virtual void mediaPlayerFailed(MediaPlayer& player, const std::string& why) = 0;
    /// Another view is on screen, or other views are possible than before.
    virtual void mediaPlayerCamerasChanged(MediaPlayer&) { }
    /// The second file failed or ends before the first, told once a file; the first goes on.
    virtual void mediaPlayerSecondFailed(MediaPlayer&, const std::string& /*why*/) { }
};

/// Plays one file at a time into the video view that it was made with, and with it a second file of the same
/// moment, picture for picture. Position, time, length, sound and end are always those of the first.
/// Main thread only. Every operation is harmless without a media: queries give 0, false or an empty list.
class MediaPlayer {
public:
    virtual ~MediaPlayer() = default;

    /// Gives the file to play next, or takes it away (null). A file that plays is stopped first, and the
    /// second file is taken away, too.
    virtual void setMedia(std::shared_ptr<Media> media) = 0;
    virtual std::shared_ptr<Media> media() const = 0;

    /// Gives the second file of the media's moment, or takes it away (null); before `play` or while the first
    /// plays. Whatever becomes of it, the first goes on.
    virtual void setSecondMedia(std::shared_ptr<Media> media) = 0;
    virtual std::shared_ptr<Media> secondMedia() const = 0;
    virtual SecondFile secondFile() const = 0;
    /// Changes what is on screen at the same moment, playing or paused. A view that is not possible yet, or
    /// no longer, is shown as soon as it is; until then the first camera.
    virtual void setCameraView(CameraView view, CameraChoice choice) = 0;
    /// The view that was chosen last.
    virtual CameraView cameraView() const = 0;
    /// The view that is on screen.
    virtual CameraView shownCameraView() const = 0;
    /// Whether the view would be shown now if it were chosen.
    virtual bool canShow(CameraView view) const = 0;
    /// Where the small picture lies in the one on screen; nothing without one.
    virtual std::optional<PictureArea> smallPicture() const = 0;

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
    /// 0.25 to 8 are kept exactly; pictures may be left out above 4.
    virtual void setRate(float rate) = 0;
    /// Jumps forward by whole seconds, at most to the end.
    virtual void jumpForward(int seconds) = 0;
    /// Whether a seek is pending: meanwhile position and time are its target. When it has ended the new
    /// picture is shown, and a time report follows.
    virtual bool isSeeking() const = 0;
    /// Pauses and goes on by so many pictures, back when negative, one after the other: a time report follows
    /// each, with that picture's time. Further steps add up; a seek, and playing on, drop what is left of
    /// them. Stays at the first picture and at the last, which is not the end of the file unless it was
    /// reached.
    virtual void stepFrame(int frames) = 0;
    /// Whether the file has ended long before its length, as a recording does that was cut off: the player
    /// rests at the last picture, and position and time are that picture's.
    virtual bool breaksOff() const = 0;

    virtual bool hasVideoOut() const = 0;
    /// Width and height of the video as it is to be shown, in pixels; zeros before the first picture. With
    /// two cameras on screen those of both together.
    virtual VideoSize videoSize() const = 0;

    virtual void setMute(bool mute) = 0;
    /// 0 to 200, 100 being the file's own loudness.
    virtual void setVolume(int volume) = 0;
    /// Numbers of the file's audio tracks; empty before the file is open.
    virtual std::vector<int> audioTrackIndexes() const = 0;

    /// Writes the picture on screen to a file, both cameras where both are shown; the format follows the
    /// path's extension. Width and height 0: the video's own size. False when there is no picture or it could
    /// not be written.
    virtual bool saveVideoSnapshotAt(const std::string& path, int width, int height) = 0;

    /// Not owned; null for none.
    virtual void setDelegate(MediaPlayerDelegate* delegate) = 0;
};

} // namespace platform
