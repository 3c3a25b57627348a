#pragma once

#include "platform/Panels.h"

#include <QByteArray>
#include <QRect>

class QFileDialog;
class QWidget;

namespace platform {

class ShownFolders;

/// What a file panel is to show. Titles are UTF-8, paths and names the file system's bytes.
struct PanelRequest {
    enum class Kind : quint8 { folder, file, save };
    Kind kind = Kind::folder;
    SavePanel
        panel; // of which a folder and a file have the title and the type; its folder is where it starts
    std::string language = "en";
    /// The window that asks, for the window manager, and where it is on the screen.
    quint64 window = 0;
    QRect place = {};

    [[nodiscard]] QByteArray bytes() const;
    /// Nothing when these are not the bytes of a request.
    static std::optional<PanelRequest> parsed(const QByteArray& bytes);
};

/// A panel that is not on screen yet; it deletes itself when it is closed. Looks at the disk on this thread,
/// from here on. In the documents where there is no folder or it cannot be shown.
QFileDialog& makeFilePanel(const PanelRequest& request, ShownFolders& folders, QWidget* parent);

/// What the panel answers with when it is accepted, nothing when nothing is chosen.
std::optional<std::string> chosenPath(const QFileDialog& panel, const ShownFolders& folders);

/// A process of its own for one panel, which may hang together with the disk that it shows: reads a request
/// from the standard input (its length in 8 bytes in the machine's order, then its bytes) and writes to the
/// standard output: a dot at once and twice a second as a sign of life, then the answer between two zero
/// bytes: a path, empty when nothing is chosen. Ends the process with the panel or when the input ends. After
/// the application object.
[[noreturn]] void runFilePanel();

} // namespace platform
