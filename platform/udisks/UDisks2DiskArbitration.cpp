#include "platform/udisks/UDisks2DiskArbitration.h"

#include "common/Log.h"
#include "platform/udisks/UDisks2Bus.h"
#include "platform/udisks/UDisks2MountWatch.h"
#include "platform/udisks/UDisks2Objects.h"

#include <QDBusArgument>
#include <QDBusError>

#include <algorithm>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace platform {

namespace {

using std::chrono::steady_clock;

constexpr const char* filesystem = "org.freedesktop.UDisks2.Filesystem";

/// Nothing when the bus accepts the connection but does not answer in time. Qt has no timeout of its own.
std::shared_ptr<UDisks2Bus> openBus(const std::string& address, std::chrono::milliseconds limit)
{
    std::promise<std::shared_ptr<UDisks2Bus>> opened;
    auto bus = opened.get_future();
    std::thread([address, promise = std::move(opened)]() mutable {
        promise.set_value(std::make_shared<UDisks2Bus>(address));
    }).detach();
    return bus.wait_for(limit) == std::future_status::ready ? bus.get() : nullptr;
}

bool isError(const QDBusMessage& reply)
{
    return reply.type() != QDBusMessage::ReplyMessage;
}

bool isTimeout(const QDBusMessage& reply)
{
    return isError(reply) && QDBusError(reply).type() == QDBusError::NoReply;
}

std::string errorText(const QDBusMessage& reply)
{
    const QString message = reply.errorMessage();
    return (message.isEmpty() ? reply.errorName() : message).toStdString();
}

} // namespace

UDisks2DiskArbitration::UDisks2DiskArbitration()
    : UDisks2DiskArbitration(Surroundings{})
{
}

UDisks2DiskArbitration::UDisks2DiskArbitration(Surroundings where)
    : surroundings(std::move(where))
{
}

void UDisks2DiskArbitration::report(const std::string& trouble)
{
    const std::lock_guard lock(reporting);
    if (std::exchange(reported, trouble) != trouble && !trouble.empty())
        logFormat("cannot list the volumes: %s", trouble.c_str());
}

BlockDevices UDisks2DiskArbitration::blockDevices()
{
    if (steady_clock::now() < silentUntil.load())
        return {};
    const auto bus = openBus(surroundings.busAddress, surroundings.limit);
    if (!bus) {
        silentUntil = steady_clock::now() + surroundings.pause;
        report("the system bus does not answer");
        return {};
    }
    if (!bus->isConnected()) {
        report(bus->trouble());
        return {};
    }
    const QDBusMessage reply = bus->call("/org/freedesktop/UDisks2", "org.freedesktop.DBus.ObjectManager",
        "GetManagedObjects", {}, surroundings.limit);
    if (isError(reply) || reply.signature() != QLatin1String("a{oa{sa{sv}}}")) {
        if (isTimeout(reply))
            silentUntil = steady_clock::now() + surroundings.pause;
        report("UDisks2 cannot be asked: " + (isError(reply) ? errorText(reply) : "not its kind of answer"));
        return {};
    }
    report({});
    BlockDevices devices = platform::blockDevices(qdbus_cast<UDisks2Objects>(reply.arguments().constFirst()));
    addKernelFacts(devices, surroundings.proc, surroundings.sys);
    return devices;
}

std::vector<VolumeDescription> UDisks2DiskArbitration::mountedVolumes()
{
    return describedVolumes(blockDevices());
}

std::vector<VolumeDescription> UDisks2DiskArbitration::formattableVolumes()
{
    return platform::formattableVolumes(blockDevices());
}

std::string UDisks2DiskArbitration::trouble()
{
    const std::lock_guard lock(reporting);
    return reported;
}

std::string UDisks2DiskArbitration::setVolumeName(const std::string& mountPath, const std::string& name)
{
    const BlockDevices devices = blockDevices();
    const std::vector<VolumeDescription> volumes = describedVolumes(devices);
    const auto volume = std::ranges::find(volumes, mountPath, &VolumeDescription::mountPath);
    const Block* const block = devices.mountedAt(mountPath);
    if (!block || volume == volumes.end())
        return "no volume is mounted at " + mountPath;
    if (!volume->removable.value_or(false))
        return mountPath + " is not removable";
    if (block->mountPoints.size() > 1)
        return mountPath + " is mounted elsewhere, too";

    const auto bus = openBus(surroundings.busAddress, surroundings.limit);
    if (!bus || !bus->isConnected())
        return bus ? bus->trouble() : "the system bus does not answer";
    const auto act = [&](const char* method, QVariantList arguments) {
        // A password prompt would take longer than the limit.
        arguments << QVariant(QVariantMap{{QStringLiteral("auth.no_user_interaction"), true}});
        const QDBusMessage reply =
            bus->call(block->object, filesystem, method, arguments, surroundings.actionLimit);
        return isError(reply) ? std::string(method) + ": " + errorText(reply) : std::string();
    };
    if (std::string trouble = act("Unmount", {}); !trouble.empty())
        return trouble;
    std::string trouble = act("SetLabel", {QString::fromStdString(name)});
    if (const std::string unmounted = act("Mount", {}); !unmounted.empty())
        trouble += (trouble.empty() ? "" : "; ") + unmounted;
    return trouble;
}

std::unique_ptr<MountWatch> UDisks2DiskArbitration::watchMounts(std::function<void()> changed)
{
    return std::make_unique<UDisks2MountWatch>(surroundings.busAddress, std::move(changed));
}

} // namespace platform
