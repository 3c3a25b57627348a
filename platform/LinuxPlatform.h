#pragma once

#include "platform/CupsPrintSession.h"
#include "platform/Platform.h"
#include "platform/QtDispatcher.h"
#include "platform/QtPanels.h"
#include "platform/QtScreens.h"
#include "platform/QtScriptRunner.h"
#include "platform/QtUserDefaults.h"

namespace platform {

/// The desktop as it is. Created on the main thread after the application object.
class LinuxPlatform {
public:
    /// A folder given here takes the part of the camera's card, before the mounted volumes.
    explicit LinuxPlatform(const std::optional<std::string>& cardFolder = {});
    ~LinuxPlatform();

    Platform& platform() { return pieces; }

private:
    std::unique_ptr<QtDispatcher> dispatcher = std::make_unique<QtDispatcher>();
    QtPanels panels;
    QtAlerts alerts;
    QtUserDefaults defaults;
    QtScreens screens{defaults};
    CupsPrintSession printing{*dispatcher};
    QtScriptRunner scripts;
    std::unique_ptr<DiskArbitration> disks;
    Platform pieces;
};

/// Prepares the process for the layer; before anything else of it is used, after the application object.
void initialiseLayer();

} // namespace platform
