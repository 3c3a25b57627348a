#pragma once

#include "settings/record/FileData.h"

#include <string>

inline std::string bytesOf(const _FILEDATA& record)
{
    return {reinterpret_cast<const char*>(&record), sizeof record};
}
