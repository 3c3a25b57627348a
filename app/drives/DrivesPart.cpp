#include "app/drives/DrivesPart.h"

#include "app/window/MainWindowOutlets.h"
#include "media/ZVKMediaList.h"

#include <utility>

DrivesPart::DrivesPart(platform::Dispatcher& dispatcher, PlaybackSession& player,
    const ZVKMediaList& recordings, MainWindowOutlets& outlets, MainWindowLayout& layout,
    std::function<void()> listener)
    : session(player),
      list(recordings),
      known(std::move(listener)),
      strip(outlets, outlets, layout, [this](double fraction) { playback.goTo(fraction); }),
      playback(session, list, [this] { strip.show(playback); }),
      panel(dispatcher, outlets,
          {[this](size_t drive) { play(drive, {}); },
              [this](size_t drive, const DriveMoment& moment) { play(drive, moment); },
              [this](size_t drive) { tellMoments(drive); }})
{
}

void DrivesPart::recordingsListed()
{
    panel.setRecordings(list.all());
    playback.findRows();
}

void DrivesPart::clear()
{
    playback.end();
    panel.setRecordings({});
}

void DrivesPart::movedTo(const std::string& from, const std::string& to)
{
    panel.movedTo(from, to);
    playback.movedTo(from, to);
}

/// From its start, or to a moment of it.
void DrivesPart::play(size_t index, const std::optional<DriveMoment>& moment)
{
    const Drive& drive = panel.library().drives()[index];
    if (!playback.plays(drive))
        playback.play(drive, moment);
    else if (moment)
        playback.goTo(*moment);
    else
        playback.goTo(0);
    tellMoments(index);
}

void DrivesPart::tellMoments(size_t drive)
{
    known();
    const DriveFigures* figures = panel.library().figures(drive);
    if (figures && playback.plays(panel.library().drives()[drive]))
        playback.setMoments(figures->moments);
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
