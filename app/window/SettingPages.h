#pragma once

#include "settings/window/SettingTools.h"

/// The settings window's pages and tools, put together.
SettingTools settingTools();
