#include "platform/Screen.h"

#include <algorithm>

namespace platform {

namespace {

double sharedArea(const Rect& one, const Rect& other)
{
    const double width = std::min(one.maxX(), other.maxX()) - std::max(one.x, other.x);
    const double height = std::min(one.maxY(), other.maxY()) - std::max(one.y, other.y);
    return std::max(width, 0.0) * std::max(height, 0.0);
}

} // namespace

bool Screen::hasDock() const
{
    const double bar = hasMenuBar ? statusBarThickness : 0;
    return frame.width > visibleFrame.width || frame.height > visibleFrame.height + bar;
}

uint32_t Screen::fullscreenPresentationOptions(uint32_t present) const
{
    if (hasMenuBar)
        present |= autoHideMenuBar;
    if (hasMenuBar || hasDock())
        present |= autoHideDock;
    return present;
}

uint32_t Screen::nonFullscreenPresentationOptions(uint32_t present) const
{
    if (hasMenuBar)
        present &= ~uint32_t(autoHideMenuBar);
    if (hasMenuBar || hasDock())
        present &= ~uint32_t(autoHideDock);
    return present;
}

const Screen& screenHoldingMost(const std::vector<Screen>& screens, const Rect& frame)
{
    return *std::ranges::max_element(
        screens, {}, [&](const Screen& screen) { return sharedArea(screen.frame, frame); });
}

Rect fittedInto(const Rect& area, Rect frame)
{
    frame.width = std::min(frame.width, area.width);
    frame.height = std::min(frame.height, area.height);
    frame.x = std::clamp(frame.x, area.x, area.maxX() - frame.width);
    frame.y = std::clamp(frame.y, area.y, area.maxY() - frame.height);
    return frame;
}

} // namespace platform
