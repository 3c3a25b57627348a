#pragma once

#include "app/player/PlaybackScreen.h"
#include "common/Life.h"

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
    /// `resized` is called after the picture's place has another size, `clicked` with the place of a click on
    /// the picture, in fractions of its size; true: it was for something on the picture.
    VideoPanel(platform::Dispatcher& dispatcher, Ui::VideoPanel& outlets, LoadingIndicator& indicator,
        MainWindowLayout& layout, std::function<void()> resized,
        std::function<bool(double x, double y)> clicked);

    platform::VideoView& view() { return *video1View; }
    /// Called when the player that draws there is gone.
    void removeView();

    /// What can be done with the picture now: captured while it plays, printed.
    void showUses(const platform::MediaPlayer& player, const MainWindowControls& controls,
        QWidget& captureButton, QWidget& printButton) const;

    double heightOf(platform::VideoSize picture) const override;
    void say(const QString& text) override;
    void showPictureOf(const platform::MediaPlayer& player) override;
    void showSeeking(platform::MediaTime target) override;
    void hideSeeking() override;
    void remark(const QString& text) override;
    void showFrameTime(platform::MediaTime time) override;
    void hideFrameTime() override;
    LoadingBar& loading() override { return bar; }

private:
    QLabel* makeText();
    void showText(QLabel& label, const QString& text);
    void placeTexts();

    platform::Dispatcher& dispatcher;
    Ui::VideoPanel& outlets;
    platform::VideoView* video1View;
    // Over the picture, from below upwards.
    QLabel* seekLabel;
    QLabel* frameTimeLabel;
    QLabel* remarkLabel;
    Life remarkLife;
    bool fillsPlace = true;
    LoadingBar bar;
};
