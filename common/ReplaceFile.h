#pragma once

#include "common/FilePlace.h"

#include <string_view>

/// Replaces a file's contents, or creates it, so that a reader finds the old or the new contents and never a
/// mixture, also when the machine stops at any moment: written beside it, synced, renamed, the folder synced,
/// read back from the medium and compared. Where no file can be made beside it (and only there), a file of
/// the same length is written in place. What is neither a regular file nor missing is refused.
/// After a failure nothing is left beside the file. Before the rename it is as it was, or after a failed
/// write in place written again as it was, if that can be done; after the rename nothing is taken back: what
/// is there may be another program's by then. Callable from any thread.
[[nodiscard]] FileError replaceFile(const FilePlace& place, std::string_view contents);
