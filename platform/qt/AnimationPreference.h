#pragma once

#include <QObject>

namespace platform {

/// Whether the desktop has animations on. Asked once, in the background, through its settings portal; on when
/// there is no answer.
class AnimationPreference final : public QObject {
public:
    AnimationPreference();

    bool isAnimated() const { return wanted; }

private:
    void ask(const QString& group, const QString& key);

    bool wanted = true;
};

} // namespace platform
