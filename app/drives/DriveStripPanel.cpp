#include "app/drives/DriveStripPanel.h"

#include "app/drives/DrivePlayback.h"
#include "app/window/MainWindowLayout.h"
#include "platform/MediaPlayer.h"
#include "platform/Texts.h"
#include "ui_FullScreenBar.h"
#include "ui_TransportBar.h"

#include <cstdint>
#include <utility>
#include <vector>

QString timeText(double seconds)
{
    return QString::fromStdString(platform::MediaTime::timeWithInt(int64_t(seconds * 1000)).stringValue());
}

namespace {

DriveStrip::SegmentKind kindOf(const Take& take)
{
    return take.first.isEventMedia() ? DriveStrip::SegmentKind::event
        : take.first.isMotionMedia() ? DriveStrip::SegmentKind::motion
                                     : DriveStrip::SegmentKind::always;
}

} // namespace

DriveStripPanel::DriveStripPanel(Ui::TransportBar& normalBar, Ui::FullScreenBar& fullBar,
    MainWindowLayout& windowLayout, const std::function<void(double fraction)>& moved)
    : bar(normalBar),
      fullScreenBar(fullBar),
      layout(windowLayout)
{
    for (DriveStrip* strip : {bar.driveStrip, fullScreenBar.driveStripForFullScreen}) {
        strip->setAccessibleName(platform::localized("tip.drive_strip"));
        QObject::connect(strip, &DriveStrip::moved, strip, moved);
    }
}

void DriveStripPanel::show(const DrivePlayback& drive)
{
    std::vector<DriveStrip::Segment> segments;
    std::vector<DriveStrip::Mark> marks;
    const DriveTimeline& line = drive.line();
    const double length = line.length();
    for (size_t take = 0; length > 0 && take < line.takeCount(); ++take)
        segments.push_back({line.startOf(take) / length, line.startOf(take + 1) / length,
            kindOf(drive.takesOfDrive()[take])});
    for (const DriveMoment& moment : drive.moments()) {
        if (length > 0)
            marks.push_back({line.pointOf({moment.take, moment.seconds}) / length,
                moment.moment.kind == Moment::Kind::impact ? DriveStrip::MarkKind::impact
                                                           : DriveStrip::MarkKind::braking});
    }
    for (DriveStrip* strip : {bar.driveStrip, fullScreenBar.driveStripForFullScreen}) {
        strip->setSegments(segments, marks);
        strip->setLength(length);
    }
    layout.showDriveStrip(drive.isActive());
}

void DriveStripPanel::showPosition(const DrivePlayback& drive, double position)
{
    if (!drive.isActive())
        return;
    const double fraction = drive.fractionAt(position);
    for (DriveStrip* strip : {bar.driveStrip, fullScreenBar.driveStripForFullScreen})
        strip->setPosition(fraction);
    const double length = drive.line().length();
    for (QLabel* field : {bar.driveTimeField, fullScreenBar.driveTimeFieldForFullScreen})
        field->setText(timeText(fraction * length) + " / " + timeText(length));
}
