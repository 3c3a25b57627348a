#include "cardtools/drivelog/DriveLogFormat.h"

#include "common/Text.h"

const DriveLogFormat* driveLogFormatOf(std::string_view path)
{
    for (const DriveLogFormat* format : {&flashDataFormat, &obdDriveFormat}) {
        const std::string ending = "." + std::string(format->fileType);
        if (path.size() > ending.size() && asciiLower(path.substr(path.size() - ending.size())) == ending)
            return format;
    }
    return nullptr;
}
