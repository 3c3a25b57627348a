#include "platform/udisks/UDisks2Objects.h"

#include "common/FilePlace.h"

#include <QDBusArgument>

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace platform {

namespace {

using Interfaces = QMap<QString, QVariantMap>;

QVariantMap interfaceOf(const Interfaces& interfaces, const char* name)
{
    return interfaces.value(QLatin1String("org.freedesktop.UDisks2.") + QLatin1String(name));
}

std::string text(const QVariantMap& properties, const char* name)
{
    return properties.value(QLatin1String(name)).toString().trimmed().toStdString();
}

/// UDisks2 writes "/" for no object.
std::string object(const QVariantMap& properties, const char* name)
{
    const std::string path =
        properties.value(QLatin1String(name)).value<QDBusObjectPath>().path().toStdString();
    return path == "/" ? std::string() : path;
}

/// A path in bytes, ended by a NUL.
std::string path(QByteArray bytes)
{
    if (const qsizetype end = bytes.indexOf('\0'); end >= 0)
        bytes.truncate(end);
    return bytes.toStdString();
}

std::vector<std::string> paths(const QVariant& value)
{
    std::vector<std::string> result;
    if (!value.canConvert<QDBusArgument>())
        return result;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("aay"))
        return result;
    for (const QByteArray& bytes : qdbus_cast<QByteArrayList>(argument))
        result.push_back(path(bytes));
    return result;
}

std::string deviceName(const QVariantMap& block)
{
    const std::string device = path(block.value(QStringLiteral("Device")).toByteArray());
    return device.starts_with("/dev/") ? device.substr(5) : device;
}

Block block(const std::string& objectPath, const Interfaces& interfaces)
{
    const QVariantMap properties = interfaceOf(interfaces, "Block");
    Block result;
    result.object = objectPath;
    result.device = deviceName(properties);
    result.drive = object(properties, "Drive");
    result.table = object(interfaceOf(interfaces, "Partition"), "Table");
    result.cryptoBacking = object(properties, "CryptoBackingDevice");
    result.raid = object(properties, "MDRaid");
    result.raidMember = object(properties, "MDRaidMember");
    result.backingFile =
        path(interfaceOf(interfaces, "Loop").value(QStringLiteral("BackingFile")).toByteArray());
    result.type = text(properties, "IdType");
    result.uuid = text(properties, "IdUUID");
    result.label = properties.value(QStringLiteral("IdLabel")).toString().toStdString();
    result.size = properties.value(QStringLiteral("Size")).toULongLong();
    result.readOnly = properties.value(QStringLiteral("ReadOnly")).toBool();
    result.systemHint = properties.value(QStringLiteral("HintSystem")).toBool();
    result.isSwap = interfaceOf(interfaces, "Swapspace").value(QStringLiteral("Active")).toBool();
    result.isFilesystem = interfaces.contains(QStringLiteral("org.freedesktop.UDisks2.Filesystem"));
    result.isContainer = interfaceOf(interfaces, "Partition").value(QStringLiteral("IsContainer")).toBool();
    result.mountPoints = paths(interfaceOf(interfaces, "Filesystem").value(QStringLiteral("MountPoints")));
    return result;
}

Drive drive(const std::string& objectPath, const Interfaces& interfaces)
{
    const QVariantMap properties = interfaceOf(interfaces, "Drive");
    Drive result;
    result.object = objectPath;
    result.bus = text(properties, "ConnectionBus");
    result.vendor = text(properties, "Vendor");
    result.model = text(properties, "Model");
    result.serial = text(properties, "Serial");
    result.medium = text(properties, "Media");
    for (const QString& medium : properties.value(QStringLiteral("MediaCompatibility")).toStringList())
        result.media.push_back(medium.toStdString());
    result.mediaRemovable = properties.value(QStringLiteral("MediaRemovable")).toBool();
    result.mediaDetected = properties.value(QStringLiteral("TimeMediaDetected")).toULongLong();
    return result;
}

} // namespace

BlockDevices blockDevices(const UDisks2Objects& objects)
{
    BlockDevices devices;
    for (auto one = objects.begin(); one != objects.end(); ++one) {
        const std::string objectPath = one.key().path().toStdString();
        if (one->contains(QStringLiteral("org.freedesktop.UDisks2.Block")))
            devices.blocks.push_back(block(objectPath, *one));
        if (one->contains(QStringLiteral("org.freedesktop.UDisks2.Drive")))
            devices.drives.push_back(drive(objectPath, *one));
    }
    std::ranges::sort(devices.blocks, {}, &Block::device);
    return devices;
}

void addKernelFacts(BlockDevices& devices, const std::string& proc, const std::string& sys)
{
    devices.mounts = parsedMounts(wholeFile(proc + "/self/mountinfo").value_or(""));
    devices.swaps = parsedSwaps(wholeFile(proc + "/swaps").value_or(""));
    for (Block& block : devices.blocks) {
        std::error_code none;
        for (const auto& slave :
            fs::directory_iterator(sys + "/class/block/" + block.device + "/slaves", none))
            block.slaves.push_back(slave.path().filename());
    }
}

} // namespace platform
