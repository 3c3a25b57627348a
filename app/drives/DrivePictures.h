#pragma once

#include "app/previews/PreviewReader.h"

#include <cstddef>
#include <functional>
#include <vector>

class DriveLibrary;

/// A small picture of each drive that is on screen: its strongest moment when its moments are known and that
/// can be read, else how it begins. Main thread only.
class DrivePictures {
public:
    /// Both live longer. `changed` is called when the drive has another picture.
    DrivePictures(
        PreviewReader& reader, const DriveLibrary& library, std::function<void(size_t drive)> changed);
    ~DrivePictures();

    /// These are on screen, with pictures of that width in pixels; earlier ones are no longer read.
    void lookAt(std::vector<size_t> drives, int width);
    /// More is known of the drives.
    void lookAgain();
    /// Null while there is none.
    QImage picture(size_t drive) const;

private:
    /// What the drive's picture is to be, the best one first.
    std::vector<PreviewRequest> choices(size_t drive) const;
    void arrived(const PreviewRequest& request);

    PreviewReader& reader;
    const DriveLibrary& library;
    std::function<void(size_t)> changed;
    std::vector<size_t> onScreen;
    int width = 0;
};
