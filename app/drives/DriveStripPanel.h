#pragma once

#include <QString>

#include <functional>

class DrivePlayback;
class DriveStrip;
class MainWindowLayout;

namespace Ui {
class FullScreenBar;
class TransportBar;
} // namespace Ui

/// "12:05", with hours where there are any.
QString timeText(double seconds);

/// The drive that plays as a strip below the position slider, also in full screen: each recording a segment,
/// the moments as marks, where it is played. Main thread only.
class DriveStripPanel {
public:
    /// `moved` is called with the place that the user goes to, 0.0 to 1.0.
    DriveStripPanel(Ui::TransportBar& bar, Ui::FullScreenBar& fullScreenBar, MainWindowLayout& layout,
        const std::function<void(double fraction)>& moved);

    /// Another drive, or none; or its moments and lengths are known better.
    void show(const DrivePlayback& drive);
    /// The moment at a fraction of the file at hand.
    void showPosition(const DrivePlayback& drive, double position);

private:
    Ui::TransportBar& bar;
    Ui::FullScreenBar& fullScreenBar;
    MainWindowLayout& layout;
};
