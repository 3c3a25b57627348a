#pragma once

#include "cardtools/volumes/PathFollower.h"
#include "common/Life.h"
#include "media/ZVKMediaList.h"
#include "platform/Platform.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class MediaTableModel;
class QTableView;
class QWidget;
struct PlayRemarks;

namespace Ui {
class ListPanel;
}

/// The recordings of the folder that is open: their table and its selection, the scan's state in plain words,
/// and the folder itself, which goes along when its volume is mounted elsewhere, and is let go of while its
/// card is formatted. Main thread only; nothing of the folder is touched on it.
class RecordingsPanel final : public ZVKMediaListDelegate {
public:
    struct Told {
        /// A folder is opened; `isSameAgain`: the one that is open.
        std::function<void(bool isSameAgain)> opening;
        /// The list holds the result of a scan.
        std::function<void()> listed;
        std::function<void(const std::string& from, const std::string& to)> moved;
        /// A double click on a row.
        std::function<void()> chosen;
    };

    /// Panels are the window's.
    RecordingsPanel(platform::Platform& desktop, QWidget& window, Ui::ListPanel& outlets, Told told);

    const ZVKMediaList& list() const { return *mediaList; }
    /// -1: none.
    int64_t selectedRow() const;
    void selectRow(int64_t row);

    void openMediaDirectoryDialog();
    void openMediaDirectory(const std::string& path);
    /// Opens the camera's card once it is found, unless a folder was opened meanwhile.
    void openCard();
    /// What was dropped may be no folder, and may lie on a card that takes its time.
    void openIfFolder(const std::string& path);

    /// Says in plain text what the list is doing, or what to do, while there is nothing in it; below its
    /// rows, what is not among them or was not played.
    void showListState(const PlayRemarks& remarks);

    /// The folder may lie on the volume that is mounted there.
    bool isInUse(const std::string& mountPath) const { return folderFollower.mayLieOn(mountPath); }
    /// The folder that is open, if it may lie there.
    std::optional<std::string> folderOn(const std::string& mountPath) const;
    /// Forgets the entries of a folder that may lie there, until the card was formatted.
    void letGoOf(const std::string& mountPath);
    /// Reads the folder again, or the card's root when the folder is gone, unless another one was opened
    /// meanwhile.
    void cardFormatted(const std::string& from, const std::string& to);

    void mediaListChanged(ZVKMediaList& list) override;

private:
    void initMediaListTableView();
    void scan(const std::string& path);
    void folderMoved(const std::string& from, const std::string& to);
    QStringList scanRemarks(const PlayRemarks& remarks) const;

    platform::Platform& desktop;
    QWidget& window;
    Ui::ListPanel& outlets;
    Told told;
    std::unique_ptr<ZVKMediaList> mediaList;
    MediaTableModel* mediaTable = nullptr;
    bool scanning = false;
    /// The list's folder while its card is being formatted.
    std::optional<std::string> folderLetGo;
    PathFollower folderFollower;
    Life life;
};
