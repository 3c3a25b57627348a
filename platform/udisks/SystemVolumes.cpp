#include "platform/udisks/SystemVolumes.h"

#include "platform/udisks/UDisks2DiskArbitration.h"

namespace platform {

std::unique_ptr<DiskArbitration> systemVolumes()
{
    return std::make_unique<UDisks2DiskArbitration>();
}

} // namespace platform
