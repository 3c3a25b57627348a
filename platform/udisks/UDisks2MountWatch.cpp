#include "platform/udisks/UDisks2MountWatch.h"

#include "platform/udisks/UDisks2Bus.h"

#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace platform {

struct UDisks2MountWatch::Connection {
    std::mutex mutex;
    UDisks2MountWatch* watch = nullptr; // none once it is gone
    std::shared_ptr<UDisks2Bus> bus;
};

UDisks2MountWatch::UDisks2MountWatch(const std::string& busAddress, std::function<void()> mountsChanged)
    : changed(std::move(mountsChanged)),
      connection(std::make_shared<Connection>())
{
    connection->watch = this;
    // Connecting blocks on a bus that accepts but does not answer.
    std::thread([busAddress, here = connection] {
        auto bus = std::make_shared<UDisks2Bus>(busAddress);
        const std::lock_guard lock(here->mutex);
        if (!here->watch || !bus->isConnected())
            return;
        bus->tellOfMounts(*here->watch, SLOT(told()));
        here->bus = std::move(bus);
        // Mounts may have changed before the connection was made.
        QMetaObject::invokeMethod(here->watch, &UDisks2MountWatch::told, Qt::QueuedConnection);
    }).detach();
}

UDisks2MountWatch::~UDisks2MountWatch()
{
    const std::lock_guard lock(connection->mutex);
    connection->watch = nullptr;
    connection->bus.reset();
}

} // namespace platform
