#pragma once

#include "platform/DiskArbitration.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>

namespace platform {

/// Reports changes of the mounts by UDisks2. The bus is connected to in the background; without a bus
/// nothing is reported. Made and destroyed on the main thread.
class UDisks2MountWatch final : public QObject, public MountWatch {
    Q_OBJECT

public:
    /// `busAddress` empty: the system bus.
    UDisks2MountWatch(const std::string& busAddress, std::function<void()> mountsChanged);
    ~UDisks2MountWatch() override;

private:
    struct Connection;

    Q_SLOT void told() { changed(); }

    const std::function<void()> changed;
    std::shared_ptr<Connection> connection;
};

} // namespace platform
