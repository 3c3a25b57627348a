#pragma once

#include "platform/DiskArbitration.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>

namespace platform {

/// UDisks2's word that mounts have changed. The bus is connected to in the background; when there is none,
/// nothing is ever told. Made and destroyed on the main thread.
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
