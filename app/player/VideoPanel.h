#pragma once

#include "app/player/PlaybackScreen.h"

#include <functional>

class LoadingIndicator;
class MainWindowControls;
class MainWindowLayout;
class QLabel;
class QWidget;

namespace Ui {
class VideoPanel;
}

namespace platform {
class VideoView;
}

/// The picture's part of the main window. Main thread only.
class VideoPanel final : public PlaybackScreen {
public:
    /// `resized` is called after the picture's place has another size.
    VideoPanel(platform::Dispatcher& dispatcher, Ui::VideoPanel& outlets, LoadingIndicator& indicator,
        MainWindowLayout& layout, std::function<void()> resized);

    platform::VideoView& view() { return *video1View; }
    /// Called when the player that draws there is gone.
    void removeView();

    /// What can be done with the picture now: captured while it plays, printed.
    void showUses(const platform::MediaPlayer& player, const MainWindowControls& controls,
        QWidget& captureButton, QWidget& printButton) const;

    double height() const override;
    void say(const QString& text) override;
    void showPictureOf(const platform::MediaPlayer& player) override;
    void showSeeking(platform::MediaTime target) override;
    void hideSeeking() override;
    LoadingBar& loading() override { return bar; }

private:
    Ui::VideoPanel& outlets;
    platform::VideoView* video1View;
    QLabel* seekLabel;
    LoadingBar bar;
};
