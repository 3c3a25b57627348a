#pragma once

#include "app/drives/DriveLibrary.h"

#include <QObject>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

class DriveListModel;

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
        /// The figures of a drive are known now.
        std::function<void(size_t drive)> figured;
    };

    DrivesPanel(platform::Dispatcher& dispatcher, Ui::DrivesPanel& outlets, Told told);

    const DriveLibrary& library() const { return drives; }
    /// Of another scan, sorted.
    void setRecordings(std::vector<ZVKMedia> recordings) { drives.setRecordings(std::move(recordings)); }
    void movedTo(const std::string& from, const std::string& to) { drives.movedTo(from, to); }
    void setShowsMiles(bool miles);
    /// The drive that plays; nothing for none.
    void selectDrive(std::optional<size_t> drive);

private:
    void listed();
    void figured(size_t drive);
    void lookAtVisible();

    Ui::DrivesPanel& outlets;
    Told told;
    DriveLibrary drives;
    DriveListModel* model;
};
