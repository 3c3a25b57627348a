#pragma once

#include <string>

/// Waits until all that was written to the folder's file system is on its medium. Empty on success, else what
/// the system said.
[[nodiscard]] std::string syncFileSystem(const std::string& folder);
