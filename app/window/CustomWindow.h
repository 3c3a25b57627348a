#pragma once

#include "platform/Screen.h"

#include <QWidget>

#include <functional>
#include <optional>
#include <string>

/// A borderless window that is dragged by its background and has its own full-screen mode.
/// Frames are in screen coordinates, y up.
class CustomWindow : public QWidget {
    Q_OBJECT

public:
    explicit CustomWindow(QWidget* parent = nullptr);

    /// Must be called before any frame or mode is used.
    void setScreens(platform::Screens& desktop) { screens = &desktop; }
    /// The least size outside full screen, on a screen that has room for it; elsewhere it is what fits.
    void setMinimumWindowSize(platform::Size size) { wantedMinimum = size; }
    /// On the window's screen.
    platform::Size minimumWindowSize() const { return minimumOn(currentScreen()); }

    platform::Rect frame() const;
    void setFrame(const platform::Rect& frame, bool animated = false);
    platform::Screen currentScreen() const;

    /// The frame to return to when full screen ends.
    void setInitialFrame(const platform::Rect& frame) { initialFrame = frame; }

    /// The window's own mode (not the toolkit's).
    bool isFullScreen() const { return fullScreen; }
    /// Called after every change of the mode, before the frame changes.
    void observeIsFullScreen(std::function<void()> reported) { observer = std::move(reported); }
    /// Do nothing when the window is in that mode already.
    void enterFullscreen();
    void leaveFullscreen();

signals:
    void closed();
    /// A key that neither the focused control nor the window itself has used; accept it when it is used.
    void keyPressed(QKeyEvent* event);
    /// A file or a folder was dropped on the window; its path in the file system's bytes.
    void pathDropped(const std::string& path);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void setIsFullScreen(bool value);
    platform::Size minimumOn(const platform::Screen& screen) const;

    platform::Screens* screens = nullptr;
    bool fullScreen = false;
    platform::Size wantedMinimum;
    platform::Rect initialFrame;
    std::optional<QPointF> initialLocation;
    std::function<void()> observer;
};
