#pragma once

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>
#include <string>

namespace platform {

/// A private connection to the system bus, or to the bus at an address; any thread may call. The constructor
/// blocks until the bus answers.
class UDisks2Bus {
public:
    static constexpr const char* service = "org.freedesktop.UDisks2";

    explicit UDisks2Bus(const std::string& address);
    ~UDisks2Bus() { QDBusConnection::disconnectFromBus(name); }
    UDisks2Bus(const UDisks2Bus&) = delete;
    UDisks2Bus& operator=(const UDisks2Bus&) = delete;

    bool isConnected() const { return connection.isConnected(); }
    /// Why it is not connected.
    std::string trouble() const;

    QDBusMessage call(const std::string& path, const char* interface, const char* method,
        const QVariantList& arguments, std::chrono::milliseconds limit) const;
    /// Calls the slot, in the receiver's thread, after UDisks2 has reported a file system that came, went or
    /// is mounted elsewhere.
    void tellOfMounts(QObject& receiver, const char* slot);

private:
    QString name;
    QDBusConnection connection;
};

} // namespace platform
