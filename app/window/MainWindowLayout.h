#pragma once

#include "lib/VisualFormat.h"
#include "platform/Geometry.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <vector>

class CustomWindow;
class QWidget;
struct MainWindowOutlets;

/// Where the boxes of the main window stand, in the normal mode and in full screen, which of list, drives and
/// map is on the right, and how large the window is. Main thread only.
class MainWindowLayout {
public:
    MainWindowLayout(CustomWindow& window, MainWindowOutlets& outlets);

    /// The view covers the container from now on.
    void fill(QWidget& container, QWidget& view);
    /// Follows the window's mode.
    void layoutWindow();

    // The right-hand panel: the recordings at first.
    void clickMediaListViewButton();
    void clickDrivesViewButton();
    void clickMapViewButton();
    void updateSideViewButton();

    /// Room for the strip of a drive below the position sliders, or none.
    void showDriveStrip(bool isShown);

    static constexpr platform::Size minWindowSize() { return {1020, 640}; }
    /// In its least size, centred on its screen; smaller where that does not fit.
    void showWindow();
    /// One step larger (1) or smaller (-1), up to full screen and back; 0 gives the window its least size
    /// back where it is below that, and leaves full screen.
    void setVideoScaleIndex(int64_t step);
    void toggleFullScreen();

private:
    void set(FormatLayout& layout, std::initializer_list<const char*> formats);
    enum class Side { recordings, drives, map };
    void showSide(Side side);
    void layoutBodyBox();
    void layoutMapContainer();
    void releaseHiddenFocus();
    platform::Rect minWindowFrame() const;

    CustomWindow& window;
    MainWindowOutlets& outlets;
    Side shownSide = Side::recordings;
    bool showsStrip = false;
    QHash<QString, QWidget*> views;
    FormatLayout content;
    FormatLayout background;
    FormatLayout body;
    FormatLayout bodyLeft;
    FormatLayout bodyRight;
    FormatLayout mediaListBox;
    FormatLayout mapContainer;
    FormatLayout videoBox;
    std::vector<std::unique_ptr<FormatLayout>> filled;
};
