#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

class QWidget;

namespace platform {

/// Alert sheets: warning style, modal to their window, never blocking the event loop.
class Alerts {
public:
    virtual ~Alerts() = default;

    /// `title` is the message text, `message` the informative text below it; one "OK" button.
    /// `dismissed` may be empty; it is dropped when the window goes away first.
    virtual void alertSheet(QWidget& window, const std::string& title, const std::string& message,
        std::function<void()> dismissed) = 0;

    /// The same with these buttons; `answered` gets the number of the one pressed. The last one is also meant
    /// by Escape and by closing the sheet, and is the one that Return presses. The result takes the sheet
    /// away without an answer; it does nothing once there is one.
    virtual std::function<void()> ask(QWidget& window, const std::string& title, const std::string& message,
        const std::vector<std::string>& buttons, std::function<void(size_t)> answered) = 0;
};

} // namespace platform
