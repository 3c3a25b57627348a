#pragma once

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace platform {

/// The desktop's file panels. They are modal to their window and never block the event loop:
/// the answer comes later on the main thread, nothing when the user cancelled. Paths are the file
/// system's bytes.
class Panels {
public:
    using Answer = std::function<void(std::optional<std::string> path)>;

    virtual ~Panels() = default;

    /// Choose one existing folder.
    virtual void chooseFolder(QWidget& window, const std::string& title, Answer answer) = 0;
};

} // namespace platform
