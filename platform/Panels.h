#pragma once

#include <functional>
#include <optional>
#include <string>

class QWidget;

namespace platform {

/// Asks where to save a file. The user may create folders in it.
struct SavePanel {
    std::string title;
    /// The proposed name.
    std::string name;
    /// Where the panel starts; the default place when empty.
    std::optional<std::string> folder;
    /// The only file type, without a dot ("csv"); a name without an ending gets it. Any name when empty.
    std::string type = {};
    /// The panel asks before it answers with a file that is already there.
    bool asksBeforeReplacing = false;
    bool hidesHiddenFiles = false;
};

/// Asks for one existing file.
struct OpenPanel {
    std::string title;
    /// The only file type, without a dot; any file when empty.
    std::string type = {};
};

/// The desktop's file panels. They are modal to their window and never block the event loop: the answer comes
/// later on the main thread, nothing when the user cancelled. Paths are the file system's bytes. By default a
/// panel starts on the camera's card, without one in the folder that was used last, otherwise in the
/// documents folder.
class Panels {
public:
    using Answer = std::function<void(std::optional<std::string> path)>;

    virtual ~Panels() = default;

    /// Choose one existing folder.
    virtual void chooseFolder(QWidget& window, const std::string& title, Answer answer) = 0;

    /// Choose one existing file to read.
    virtual void chooseFile(QWidget& window, const OpenPanel& panel, Answer answer) = 0;

    /// Choose the path of a file to write.
    virtual void chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer) = 0;
};

} // namespace platform
