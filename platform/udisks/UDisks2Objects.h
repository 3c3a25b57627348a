#pragma once

#include "platform/disks/BlockDevices.h"

#include <QDBusObjectPath>
#include <QMap>
#include <QVariantMap>

namespace platform {

/// What UDisks2's object manager answers: object path, interface, property.
using UDisks2Objects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;

/// The blocks and drives among the objects; a property that is missing or of another type reads as empty.
/// Mounts, swaps and mappings come from the kernel and stay empty here.
BlockDevices blockDevices(const UDisks2Objects& objects);

/// Adds what the kernel says. `proc` and `sys` are where its file systems are mounted.
void addKernelFacts(BlockDevices& devices, const std::string& proc, const std::string& sys);

} // namespace platform
