#include "cardtools/volumes/TKUSBDiskEntity.h"

#include "common/ByteCount.h"

std::string TKUSBDiskEntity::displayString() const
{
    std::string text = "[" + formatByteCount(volumeSize) + "] " + volumeName + " ";
    if (deviceModel)
        text += "<" + *deviceModel + ">";
    return text;
}
