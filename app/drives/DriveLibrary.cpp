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
    lengths.assign(recordings->size(), {});
    namesLife.renew();
    found.clear();
    measured.clear();
    known.clear();
    places.clear();
    wanted.clear();
    givenUp.clear();
    readingFigures = false;
    readingLengths = !recordings->empty();
    told.listed();
    if (!readingLengths)
        return;
    showByNames();
    readLengths(readBudget);
}

DriveLibrary::Places DriveLibrary::placesOf(const std::vector<Drive>& drives)
{
    Places places;
    for (size_t drive = 0; drive < drives.size(); ++drive) {
        for (size_t take = 0; take < drives[drive].takes.size(); ++take) {
            const Take& both = drives[drive].takes[take];
            places[both.first.path()] = {drive, take};
            if (both.rear)
                places[both.rear->path()] = {drive, take};
        }
    }
    return places;
}

DriveLibrary::Grouped DriveLibrary::groupedBy(const std::vector<ZVKMedia>& recordings, const Lengths& lengths)
{
    Grouped grouped;
    grouped.drives = drivesOf(recordings, [&](const ZVKMedia& media) {
        const Length& length = lengths[size_t(&media - recordings.data())];
        return length.isRead ? length.value : usualLength;
    });
    grouped.places = placesOf(grouped.drives);
    grouped.measured.assign(grouped.drives.size(), true);
    for (size_t i = 0; i < lengths.size(); ++i) {
        const auto place =
            lengths[i].isRead ? grouped.places.end() : grouped.places.find(recordings[i].path());
        if (place != grouped.places.end())
            grouped.measured[place->second.drive] = false;
    }
    return grouped;
}

bool DriveLibrary::isAllRead() const
{
    return std::ranges::all_of(lengths, &Length::isRead);
}

/// In the order in which they are wanted.
std::vector<size_t> DriveLibrary::unread() const
{
    std::vector<size_t> wishes(found.size(), wanted.size());
    for (size_t i = wanted.size(); i-- > 0;) {
        if (wanted[i] < found.size())
            wishes[wanted[i]] = i;
    }
    std::vector<std::pair<size_t, size_t>> order; // wish, recording
    for (size_t i = 0; i < lengths.size(); ++i) {
        if (lengths[i].isRead)
            continue;
        const auto place = places.find((*recordings)[i].path());
        order.emplace_back(place == places.end() ? wanted.size() : wishes[place->second.drive], i);
    }
    std::ranges::stable_sort(order, {}, &std::pair<size_t, size_t>::first);
    std::vector<size_t> result;
    for (const auto& [wish, recording] : order)
        result.push_back(recording);
    return result;
}

/// Beside the first reading, which takes its time.
void DriveLibrary::showByNames()
{
    dispatcher.inBackgroundThen([from = recordings, known = lengths] { return groupedBy(*from, known); },
        namesLife.guarded([this](Grouped grouped) { group(std::move(grouped)); }));
}

/// Reads until the budget is spent.
void DriveLibrary::readLengths(std::chrono::milliseconds budget)
{
    const auto order = std::make_shared<const std::vector<size_t>>(unread());
    lengthReading.begin();
    dispatcher.inBackgroundThen(
        [from = recordings, read = lengths, order, budget, progress = lengthReading.progress,
            token = lengthReading.stop.get_token()]() mutable {
            const auto end = std::chrono::steady_clock::now() + budget;
            for (const size_t i : *order) {
                if (token.stop_requested() || std::chrono::steady_clock::now() > end)
                    break;
                read[i] = {true, recordingLengthOfFile((*from)[i].path())};
                ++*progress;
            }
            Grouped grouped = groupedBy(*from, read);
            return Piece{std::move(read), std::move(grouped)};
        },
        lengthReading.life.guarded([this](Piece piece) { lengthsRead(std::move(piece)); }));
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
void DriveLibrary::lengthHangs(size_t recording)
{
    givenUp.insert((*recordings)[recording].path());
    lengths[recording] = {true, {}};
    if (!hasGivenUp()) {
        readLengths(readBudget);
        return;
    }
    lengthReading.end();
    readingLengths = false;
    showByNames();
}

void DriveLibrary::lengthsRead(Piece piece)
{
    lengthReading.end();
    namesLife.renew();
    lengths = std::move(piece.lengths);
    readingLengths = !hasGivenUp() && !isAllRead();
    group(std::move(piece.grouped));
    if (readingLengths)
        readLengths(readBudget);
}

/// Figures of drives that have the same takes as before stay.
void DriveLibrary::group(Grouped grouped)
{
    const std::vector<Drive>& drives = grouped.drives;
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
    found = std::move(grouped.drives);
    measured = std::move(grouped.measured);
    places = std::move(grouped.places);
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
    places = placesOf(found);
    namesLife.renew();
    if (readingLengths) {
        if (found.empty())
            showByNames();
        readLengths(readBudget);
    }
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
