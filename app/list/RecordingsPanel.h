#pragma once

#include "app/list/FilterBar.h"
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

/// The recordings of the open folder: their table and its selection, the scan's state as a text, and the
/// folder, which is followed when its volume is mounted elsewhere and closed while its card is formatted.
/// Main thread only; never accesses the folder there.
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
        /// Whether an impact was found in the recording; nothing while it was not read.
        std::function<std::optional<bool>(const ZVKMedia& media)> hasImpact;
        /// The filter needs to know that of all recordings.
        std::function<void()> needsImpacts;
    };

    /// Panels are the window's.
    RecordingsPanel(platform::Platform& desktop, QWidget& window, Ui::ListPanel& outlets, Told told);

    const ZVKMediaList& list() const { return *mediaList; }
    /// -1: none.
    int64_t selectedRow() const;
    void selectRow(int64_t row);

    /// Opens the filter, or closes it where it has the focus.
    void toggleFilter();
    /// `hasImpact` knows more.
    void impactsKnown();
    /// The nearest visible row after (1) or before (-1) it; -1 where there is none.
    int64_t visibleRow(int64_t from, int direction) const;

    void openMediaDirectoryDialog();
    void openMediaDirectory(const std::string& path);
    /// Opens the camera's card once it is found, unless a folder was opened meanwhile.
    void openCard();
    /// The dropped path may be no folder, and may lie on a slow card.
    void openIfFolder(const std::string& path);

    /// Shows in an empty list what it is doing or what the user can do; below the rows, what is missing or
    /// was not played.
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
    void showDays();
    void filterAgain();
    void scan(const std::string& path);
    void folderMoved(const std::string& from, const std::string& to);
    QStringList scanRemarks(const PlayRemarks& remarks) const;

    platform::Platform& desktop;
    QWidget& window;
    Ui::ListPanel& outlets;
    Told told;
    std::unique_ptr<ZVKMediaList> mediaList;
    MediaTableModel* mediaTable = nullptr;
    FilterBar* filterBar = nullptr;
    bool filtersSoon = false;
    bool scanning = false;
    /// The list's folder while its card is being formatted.
    std::optional<std::string> folderLetGo;
    PathFollower folderFollower;
    Life life;
};
