#pragma once

#include "cli/Streams.h"
#include "media/ZVKMediaList.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// The recordings in the folder; nothing, and a line on the error stream, when it is none.
std::optional<MediaScan> scanFolder(const std::string& folder, Streams streams);

/// Tells on the error stream which recordings could not be read, and what the scan left out; the exit code
/// that follows from it.
ExitCode scanResult(const MediaScan& scan, const std::string& folder, Streams streams,
    const std::vector<std::string>& unread = {});

} // namespace cli
