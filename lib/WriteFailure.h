#pragma once

#include "common/FilePlace.h"

#include <QString>

/// The message, with our own reasons in the user's language; the system's messages are not translated.
QString inUsersWords(QString words);

/// What the user reads when a file could not be written: nothing was saved, and why.
/// `otherwise` is the key of the text for every other reason.
QString writeFailureText(
    FileError error, const std::string& path, const char* otherwise = "msg.write_protected_disk");
