#include "tests/support/MockUDisks2.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVirtualObject>
#include <QThread>

namespace {

using Interfaces = QMap<QString, QVariantMap>;
using Objects = QMap<QDBusObjectPath, Interfaces>;

const QString root = QStringLiteral("/org/freedesktop/UDisks2");
const QString prefix = QStringLiteral("org.freedesktop.UDisks2.");

QByteArray bytes(const std::string& text)
{
    return QByteArray::fromStdString(text + '\0');
}

QVariant object(const QString& path)
{
    return QVariant::fromValue(QDBusObjectPath(path));
}

std::string wholeDevice(const std::string& device)
{
    if (!device.ends_with('1'))
        return device;
    return device.substr(0, device.size() - (device.ends_with("p1") ? 2 : 1));
}

QDBusObjectPath drivePath(const std::string& device)
{
    return QDBusObjectPath(root + "/drives/Reader_" + QString::fromStdString(wholeDevice(device)));
}

Interfaces emptyBlock(const std::string& device)
{
    return {{prefix + "Block",
        {{"Device", bytes("/dev/" + device)}, {"PreferredDevice", bytes("/dev/" + device)},
            {"DeviceNumber", qulonglong(0)}, {"Id", QString()}, {"IdLabel", QString()}, {"IdType", QString()},
            {"IdUsage", QString()}, {"IdUUID", QString()}, {"Size", qulonglong(0)}, {"ReadOnly", false},
            {"HintSystem", false}, {"HintIgnore", false}, {"Drive", object("/")}, {"MDRaid", object("/")},
            {"MDRaidMember", object("/")}, {"CryptoBackingDevice", object("/")}}}};
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
        objects[QDBusObjectPath(root + "/Manager")] = {{prefix + "Manager", {{"Version", "2.9.4"}}}};
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
    std::map<std::string, QByteArrayList> lastMountPoints;
    QMap<QString, Answer> answers;
    QStringList calls;
    std::function<QString(const QString&, const std::string&)> action;

private:
    QDBusMessage reply(const QDBusMessage& message);
    QDBusMessage filesystemReply(const QDBusMessage& message);
    QDBusMessage propertiesReply(const QDBusMessage& message);

    QString name;
    QThread thread;
};

bool MockUDisks2::Service::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    Answer kind;
    {
        const std::lock_guard lock(mutex);
        kind = answers.value(message.member(), Answer::right);
    }
    if (kind == Answer::failure)
        connection.send(message.createErrorReply(prefix + "Error.Failed", message.member() + " went wrong"));
    else if (kind == Answer::right)
        connection.send(reply(message));
    return true;
}

QDBusMessage MockUDisks2::Service::reply(const QDBusMessage& message)
{
    if (message.member() == "GetManagedObjects") {
        const std::lock_guard lock(mutex);
        return message.createReply(QVariant::fromValue(objects));
    }
    if (message.interface() == prefix + "Filesystem")
        return filesystemReply(message);
    if (message.interface() == "org.freedesktop.DBus.Properties")
        return propertiesReply(message);
    return message.createErrorReply(QDBusError::UnknownMethod, message.member());
}

QDBusMessage MockUDisks2::Service::propertiesReply(const QDBusMessage& message)
{
    const std::lock_guard lock(mutex);
    const QString interface = message.arguments().value(0).toString();
    const QVariantMap properties = objects.value(QDBusObjectPath(message.path())).value(interface);
    if (message.member() == "GetAll")
        return message.createReply(properties);
    const QVariant value = properties.value(message.arguments().value(1).toString());
    if (!value.isValid())
        return message.createErrorReply(QDBusError::UnknownProperty, "no such property");
    return message.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QDBusMessage MockUDisks2::Service::filesystemReply(const QDBusMessage& message)
{
    const QString method = message.member();
    const std::string device = message.path().section('/', -1).toStdString();
    std::function<QString(const QString&, const std::string&)> before;
    {
        const std::lock_guard lock(mutex);
        const QString label =
            method == "SetLabel" ? ' ' + message.arguments().value(0).toString() : QString();
        calls << method + ' ' + QString::fromStdString(device) + label;
        if (!objects.contains(QDBusObjectPath(message.path())))
            return message.createErrorReply(QDBusError::UnknownObject, "no such object");
        before = method == "SetLabel" ? nullptr : action;
    }
    if (const QString trouble = before ? before(method, device) : QString(); !trouble.isEmpty())
        return message.createErrorReply(prefix + "Error.Failed", trouble);

    const std::lock_guard lock(mutex);
    Interfaces& block = objects[QDBusObjectPath(message.path())];
    QVariant& mountPoints = block[prefix + "Filesystem"]["MountPoints"];
    if (method == "SetLabel") {
        block[prefix + "Block"]["IdLabel"] = message.arguments().value(0);
    } else if (method == "Unmount" && mountPoints.value<QByteArrayList>().isEmpty()) {
        return message.createErrorReply(prefix + "Error.NotMounted", "not mounted");
    } else if (method == "Unmount") {
        lastMountPoints[device] = mountPoints.value<QByteArrayList>();
        mountPoints = QVariant::fromValue(QByteArrayList());
    } else if (method == "Mount") {
        const QByteArrayList paths = lastMountPoints[device];
        mountPoints = QVariant::fromValue(paths);
        return message.createReply(QString::fromUtf8(paths.value(0).constData()));
    }
    return message.createReply();
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
    service->objects[objectOf(device)] = emptyBlock(device);
}

void MockUDisks2::add(const Card& card)
{
    const std::string whole = wholeDevice(card.device);
    addBlock(whole);
    addBlock(card.device);
    {
        const std::lock_guard lock(service->mutex);
        service->objects[drivePath(card.device)] = {{prefix + "Drive",
            {{"ConnectionBus", QString::fromStdString(card.bus)}, {"Media", QString()},
                {"MediaCompatibility", card.media}, {"MediaRemovable", card.mediaRemovable},
                {"Vendor", QString::fromStdString(card.vendor)},
                {"Model", QString::fromStdString(card.model)}, {"TimeMediaDetected", qulonglong(1)}}}};
        if (whole != card.device)
            service->objects[objectOf(card.device)][prefix + "Partition"] = {
                {"Number", 1u}, {"Table", QVariant::fromValue(objectOf(whole))}};
    }
    for (const std::string& device : {whole, card.device}) {
        set(device, "Block", "Drive", QVariant::fromValue(drivePath(device)));
        set(device, "Block", "Size", qulonglong(card.size));
    }
    set(card.device, "Block", "DeviceNumber", qulonglong(card.deviceNumber));
    set(card.device, "Block", "IdLabel", QString::fromStdString(card.label));
    set(card.device, "Block", "IdUsage", "filesystem");
    set(card.device, "Block", "IdType", "vfat");
    setMountPoints(card.device,
        card.mountPath.empty() ? QStringList() : QStringList(QString::fromStdString(card.mountPath)));
}

void MockUDisks2::remove(const std::string& device)
{
    const std::lock_guard lock(service->mutex);
    service->objects.remove(objectOf(device));
    service->objects.remove(objectOf(wholeDevice(device)));
    service->objects.remove(drivePath(device));
}

void MockUDisks2::set(
    const std::string& device, const QString& interface, const QString& property, QVariant value)
{
    const std::lock_guard lock(service->mutex);
    const QDBusObjectPath path = interface == "Drive" ? drivePath(device) : objectOf(device);
    service->objects[path][prefix + interface][property] = std::move(value);
}

QVariant MockUDisks2::get(const std::string& device, const QString& interface, const QString& property) const
{
    const std::lock_guard lock(service->mutex);
    const QDBusObjectPath path = interface == "Drive" ? drivePath(device) : objectOf(device);
    return service->objects.value(path).value(prefix + interface).value(property);
}

void MockUDisks2::setMountPoints(const std::string& device, const QStringList& paths)
{
    QByteArrayList list;
    for (const QString& path : paths)
        list << bytes(path.toStdString());
    set(device, "Filesystem", "MountPoints", QVariant::fromValue(list));
    const std::lock_guard lock(service->mutex);
    service->lastMountPoints[device] = list;
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

void MockUDisks2::onAction(std::function<QString(const QString&, const std::string&)> action)
{
    const std::lock_guard lock(service->mutex);
    service->action = std::move(action);
}
