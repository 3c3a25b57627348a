#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <utility>

/// The play state that the window observes. Every assignment is reported to the observer with the field's
/// name, also when the value does not change. Main thread only.
class ZVKPlayInfo {
public:
    using Observer = std::function<void(std::string_view key)>;

    void observe(Observer reported) { observer = std::move(reported); }

    /// The player is really playing.
    bool isPlaying() const { return playing; }
    void setIsPlaying(bool value) { assign(playing, value, "isPlaying"); }

    /// Play position as a fraction of the file's length, 0.0 to 1.0.
    double position() const { return fraction; }
    void setPosition(double value) { assign(fraction, value, "position"); }

    /// Playback rate shown to the user; 0.0 until the first file starts.
    double speed() const { return rate; }
    void setSpeed(double value) { assign(rate, value, "speed"); }

    /// Displayed video height divided by the video's own; 0.0 until the first picture.
    double scale() const { return size; }
    void setScale(double value) { assign(size, value, "scale"); }

    /// Camera whose audio is heard: 0 front, 1 rear, 2 none or unknown.
    int32_t audioMediaDirection() const { return direction; }
    void setAudioMediaDirection(int32_t value) { assign(direction, value, "audioMediaDirection"); }

private:
    template <typename T> void assign(T& field, T value, std::string_view key)
    {
        field = value;
        if (observer)
            observer(key);
    }

    bool playing = false;
    double fraction = 0;
    double rate = 0;
    double size = 0;
    int32_t direction = 0;
    Observer observer;
};
