#include "platform/qt/AnimationPreference.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace platform {

namespace {

/// Answers come as a variant in a variant.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

AnimationPreference::AnimationPreference()
{
    ask(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"));
    // A factor; 0 is none.
    ask(QStringLiteral("org.kde.kdeglobals.KDE"), QStringLiteral("AnimationDurationFactor"));
}

void AnimationPreference::ask(const QString& group, const QString& key)
{
    QDBusMessage question = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
        QStringLiteral("/org/freedesktop/portal/desktop"), QStringLiteral("org.freedesktop.portal.Settings"),
        QStringLiteral("Read"));
    question.setArguments({group, key});
    auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QVariant> reply = *answer;
        if (reply.isError())
            return;
        const QVariant value = unwrapped(reply.value());
        if (value.isValid() && value.toDouble() == 0)
            wanted = false;
    });
}

} // namespace platform
