#include "platform/udisks/UDisks2Bus.h"

#include <QDBusError>

namespace platform {

UDisks2Bus::UDisks2Bus(const std::string& address)
    : name(QStringLiteral("zavik-volumes-%1").arg(quintptr(this), 0, 16)),
      connection(address.empty() ? QDBusConnection::connectToBus(QDBusConnection::SystemBus, name)
                                 : QDBusConnection::connectToBus(QString::fromStdString(address), name))
{
}

std::string UDisks2Bus::trouble() const
{
    const std::string reason = connection.lastError().message().toStdString();
    return "no system bus" + (reason.empty() ? reason : ": " + reason);
}

QDBusMessage UDisks2Bus::call(const std::string& path, const char* interface, const char* method,
    const QVariantList& arguments, std::chrono::milliseconds limit) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(QLatin1String(service),
        QString::fromStdString(path), QLatin1String(interface), QLatin1String(method));
    message.setArguments(arguments);
    return connection.call(message, QDBus::Block, int(limit.count()));
}

void UDisks2Bus::tellOfMounts(QObject& receiver, const char* slot)
{
    const auto from = QLatin1String(service);
    const auto root = QStringLiteral("/org/freedesktop/UDisks2");
    const auto manager = QStringLiteral("org.freedesktop.DBus.ObjectManager");
    connection.connect(from, root, manager, QStringLiteral("InterfacesAdded"), &receiver, slot);
    connection.connect(from, root, manager, QStringLiteral("InterfacesRemoved"), &receiver, slot);
    connection.connect(from, {}, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"), {QStringLiteral("org.freedesktop.UDisks2.Filesystem")},
        QStringLiteral("sa{sv}as"), &receiver, slot);
}

} // namespace platform
