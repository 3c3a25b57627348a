#include "platform/Screen.h"

namespace platform {

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

} // namespace platform
