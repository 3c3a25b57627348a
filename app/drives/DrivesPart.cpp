#include "app/drives/DrivesPart.h"

#include "app/window/MainWindowOutlets.h"
#include "media/ZVKMediaList.h"
#include "platform/Texts.h"

#include <chrono>
#include <cstdio>
#include <utility>

DrivesPart::DrivesPart(platform::Dispatcher& queue, PlaybackSession& player, const ZVKMediaList& recordings,
    MainWindowOutlets& outlets, MainWindowLayout& layout, PreviewReader& pictures, HoverPreview& pointedAt,
    Told listener)
    : dispatcher(queue),
      session(player),
      list(recordings),
      previews(pictures),
      hover(pointedAt),
      told(std::move(listener)),
      strip(outlets, outlets, layout, [this](double fraction) { playback.goTo(fraction); }),
      playback(session, list, [this] { playedChanged(); }),
      panel(queue, outlets, previews,
          {[this](size_t drive) { play(drive, {}); },
              [this](size_t drive, const DriveMoment& moment) { play(drive, moment); },
              [this](size_t drive) { tellMoments(drive); }, [this] { drivesChanged(); }})
{
    const auto placeAt = [this](double fraction) { return placeOnStrip(fraction); };
    hover.watch(*outlets.driveStrip, *outlets.mediaControlBox, placeAt);
    hover.watch(*outlets.driveStripForFullScreen, *outlets.mediaControlBoxForFullScreen, placeAt);
}

/// The files of before may be others, or gone, or about to be let go of.
void DrivesPart::forgetPreviews()
{
    hover.hide();
    previews.clear();
}

/// The camera's clock, and how far into the drive; the picture is of the camera that one would see there.
std::optional<HoverPreview::Place> DrivesPart::placeOnStrip(double fraction) const
{
    if (!playback.isActive() || playback.line().length() <= 0)
        return {};
    const double point = fraction * playback.line().length();
    const DriveTimeline::Place place = playback.line().placeAt(point);
    const Take& take = playback.takesOfDrive()[place.take];
    const auto clock = take.start + std::chrono::microseconds(int64_t(place.seconds * 1e6));
    const ZVKMedia& shown = take.rear && session.cameras().prefersRear() ? *take.rear : take.first;
    return HoverPreview::Place{shown.path(), place.seconds,
        platform::localized("preview.place_in_drive")
            .arg(QString::fromStdString(cameraTimeText(std::chrono::floor<std::chrono::seconds>(clock)))
                     .section('T', 1),
                timeText(point))};
}

void DrivesPart::recordingsListed()
{
    forgetPreviews();
    panel.setRecordings(list.all());
    playback.findRows();
}

void DrivesPart::clear()
{
    forgetPreviews();
    playback.end();
    panel.setRecordings({});
}

void DrivesPart::movedTo(const std::string& from, const std::string& to)
{
    forgetPreviews();
    panel.movedTo(from, to);
    playback.movedTo(from, to);
}

/// From its start, or to a moment of it.
void DrivesPart::play(size_t index, const std::optional<DriveMoment>& moment)
{
    const Drive& drive = panel.library().drives()[index];
    if (!playback.plays(drive)) {
        playback.play(drive, moment);
        readRoute(index);
    } else if (moment)
        playback.goTo(*moment);
    else
        playback.playFromStart();
    tellMoments(index);
}

void DrivesPart::tellMoments(size_t drive)
{
    told.known();
    const DriveFigures* figures = panel.library().figures(drive);
    if (!figures || !playback.plays(panel.library().drives()[drive]))
        return;
    playback.setMoments(figures->moments);
    // What hung there would hang here.
    if (routeSkips && *routeSkips != panel.library().filesGivenUp())
        readRoute(drive);
}

/// What plays may have got more takes, or their lengths.
void DrivesPart::drivesChanged()
{
    told.known();
    if (!playback.isActive())
        return;
    const auto drive = panel.library().driveOf(playback.takesOfDrive()[playback.takeAtHand()].first.path());
    if (!drive || !panel.library().isMeasured(*drive))
        return;
    const bool isOther = playback.update(panel.library().drives()[*drive]);
    if (isOther)
        strip.showPosition(playback, positionAtHand());
    if (isOther || !isRouteAsked)
        readRoute(*drive);
}

/// 0.0 to 1.0 into the file; where it is to begin while it is started.
double DrivesPart::positionAtHand() const
{
    if (!session.isWaiting())
        return session.playInfo().position();
    const double length = playback.line().lengthOf(playback.takeAtHand());
    return length > 0 ? session.arrival().seconds / length : 0;
}

void DrivesPart::playedChanged()
{
    strip.show(playback);
    if (!playback.isActive() && !route.empty())
        clearRoute();
}

void DrivesPart::clearRoute()
{
    routeReading.request_stop();
    routeReading = {};
    routeLife.renew();
    route.clear();
    isRouteAsked = false;
    routeSkips.reset();
    told.route(driveRouteScript(route));
}

/// The way of another drive leads nowhere in this one. What is not measured yet has none.
void DrivesPart::readRoute(size_t index)
{
    clearRoute();
    if (!panel.library().isMeasured(index))
        return;
    isRouteAsked = true;
    routeSkips = panel.library().filesGivenUp();
    dispatcher.inBackgroundThen(
        [drive = panel.library().drives()[index], skipped = *routeSkips, stop = routeReading.get_token()] {
            return routeOf(drive, skipped, stop);
        },
        routeLife.guarded([this](const std::vector<RoutePart>& read) {
            routeSkips.reset();
            if (!playback.isActive())
                return;
            route = read;
            told.route(driveRouteScript(route));
        }));
}

void DrivesPart::mapSaid(const std::string& word)
{
    size_t part = 0;
    size_t index = 0;
    if (std::sscanf(word.c_str(), "route/%zu/%zu", &part, &index) != 2 || part >= route.size()
        || index >= route[part].points.size())
        return;
    playback.goTo(DriveTimeline::Place{route[part].take, route[part].points[index].seconds});
}

void DrivesPart::entryChosen(int64_t index)
{
    hover.hide();
    playback.entryChosen(index);
    if (playback.isActive())
        told.take("zavikDriveTake(" + std::to_string(playback.takeAtHand()) + ")");
}

void DrivesPart::jumpToMoment(int direction)
{
    playback.jumpToMoment(direction, session.playInfo().position());
}

void DrivesPart::showMoment(double position)
{
    if (const auto media = session.player().media())
        playback.lengthKnown(double(media->length().intValue()) / 1000);
    strip.showPosition(playback, position);
}

std::optional<bool> DrivesPart::hasImpact(const ZVKMedia& media) const
{
    return panel.library().hasImpact(media.path());
}
