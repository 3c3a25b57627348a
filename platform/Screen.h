#pragma once

#include "platform/Geometry.h"

#include <cstdint>
#include <optional>
#include <vector>

class QWidget;

namespace platform {

/// What the desktop shows around a full-screen window; bits of an application-wide set.
enum PresentationOption : uint32_t { autoHideDock = 1, autoHideMenuBar = 4 };

/// One screen. Frames are in points, y up, the origin at the lower-left corner of the first screen.
struct Screen {
    uint32_t displayID = 0;
    Rect frame;
    /// The frame without panels and docks.
    Rect visibleFrame;
    /// Height of the desktop's status bar where a screen shows one.
    double statusBarThickness = 0;
    /// False where one desktop spans all screens and this is not the first of them.
    bool hasMenuBar = true;

    /// Whether a dock takes room on this screen.
    bool hasDock() const;
    /// The options that full screen needs on this screen, added to (removed from) the present ones.
    uint32_t fullscreenPresentationOptions(uint32_t present) const;
    uint32_t nonFullscreenPresentationOptions(uint32_t present) const;
};

/// The screen that holds most of the frame; the first one where none holds any of it. At least one is given.
const Screen& screenHoldingMost(const std::vector<Screen>& screens, const Rect& frame);

/// The frame, moved as little as possible to lie in the area, and shrunk to fit.
Rect fittedInto(const Rect& area, Rect frame);

/// The desktop's screens and the frames of windows on them, in the same y-up coordinates.
class Screens {
public:
    virtual ~Screens() = default;

    /// The screen that holds most of the window (the first one for a window that is nowhere yet).
    virtual Screen screenOf(const QWidget& window) const = 0;
    /// At least one; the first is the main screen.
    virtual std::vector<Screen> all() const = 0;

    /// The frame that was set last, also while the window still moves there.
    virtual Rect frameOf(const QWidget& window) const = 0;
    /// Where a program may not place its windows, only the size is used. Animated: a visible window moves
    /// there, unless the desktop has animations off; a later frame replaces it.
    virtual void setFrameOf(QWidget& window, const Rect& frame, bool animated = false) = 0;
    /// Lets the desktop move the window with the pointer until the button is released. False where the
    /// program moves the window itself.
    virtual bool startMove(QWidget& window) = 0;

    virtual uint32_t presentationOptions() const = 0;
    /// Any option set: panels, docks and menu bars give way to the window, once it has reached its frame; it
    /// must cover its screen.
    virtual void setPresentationOptions(QWidget& window, uint32_t options) = 0;
};

} // namespace platform
