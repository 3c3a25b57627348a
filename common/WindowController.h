#pragma once

class QWidget;

/// A secondary window and its controller: modeless, on the main thread, gone with its controller.
class WindowController {
public:
    virtual ~WindowController() = default;

    /// Loads the window the first time; brings it forward.
    virtual void showWindow() = 0;
    virtual QWidget& window() = 0;
};
