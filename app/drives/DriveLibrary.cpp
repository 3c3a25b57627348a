#include "app/drives/DriveLibrary.h"

#include "media/RecordingLength.h"

#include <algorithm>
#include <utility>

namespace {

/// Counts for one whose length was not read yet.
constexpr std::chrono::minutes usualLength(1);
/// Drives are told anew after so much reading.
constexpr std::chrono::milliseconds readBudget(500);
constexpr std::chrono::seconds lookInterval(1);
constexpr int patienceForOneFile = 10; // looks
/// Each keeps a thread for as long as it hangs.
constexpr size_t mostHungFiles = 8;

bool hasSameTakes(const Drive& one, const Drive& other)
{
    return std::ranges::equal(
        one.takes, other.takes, {}, [](const Take& take) { return take.first.path(); },
        [](const Take& take) { return take.first.path(); });
}

} // namespace

DriveLibrary::DriveLibrary(platform::Dispatcher& queues, Told listener)
    : dispatcher(queues),
      told(std::move(listener))
{
}

DriveLibrary::~DriveLibrary()
{
    lengthReading.end();
    figureReading.end();
}

void DriveLibrary::Reading::begin()
{
    end();
    stop = std::stop_source();
    progress = std::make_shared<std::atomic<size_t>>(0);
    seen = 0;
    idleLooks = 0;
}

void DriveLibrary::Reading::end()
{
    stop.request_stop();
    life.renew();
}

bool DriveLibrary::Reading::hangs()
{
    const size_t now = *progress;
    idleLooks = std::exchange(seen, now) == now ? idleLooks + 1 : 0;
    return idleLooks >= patienceForOneFile;
}

void DriveLibrary::setRecordings(std::vector<ZVKMedia> listed)
{
    lengthReading.end();
    figureReading.end();
    recordings = std::make_shared<const std::vector<ZVKMedia>>(std::move(listed));
    lengths.clear();
    found.clear();
    measured.clear();
    known.clear();
    places.clear();
    wanted.clear();
    givenUp.clear();
    readingFigures = false;
    readingLengths = !recordings->empty();
    told.listed();
    if (readingLengths)
        readLengths({});
}

/// In the order in which they are wanted.
std::vector<std::string> DriveLibrary::unmeasured() const
{
    std::vector<std::string> order;
    const auto add = [&](const ZVKMedia& media) {
        if (!lengths.contains(media.path()))
            order.push_back(media.path());
    };
    for (const size_t drive : wanted) {
        if (drive >= found.size())
            continue;
        for (const Take& take : found[drive].takes)
            add(take.first);
    }
    for (const ZVKMedia& media : *recordings)
        add(media);
    return order;
}

/// Reads until the budget is spent; without one the drives by what is known.
void DriveLibrary::readLengths(std::chrono::milliseconds budget)
{
    const auto order = std::make_shared<const std::vector<std::string>>(
        budget.count() > 0 ? unmeasured() : std::vector<std::string>());
    lengthReading.begin();
    dispatcher.inBackgroundThen(
        [from = recordings, read = lengths, order, budget, progress = lengthReading.progress,
            token = lengthReading.stop.get_token()]() mutable {
            const auto end = std::chrono::steady_clock::now() + budget;
            for (const std::string& path : *order) {
                if (token.stop_requested() || std::chrono::steady_clock::now() > end)
                    break;
                if (!read.contains(path))
                    read.emplace(path, recordingLengthOfFile(path));
                ++*progress;
            }
            auto drives = drivesOf(*from, [&](const ZVKMedia& media) {
                const auto at = read.find(media.path());
                return at == read.end() ? usualLength : at->second;
            });
            return Piece{std::move(read), std::move(drives)};
        },
        lengthReading.life.guarded([this](Piece piece) { lengthsRead(std::move(piece)); }));
    if (!order->empty())
        watch(lengthReading, [this, order](size_t at) {
            if (at < order->size())
                lengthHangs((*order)[at]);
        });
}

/// Tells where it hangs.
void DriveLibrary::watch(Reading& reading, std::function<void(size_t at)> hung)
{
    dispatcher.after(lookInterval, reading.life.guarded([this, &reading, hung = std::move(hung)] {
        if (reading.hangs())
            hung(reading.seen);
        else
            watch(reading, hung);
    }));
}

/// It has no length, and the others go on without it.
void DriveLibrary::lengthHangs(const std::string& path)
{
    givenUp.insert(path);
    lengths.try_emplace(path, std::nullopt);
    readLengths(hasGivenUp() ? std::chrono::milliseconds(0) : readBudget);
}

void DriveLibrary::lengthsRead(Piece piece)
{
    lengthReading.end();
    lengths = std::move(piece.lengths);
    readingLengths = !hasGivenUp() && !unmeasured().empty();
    group(std::move(piece.drives));
    if (readingLengths)
        readLengths(readBudget);
}

/// Figures of drives that have the same takes as before stay.
void DriveLibrary::group(std::vector<Drive> drives)
{
    const bool isSame = std::ranges::equal(found, drives, hasSameTakes);
    if (!isSame) {
        std::vector<std::optional<DriveFigures>> kept(drives.size());
        for (size_t i = 0; i < drives.size(); ++i) {
            const auto before = driveOf(drives[i].takes.front().first.path());
            if (before && hasSameTakes(found[*before], drives[i]))
                kept[i] = std::move(known[*before]);
        }
        known = std::move(kept);
        wanted.clear();
    }
    found = std::move(drives);
    measured.clear();
    for (const Drive& drive : found)
        measured.push_back(std::ranges::all_of(
            drive.takes, [this](const Take& take) { return lengths.contains(take.first.path()); }));
    findPlaces();
    isSame ? told.measured() : told.listed();
    readNext();
}

/// The card itself seems to hang.
bool DriveLibrary::hasGivenUp() const
{
    return givenUp.size() >= mostHungFiles;
}

void DriveLibrary::movedTo(const std::string& from, const std::string& to)
{
    const auto moved = [&](const std::string& path) {
        return path.starts_with(from + "/") ? to + path.substr(from.size()) : path;
    };
    for (Drive& drive : found)
        moveTakes(drive.takes, from, to);
    for (auto& figures : known) {
        if (!figures)
            continue;
        for (DriveMoment& moment : figures->moments)
            moment.file = moved(moment.file);
    }
    auto listed = *recordings;
    for (ZVKMedia& media : listed)
        moveMedia(media, from, to);
    recordings = std::make_shared<const std::vector<ZVKMedia>>(std::move(listed));
    for (const auto& [path, length] : std::exchange(lengths, {}))
        lengths.emplace(moved(path), length);
    findPlaces();
    if (readingLengths)
        readLengths(found.empty() ? std::chrono::milliseconds(0) : readBudget);
    figureReading.end();
    readingFigures = false;
    readNext();
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
    if (readingFigures || hasGivenUp())
        return;
    const auto next =
        std::ranges::find_if(wanted, [&](size_t drive) { return isMeasured(drive) && !known[drive]; });
    if (next == wanted.end())
        return;
    readingFigures = true;
    figureReading.begin();
    const Drive& drive = found[*next];
    dispatcher.inBackgroundThen(
        [drive, skipped = givenUp, progress = figureReading.progress,
            token = figureReading.stop.get_token()] {
            DriveFigures figures = figuresOf(drive, {token, skipped, progress.get()});
            figures.track.clear();
            return figures;
        },
        figureReading.life.guarded(
            [this, drive](DriveFigures figures) { figuresRead(drive, std::move(figures)); }));
    watch(figureReading, [this, drive](size_t at) {
        if (at < drive.takes.size())
            figuresHang(drive.takes[at]);
    });
}

/// The drive is read once more without the file.
void DriveLibrary::figuresHang(const Take& take)
{
    figureReading.end();
    readingFigures = false;
    if (!givenUp.insert(take.first.path()).second && take.rear)
        givenUp.insert(take.rear->path());
    readNext();
}

void DriveLibrary::figuresRead(const Drive& drive, DriveFigures figures)
{
    figureReading.end();
    readingFigures = false;
    const auto at = driveOf(drive.takes.front().first.path());
    if (at && hasSameTakes(found[*at], drive)) {
        known[*at] = std::move(figures);
        told.figured(*at);
    }
    readNext();
}
