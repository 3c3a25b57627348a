#include "tests/support/MockUDisks2.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QThread>

#include <algorithm>

namespace {

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

const QString root = QStringLiteral("/org/freedesktop/UDisks2");
const QString prefix = QStringLiteral("org.freedesktop.UDisks2.");

QByteArray bytes(const std::string& text)
{
    return QByteArray::fromStdString(text + '\0');
}

std::string wholeDevice(const std::string& device)
{
    return device.substr(0, device.size() - (device.ends_with('1') ? 1 : 0));
}

QDBusObjectPath drivePath(const std::string& device)
{
    return QDBusObjectPath(root + "/drives/Reader_" + QString::fromStdString(wholeDevice(device)));
}

} // namespace

class MockUDisks2::Service final : public QDBusVirtualObject {
public:
    explicit Service(const QString& address)
        : name("mock-udisks2-" + address)
    {
        qDBusRegisterMetaType<QByteArrayList>();
        qDBusRegisterMetaType<Interfaces>();
        qDBusRegisterMetaType<Objects>();
        thread.start();
        QDBusConnection connection = QDBusConnection::connectToBus(address, name);
        connection.registerVirtualObject(root, this, QDBusConnection::SubPath);
        moveToThread(&thread);
        connection.registerService(prefix.chopped(1));
    }
    ~Service() override
    {
        QDBusConnection::disconnectFromBus(name);
        thread.quit();
        thread.wait();
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

    mutable std::mutex mutex;
    Objects objects;
    std::map<std::string, QString> mountFolders; // where a device is mounted by its label
    QMap<QString, Answer> answers;
    QStringList calls;

    /// Mounts a device, or unmounts it, and tells everybody.
    void setMountPoints(const std::string& device, const QStringList& paths);

private:
    QDBusMessage reply(const QDBusMessage& message);
    QString newMountPoint(const std::string& device) const;

    QString name;
    QThread thread;
};

bool MockUDisks2::Service::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const std::lock_guard lock(mutex);
    const Answer kind = answers.value(message.member(), Answer::right);
    if (kind == Answer::failure)
        connection.send(message.createErrorReply(prefix + "Error.Failed", message.member() + " went wrong"));
    else if (kind == Answer::right)
        connection.send(reply(message));
    return true;
}

QDBusMessage MockUDisks2::Service::reply(const QDBusMessage& message)
{
    const QString method = message.member();
    if (method == "GetManagedObjects")
        return message.createReply(QVariant::fromValue(objects));
    if (message.interface() != prefix + "Filesystem")
        return message.createErrorReply(QDBusError::UnknownMethod, method);
    const std::string device = message.path().section('/', -1).toStdString();
    calls << method + ' ' + QString::fromStdString(device)
            + (method == "SetLabel" ? ' ' + message.arguments().value(0).toString() : QString());
    Interfaces& block = objects[QDBusObjectPath(message.path())];
    const bool isMounted = !block[prefix + "Filesystem"]["MountPoints"].value<QByteArrayList>().isEmpty();
    if (method == "SetLabel")
        block[prefix + "Block"]["IdLabel"] = message.arguments().value(0);
    else if (isMounted != (method == "Unmount"))
        return message.createErrorReply(prefix + "Error.Failed", method + " at the wrong time");
    else
        setMountPoints(device, isMounted ? QStringList() : QStringList(newMountPoint(device)));
    return message.createReply();
}

/// Named after the label, or after the UUID without one; with a number when that is taken.
QString MockUDisks2::Service::newMountPoint(const std::string& device) const
{
    const QVariantMap block = objects.value(objectOf(device)).value(prefix + "Block");
    const QString label = block["IdLabel"].toString();
    const QString path =
        mountFolders.at(device) + '/' + (label.isEmpty() ? block["IdUUID"].toString() : label);
    QByteArrayList taken;
    for (const Interfaces& other : objects)
        taken += other[prefix + "Filesystem"]["MountPoints"].value<QByteArrayList>();
    QString free = path;
    for (int number = 1; taken.contains(bytes(free.toStdString())); ++number)
        free = path + QString::number(number);
    return free;
}

void MockUDisks2::Service::setMountPoints(const std::string& device, const QStringList& paths)
{
    QByteArrayList list;
    for (const QString& path : paths)
        list << bytes(path.toStdString());
    if (!paths.isEmpty())
        mountFolders[device] = paths.front().section('/', 0, -2);
    const QVariant value = QVariant::fromValue(list);
    objects[objectOf(device)][prefix + "Filesystem"]["MountPoints"] = value;
    QDBusMessage signal = QDBusMessage::createSignal(
        objectOf(device).path(), "org.freedesktop.DBus.Properties", "PropertiesChanged");
    signal << prefix + "Filesystem" << QVariantMap{{"MountPoints", value}} << QStringList();
    QDBusConnection(name).send(signal);
}

MockUDisks2::MockUDisks2()
    : service(std::make_unique<Service>(bus.address()))
{
}

MockUDisks2::~MockUDisks2() = default;

QDBusObjectPath MockUDisks2::objectOf(const std::string& device)
{
    return QDBusObjectPath(root + "/block_devices/" + QString::fromStdString(device).replace('-', "_2d"));
}

void MockUDisks2::addBlock(const std::string& device)
{
    const std::lock_guard lock(service->mutex);
    const QVariant none = QVariant::fromValue(QDBusObjectPath("/"));
    service->objects[objectOf(device)] = {{prefix + "Block",
        {{"Device", bytes("/dev/" + device)}, {"IdLabel", QString()}, {"IdType", QString()},
            {"IdUUID", QString()}, {"Size", qulonglong(0)}, {"ReadOnly", false}, {"HintSystem", false},
            {"Drive", none}, {"MDRaid", none}, {"MDRaidMember", none}, {"CryptoBackingDevice", none}}}};
}

void MockUDisks2::add(const Card& card)
{
    const std::string whole = wholeDevice(card.device);
    addBlock(whole);
    addBlock(card.device);
    const std::pair<const char*, QVariant> drive[] = {{"ConnectionBus", "usb"}, {"MediaRemovable", true},
        {"Vendor", QString::fromStdString(card.vendor)}, {"Model", QString::fromStdString(card.model)},
        {"TimeMediaDetected", qulonglong(1)}};
    for (const auto& [property, value] : drive)
        set(card.device, "Drive", property, value);
    if (whole != card.device)
        set(card.device, "Partition", "Table", QVariant::fromValue(objectOf(whole)));
    for (const std::string& device : {whole, card.device}) {
        set(device, "Block", "Drive", QVariant::fromValue(drivePath(device)));
        set(device, "Block", "Size", qulonglong(card.size));
    }
    set(card.device, "Block", "IdLabel", QString::fromStdString(card.label));
    set(card.device, "Block", "IdUUID", QString::fromStdString(card.uuid));
    set(card.device, "Block", "IdType", "vfat");
    setMountPoints(card.device,
        card.mountPath.empty() ? QStringList() : QStringList(QString::fromStdString(card.mountPath)));
}

void MockUDisks2::set(
    const std::string& device, const QString& interface, const QString& property, QVariant value)
{
    const std::lock_guard lock(service->mutex);
    const QDBusObjectPath path = interface == "Drive" ? drivePath(device) : objectOf(device);
    service->objects[path][prefix + interface][property] = std::move(value);
}

void MockUDisks2::setMountPoints(const std::string& device, const QStringList& paths)
{
    const std::lock_guard lock(service->mutex);
    service->setMountPoints(device, paths);
}

void MockUDisks2::answer(const QString& method, Answer kind)
{
    const std::lock_guard lock(service->mutex);
    service->answers[method] = kind;
}

QStringList MockUDisks2::calls() const
{
    const std::lock_guard lock(service->mutex);
    return service->calls;
}
