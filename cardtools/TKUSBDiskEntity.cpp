#include "cardtools/TKUSBDiskEntity.h"

#include "cardtools/Volumes.h"

std::string TKUSBDiskEntity::displayString() const
{
    std::string text = "[" + formatByteCount(volumeSize) + "] " + volumeName + " ";
    if (deviceModel)
        text += "<" + *deviceModel + ">";
    return text;
}
