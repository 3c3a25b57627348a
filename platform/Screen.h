#pragma once

#include "platform/Geometry.h"

#include <cstdint>
#include <vector>

class QWidget;

namespace platform {

/// One screen. Frames are in points, y up, the origin at the lower-left corner of the first screen.
struct Screen {
    uint32_t displayID = 0;
    Rect frame;
    /// The frame without panels and docks.
    Rect visibleFrame;
};

/// The desktop's screens and the frames of windows on them, in the same y-up coordinates.
class Screens {
public:
    virtual ~Screens() = default;

    /// The screen that shows the window (the first one for a window that is nowhere yet).
    virtual Screen screenOf(const QWidget& window) const = 0;
    /// At least one; the first is the main screen.
    virtual std::vector<Screen> all() const = 0;

    virtual Rect frameOf(const QWidget& window) const = 0;
    virtual void setFrameOf(QWidget& window, const Rect& frame) = 0;
};

} // namespace platform
