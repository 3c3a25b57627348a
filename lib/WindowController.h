#pragma once

#include <functional>

class QWidget;

/// A secondary window and its controller: modeless, on the main thread, gone with its controller.
class WindowController {
public:
    virtual ~WindowController() = default;

    /// Loads the window the first time; brings it forward.
    virtual void showWindow() = 0;
    virtual QWidget& window() = 0;
    /// Does the work, which may destroy this controller. With unsaved changes the user is asked first, and
    /// may cancel it.
    virtual void letGo(std::function<void()> work) { work(); }
};
