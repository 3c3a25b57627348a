#include "app/drives/DriveLibrary.h"

#include "media/RecordingLength.h"

#include <algorithm>
#include <utility>

DriveLibrary::DriveLibrary(platform::Dispatcher& queues, Told listener)
    : dispatcher(queues),
      told(std::move(listener))
{
}

DriveLibrary::~DriveLibrary()
{
    stop.request_stop();
}

void DriveLibrary::setRecordings(std::vector<ZVKMedia> recordings)
{
    stop.request_stop();
    stop = std::stop_source();
    reading.renew();
    found.clear();
    known.clear();
    places.clear();
    wanted.clear();
    readingFigures = false;
    readingLengths = !recordings.empty();
    told.listed();
    if (!readingLengths)
        return;
    dispatcher.inBackgroundThen(
        [medias = std::move(recordings), token = stop.get_token()] {
            return drivesOf(medias, [&](const ZVKMedia& media) {
                return token.stop_requested() ? std::nullopt : recordingLengthOfFile(media.path());
            });
        },
        reading.guarded([this](std::vector<Drive> drives) { drivesFound(std::move(drives)); }));
}

void DriveLibrary::drivesFound(std::vector<Drive> drives)
{
    readingLengths = false;
    found = std::move(drives);
    known.resize(found.size());
    findPlaces();
    told.listed();
}

void DriveLibrary::movedTo(const std::string& from, const std::string& to)
{
    for (Drive& drive : found)
        moveTakes(drive.takes, from, to);
    findPlaces();
}

const DriveFigures* DriveLibrary::figures(size_t drive) const
{
    return drive < known.size() && known[drive] ? &*known[drive] : nullptr;
}

std::optional<size_t> DriveLibrary::driveOf(const std::string& path) const
{
    const auto place = places.find(path);
    return place == places.end() ? std::nullopt : std::optional(place->second.drive);
}

std::optional<bool> DriveLibrary::hasImpact(const std::string& path) const
{
    const auto place = places.find(path);
    if (place == places.end())
        return readingLengths ? std::nullopt : std::optional(false);
    const DriveFigures* read = figures(place->second.drive);
    if (!read)
        return {};
    return std::ranges::any_of(read->moments, [&](const DriveMoment& moment) {
        return moment.take == place->second.take && moment.moment.kind == Moment::Kind::impact;
    });
}

void DriveLibrary::findPlaces()
{
    places.clear();
    for (size_t drive = 0; drive < found.size(); ++drive) {
        for (size_t take = 0; take < found[drive].takes.size(); ++take) {
            const Take& both = found[drive].takes[take];
            places[both.first.path()] = {drive, take};
            if (both.rear)
                places[both.rear->path()] = {drive, take};
        }
    }
}

void DriveLibrary::lookAt(std::vector<size_t> drives)
{
    wanted = std::move(drives);
    readNext();
}

void DriveLibrary::readNext()
{
    if (readingFigures)
        return;
    const auto next =
        std::ranges::find_if(wanted, [&](size_t drive) { return drive < known.size() && !known[drive]; });
    if (next == wanted.end())
        return;
    readingFigures = true;
    dispatcher.inBackgroundThen(
        [drive = found[*next], token = stop.get_token()] {
            DriveFigures figures = figuresOf(drive, token);
            figures.track.clear();
            return figures;
        },
        reading.guarded(
            [this, drive = *next](DriveFigures figures) { figuresRead(drive, std::move(figures)); }));
}

void DriveLibrary::figuresRead(size_t drive, DriveFigures figures)
{
    readingFigures = false;
    known[drive] = std::move(figures);
    told.figured(drive);
    readNext();
}
