#include "fuzz/Require.h"
#include "platform/udisks/UDisks2Objects.h"

namespace {

using Words = std::array<const char*, 8>;

constexpr Words interfaces{"Block", "Block", "Drive", "Filesystem", "Partition", "Swapspace", "Loop", "Job"};
constexpr std::array<const char*, 26> names{"Device", "Drive", "Table", "CryptoBackingDevice", "MDRaid",
    "MDRaidMember", "BackingFile", "IdType", "IdUUID", "IdLabel", "Size", "ReadOnly", "HintSystem", "Active",
    "MountPoints", "ConnectionBus", "Vendor", "Model", "Media", "MediaCompatibility", "MediaRemovable",
    "TimeMediaDetected", "Removable", "Ejectable", "Id", "Serial"};

/// A property of any type, its bytes up to the next line feed.
QVariant nextValue(std::string_view& rest)
{
    const unsigned char type = nextByte(rest);
    const std::string_view text = nextPart(rest, '\n');
    const QByteArray bytes(text.data(), static_cast<qsizetype>(text.size()));
    switch (type % 7) {
    case 0:
        return bytes + '\0';
    case 1:
        return QString::fromUtf8(bytes);
    case 2:
        return QVariant::fromValue(QDBusObjectPath("/o" + QString::number(type / 7)));
    case 3:
        return bytes.toULongLong();
    case 4:
        return type > 127;
    case 5:
        return QStringList{QString::fromUtf8(bytes), QStringLiteral("flash_sd")};
    default:
        return QVariant();
    }
}

} // namespace

/// An answer of the disk service: objects, their interfaces and properties by bytes.
void fuzz(std::string_view input)
{
    std::string_view rest = input.substr(0, 4096);
    platform::UDisks2Objects objects;
    qsizetype blocks = 0;
    while (!rest.empty()) {
        auto& object = objects[QDBusObjectPath("/o" + QString::number(nextByte(rest) % 16))];
        const QString interface = QStringLiteral("org.freedesktop.UDisks2.")
            + QLatin1String(interfaces[nextByte(rest) % interfaces.size()]);
        const QString name = QLatin1String(names[nextByte(rest) % names.size()]);
        object[interface][name] = nextValue(rest);
    }
    for (const auto& object : objects)
        blocks += object.contains(QStringLiteral("org.freedesktop.UDisks2.Block"));
    const platform::BlockDevices devices = platform::blockDevices(objects);
    require(static_cast<qsizetype>(devices.blocks.size()) == blocks);
    for (const platform::Block& block : devices.blocks)
        require(block.device.find('\0') == block.device.npos && block.object != "/");
    require(platform::describedVolumes(devices).size() <= devices.blocks.size());
}
