#pragma once

#include "platform/Screen.h"

namespace platform {

/// Screens on QScreen.
class QtScreens final : public Screens {
public:
    Screen screenOf(const QWidget& window) const override;
    std::vector<Screen> all() const override;
    Rect frameOf(const QWidget& window) const override;
    void setFrameOf(QWidget& window, const Rect& frame) override;
};

} // namespace platform
