#pragma once

#include "app/drives/DriveLibrary.h"
#include "app/drives/DrivePictures.h"

#include <QObject>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class DriveListModel;
class MomentsModel;

namespace Ui {
class DrivesPanel;
}

/// The drives of the folder that is open: a row each, whose figures are read while it is on screen. Main
/// thread only.
class DrivesPanel {
public:
    struct Told {
        /// Enter or a double click on a drive.
        std::function<void(size_t drive)> chosen;
        /// A double click on a moment of a drive.
        std::function<void(size_t drive, const DriveMoment& moment)> momentChosen;
        /// The figures of a drive are known now.
        std::function<void(size_t drive)> figured;
        /// The drives are others, or their lengths.
        std::function<void()> changed;
    };

    DrivesPanel(
        platform::Dispatcher& dispatcher, Ui::DrivesPanel& outlets, PreviewReader& previews, Told told);

    const DriveLibrary& library() const { return drives; }
    /// Of another scan, sorted.
    void setRecordings(std::vector<ZVKMedia> recordings);
    void movedTo(const std::string& from, const std::string& to);
    /// The figures of all drives are wanted, after those that are seen.
    void readAll();
    /// Reads what rows that are seen have to show, once more where that is no longer known.
    void lookAtVisible();
    void setShowsMiles(bool miles);
    /// Whether Enter is for this panel: one of its lists has the focus.
    bool hasFocus() const;
    /// What Enter does: plays the current drive, or goes to the current moment.
    void chooseCurrent();

private:
    void listed();
    void measured();
    void figured(size_t drive);
    void showMoments();
    void noteCurrent();
    std::optional<size_t> currentDrive() const;
    void chooseMoment(int row);

    Ui::DrivesPanel& outlets;
    Told told;
    DriveLibrary drives;
    DrivePictures pictures;
    DriveListModel* model;
    MomentsModel* moments;
    // The drives of these recordings are current and at the top, also when drives are told anew.
    std::string currentPath;
    std::string topPath;
    int topOffset = 0; // in points
    bool readsAll = false;
};
