#pragma once

#include <string>
#include <vector>

namespace platform {

/// The number "8:17" of the block device that a path leads to, whatever its name; empty when it leads to
/// none. Accesses neither a network server nor the device.
std::string blockNumber(const std::string& path);

/// The same of an open file.
std::string blockNumber(int file);

/// The numbers of the devices that a loop device is on: its file is one of them, or lies on one of them.
/// Empty when the node has no number or another one.
std::vector<std::string> loopBacking(const std::string& node, const std::string& number);

} // namespace platform
