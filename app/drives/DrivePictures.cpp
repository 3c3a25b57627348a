#include "app/drives/DrivePictures.h"

#include "app/drives/DriveLibrary.h"

#include <algorithm>
#include <utility>

namespace {

/// The first picture of a recording may still be dark.
constexpr double beginning = 1; // seconds

} // namespace

DrivePictures::DrivePictures(
    PreviewReader& pictures, const DriveLibrary& drives, std::function<void(size_t)> listener)
    : reader(pictures),
      library(drives),
      changed(std::move(listener))
{
    reader.listen(PreviewReader::Use::rows, [this](const PreviewRequest& request) { arrived(request); });
}

DrivePictures::~DrivePictures()
{
    reader.listen(PreviewReader::Use::rows, {});
}

void DrivePictures::lookAt(std::vector<size_t> drives, int pixels)
{
    onScreen = std::move(drives);
    width = pixels;
    lookAgain();
}

void DrivePictures::lookAgain()
{
    std::vector<PreviewRequest> wanted;
    for (const size_t drive : onScreen) {
        for (PreviewRequest& choice : choices(drive)) {
            const QImage* known = reader.picture(PreviewReader::Use::rows, choice);
            if (!known)
                wanted.push_back(std::move(choice));
            // What cannot be read gives way to the next choice.
            if (!known || !known->isNull())
                break;
        }
    }
    reader.want(PreviewReader::Use::rows, std::move(wanted));
}

QImage DrivePictures::picture(size_t drive) const
{
    for (const PreviewRequest& choice : choices(drive)) {
        const QImage* known = reader.picture(PreviewReader::Use::rows, choice);
        if (known && !known->isNull())
            return *known;
    }
    return {};
}

std::vector<PreviewRequest> DrivePictures::choices(size_t drive) const
{
    std::vector<PreviewRequest> requests;
    if (drive >= library.drives().size())
        return requests;
    const DriveFigures* figures = library.figures(drive);
    if (figures && !figures->moments.empty()) {
        const auto strongest = std::ranges::max_element(
            figures->moments, {}, [](const DriveMoment& moment) { return moment.moment.g; });
        requests.push_back({strongest->file, strongest->seconds, width});
    }
    requests.push_back({library.drives()[drive].takes.front().first.path(), beginning, width});
    return requests;
}

void DrivePictures::arrived(const PreviewRequest& request)
{
    for (const size_t drive : onScreen) {
        const auto wanted = choices(drive);
        if (std::ranges::find(wanted, request) != wanted.end())
            changed(drive);
    }
    lookAgain();
}
