#pragma once

#include "platform/MediaPlayer.h"

#include <cstdint>
#include <functional>

class MainWindowControls;

namespace Ui {
class FullScreenBar;
class TransportBar;
} // namespace Ui

/// The transport controls' display, below the graph and in full screen: position, time, play button, speed,
/// size, volume. Setters are silent; only the user's actions are reported. Main thread only.
class TransportPanel {
public:
    struct Told {
        std::function<void(double fraction)> sliderMoved;
        std::function<void(int volume)> volumeMoved;
    };

    TransportPanel(Ui::TransportBar& bar, Ui::FullScreenBar& fullScreenBar, Told told);

    /// The user holds the knob of a position slider.
    bool isKnobHeld() const;
    /// Where the position slider stands, 0.0 to 1.0.
    double position() const;

    /// A position, and the time played of the media's length; null: no media.
    void showPosition(double fraction, const platform::Media* media);
    void showPlaying(bool isPlaying, const MainWindowControls& controls);
    void showSpeed(double speed);
    /// 0: none.
    void showScale(double scale);
    void showVolume(uint64_t volume);
    /// No moment is played.
    void reset();

private:
    Ui::TransportBar& bar;
    Ui::FullScreenBar& fullScreenBar;
};
