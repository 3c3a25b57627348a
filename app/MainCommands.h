#pragma once

#include "app/window/MainWindowControls.h"

#include <vector>

class ZVKAppDelegate;

/// All that the user can do in the main window, with buttons and keys.
std::vector<Command> mainCommands(ZVKAppDelegate& controller);
