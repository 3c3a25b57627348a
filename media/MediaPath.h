#pragma once

#include <string>
#include <string_view>

/// The path, absolute (against the current directory) and lexically normal: no ".", no "..", no doubled or
/// trailing slash. Links are not resolved; bytes that are not UTF-8 come through unchanged. No path stays
/// none.
std::string standardizedPath(std::string path);

/// The pieces of an absolute path without a trailing slash; views into it.
struct PathPieces {
    std::string_view dir; // without the last component; "/" for a file in the root
    std::string_view name; // the last component without its extension
    std::string_view extension; // after the component's last full stop, as written; empty without one
};

PathPieces piecesOfPath(std::string_view path);
