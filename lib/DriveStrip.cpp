#include "lib/DriveStrip.h"

#include "lib/DriveStripAccess.h"

#include "lib/Style.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double side = 7; // the position slider's knob has as much beside its travel
constexpr double segmentHeight = 8;
constexpr double gap = 1;
constexpr double corner = 2;

QColor colourOf(DriveStrip::SegmentKind kind)
{
    switch (kind) {
    case DriveStrip::SegmentKind::motion:
        return style::accent;
    case DriveStrip::SegmentKind::event:
        return style::danger;
    default:
        return style::ok;
    }
}

} // namespace

DriveStrip::DriveStrip(QWidget* parent)
    : QWidget(parent)
{
    installDriveStripAccess();
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void DriveStrip::setSegments(std::vector<Segment> segments, std::vector<Mark> marks)
{
    if (parts == segments && places == marks)
        return;
    parts = std::move(segments);
    places = std::move(marks);
    held = held && !parts.empty();
    drawn = {};
    update();
}

void DriveStrip::setPosition(double fraction)
{
    fraction = std::isnan(fraction) ? 0 : std::clamp(fraction, 0.0, 1.0);
    if (held || fraction == here)
        return;
    here = fraction;
    if (std::abs(xOf(here) - drawnBar) * devicePixelRatioF() >= 0.5)
        update();
}

double DriveStrip::xOf(double fraction) const
{
    return side + fraction * std::max(width() - 2 * side, 1.0);
}

double DriveStrip::fractionAt(double x) const
{
    return std::clamp((x - side) / std::max(width() - 2 * side, 1.0), 0.0, 1.0);
}

void DriveStrip::drawLine(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const double top = height() - segmentHeight - 3;
    for (const Segment& segment : parts) {
        const double left = xOf(segment.start);
        // Neighbours are told apart while there is room for it.
        const double room = xOf(segment.end) - left;
        const QRectF rect(left, top, std::max(room - (room > 3 * gap ? gap : 0), 0.5), segmentHeight);
        // Nobody sees the corners of a narrow one, and a long drive has many.
        if (rect.width() < 3 * corner) {
            painter.fillRect(rect, colourOf(segment.kind));
            continue;
        }
        painter.setBrush(colourOf(segment.kind));
        painter.drawRoundedRect(rect, corner, corner);
    }
    for (const Mark& mark : places) {
        const double x = xOf(mark.place);
        QPainterPath flag;
        flag.moveTo(x - 4, 1);
        flag.lineTo(x + 4, 1);
        flag.lineTo(x, 8);
        flag.closeSubpath();
        painter.fillPath(flag, mark.kind == MarkKind::impact ? style::danger : style::accent);
    }
}

const QPixmap& DriveStrip::line()
{
    if (drawn.isNull()) {
        drawn = QPixmap(size() * devicePixelRatioF());
        drawn.setDevicePixelRatio(devicePixelRatioF());
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        drawLine(painter);
    }
    return drawn;
}

void DriveStrip::paintEvent(QPaintEvent*)
{
    if (parts.empty())
        return;
    QPainter painter(this);
    painter.drawPixmap(0, 0, line());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(hasFocus() ? style::accent : style::text);
    drawnBar = xOf(here);
    painter.drawRoundedRect(QRectF(drawnBar - 1.5, 6, 3, height() - 7), 1.5, 1.5);
}

void DriveStrip::goTo(double fraction)
{
    here = std::clamp(fraction, 0.0, 1.0);
    update();
    QAccessibleValueChangeEvent told(this, here * lineLength);
    QAccessible::updateAccessibility(&told);
    emit moved(here);
}

void DriveStrip::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || parts.empty())
        return event->ignore();
    held = true;
    goTo(fractionAt(event->position().x()));
}

void DriveStrip::mouseMoveEvent(QMouseEvent* event)
{
    if (parts.empty())
        return;
    const double fraction = fractionAt(event->position().x());
    if (held && fraction != here)
        goTo(fraction);
    if (event->buttons() == Qt::NoButton)
        emit hovered(fraction, int(event->position().x()));
}

void DriveStrip::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        held = false;
}

void DriveStrip::keyPressEvent(QKeyEvent* event)
{
    const double step = lineLength > 0 ? keySeconds / lineLength : 0;
    if (parts.empty())
        return event->ignore();
    switch (event->key()) {
    case Qt::Key_Left:
        return goTo(here - step);
    case Qt::Key_Right:
        return goTo(here + step);
    case Qt::Key_Home:
        return goTo(0);
    case Qt::Key_End:
        return goTo(1);
    default:
        event->ignore();
    }
}

void DriveStrip::resizeEvent(QResizeEvent*)
{
    drawn = {};
}
