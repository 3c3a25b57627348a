#pragma once

#include <QObject>

namespace platform {

/// Whether the desktop wants its windows to move by animation. It is asked once, in the background, through
/// its settings portal; a desktop that has no answer gets animations.
class AnimationPreference final : public QObject {
public:
    AnimationPreference();

    bool isAnimated() const { return wanted; }

private:
    void ask(const QString& group, const QString& key);

    bool wanted = true;
};

} // namespace platform
