#pragma once

#include "tests/support/PrivateBus.h"

#include <QDBusObjectPath>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <memory>
#include <mutex>
#include <string>

/// UDisks2 as far as the program uses it, on a private bus: a volume is mounted at its label, so that a new
/// label moves it at the next mount, and every change of its mounts is told. It answers from a thread of its
/// own, so that a test may wait for an answer; every member may be called at any time.
class MockUDisks2 {
public:
    /// What lies in one drive. A device whose name ends in "1" is the first
    /// partition of the drive, otherwise it is the whole of it.
    struct Card {
        std::string device = "sdb1";
        std::string label = "ZAVIK";
        std::string mountPath = "/run/media/driver/ZAVIK"; // empty: not mounted
        uint64_t size = 1'977'614'336;
        std::string vendor = "Generic";
        std::string model = "Card Reader";
        std::string uuid = "5A41-5649";
    };
    enum class Answer { right, failure, none };

    MockUDisks2();
    ~MockUDisks2();

    std::string busAddress() const { return bus.address().toStdString(); }

    /// The drive, the whole device and the partition, if it is one.
    void add(const Card& card);
    /// A block device without a drive: "dm-0", "loop0".
    void addBlock(const std::string& device);
    /// Interfaces without the prefix: "Block", "Partition", "Filesystem", "Swapspace"; of the device, or of
    /// its drive when the interface is "Drive".
    void set(const std::string& device, const QString& interface, const QString& property, QVariant value);
    void setMountPoints(const std::string& device, const QStringList& paths);
    static QDBusObjectPath objectOf(const std::string& device);

    /// How a method ("GetManagedObjects", "Mount", "Unmount", "SetLabel") is answered from now on.
    void answer(const QString& method, Answer kind);
    /// "Unmount sdb1", "SetLabel sdb1 ZAVIK", "Mount sdb1", in the order of the calls.
    QStringList calls() const;

private:
    class Service;
    PrivateBus bus;
    std::unique_ptr<Service> service;
};
