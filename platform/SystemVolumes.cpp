#include "platform/SystemVolumes.h"

#include "platform/UDisks2DiskArbitration.h"

namespace platform {

std::unique_ptr<DiskArbitration> systemVolumes()
{
    return std::make_unique<UDisks2DiskArbitration>();
}

} // namespace platform
