#pragma once

/// From now on assistive technology sees a strip as a slider in seconds. Called before the first one is made;
/// further calls do nothing.
void installDriveStripAccess();
