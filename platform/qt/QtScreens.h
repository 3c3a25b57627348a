#pragma once

#include "platform/Screen.h"
#include "platform/qt/AnimationPreference.h"

#include <QPointer>

namespace platform {

class UserDefaults;

/// Screens on QScreen.
class QtScreens final : public Screens {
public:
    /// Reads once whether one desktop spans all displays (the default "spans-displays"; false when absent).
    explicit QtScreens(const UserDefaults& defaults);

    Screen screenOf(const QWidget& window) const override;
    std::vector<Screen> all() const override;
    Rect frameOf(const QWidget& window) const override;
    void setFrameOf(QWidget& window, const Rect& frame, bool animated) override;
    bool startMove(QWidget& window) override;
    uint32_t presentationOptions() const override { return options; }
    void setPresentationOptions(QWidget& window, uint32_t wanted) override;

private:
    void animate(QWidget& window, const QRect& target);
    void applyOptions();

    AnimationPreference preference;
    bool spansAllDisplays;
    uint32_t options = 0;
    QPointer<QWidget> presented;
};

} // namespace platform
