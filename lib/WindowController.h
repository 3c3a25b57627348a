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
    /// Does the work, which may end this controller, unless the user has something here to keep: then the
    /// user is asked, and the work is done after the answer or not at all.
    virtual void letGo(std::function<void()> work) { work(); }
};
