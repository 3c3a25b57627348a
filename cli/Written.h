#pragma once

#include "cli/Streams.h"
#include "common/FilePlace.h"

#include <functional>
#include <string>
#include <string_view>

namespace cli {

/// The flag without which no link is followed to a file that is to be written.
constexpr std::string_view followLink = "--follow-link";

/// Runs the work on the file of that name while no other program of ours saves in its folder. A link is
/// refused, with the line that says where it leads, unless `followsLink`: then its target is meant.
ExitCode writtenTo(const std::string& path, bool followsLink, Streams streams,
    const std::function<ExitCode(const FilePlace&)>& work);

} // namespace cli
