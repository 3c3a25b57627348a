#pragma once

#include <functional>
#include <string>

class QWidget;

namespace platform {

/// Alert sheets: warning style, one "OK" button, modal to their window, never blocking the event loop.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// `title` is the message text, `message` the informative text below it.
    /// `dismissed` may be empty; it is dropped when the window goes away first.
    virtual void alertSheet(QWidget& window, const std::string& title, const std::string& message,
        std::function<void()> dismissed) = 0;
};

} // namespace platform
