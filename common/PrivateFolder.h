#pragma once

#include <string>

/// Makes a folder of a new, unique name in the system's temporary folder that only this user can enter.
/// Empty when that fails; then `why` holds the system's message.
std::string makePrivateFolder(std::string& why);
