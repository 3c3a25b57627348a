#pragma once

#include <string>

class QImage;

namespace platform {

/// Writes a picture to a file in the format of the path's extension: ".jpg" and ".jpeg" (quality 95) or
/// ".png". The file is private to the user and appears whole or not at all: it replaces what this user had
/// there, a symbolic link itself rather than the file it leads to; other users' files and folders stay. False
/// when nothing was written.
bool writeVideoSnapshot(const QImage& picture, const std::string& path);

} // namespace platform
