#include "lib/ClockFace.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace {

constexpr double hourLength = 0.5; // of the radius
constexpr double minuteLength = 0.76;
constexpr double secondLength = 0.82;
constexpr int dayMinutes = 24 * 60;

/// Degrees clockwise from the twelve.
double angleOf(QPointF fromCentre)
{
    const double degrees = std::atan2(fromCentre.x(), -fromCentre.y()) * 180 / M_PI;
    return degrees < 0 ? degrees + 360 : degrees;
}

double hourAngle(QTime time)
{
    return (time.hour() % 12) * 30 + time.minute() * 0.5;
}

double minuteAngle(QTime time)
{
    return time.minute() * 6 + time.second() * 0.1;
}

/// The same step on a ring of this many places, the short way round.
int shortest(int step, int places)
{
    step = (step % places + places) % places;
    return step > places / 2 ? step - places : step;
}

double distance(double from, double to)
{
    return std::abs(std::remainder(from - to, 360.0));
}

} // namespace

ClockFace::ClockFace(QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
}

void ClockFace::setTime(QTime time)
{
    if (!time.isValid() || time == shown)
        return;
    shown = time;
    setAccessibleDescription(time.toString(QStringLiteral("HH:mm:ss")));
    update();
}

void ClockFace::setDayHalves(const QString& morning, const QString& afternoon)
{
    halves[0] = morning;
    halves[1] = afternoon;
    update();
}

double ClockFace::radius() const
{
    return std::min(width(), height()) / 2.0 - 3;
}

/// Beyond the hour hand's end the minute hand is taken; nearer, the hand with the smaller angle to the
/// pointer.
ClockFace::Hand ClockFace::handAt(QPointF place) const
{
    const QPointF from = place - QRectF(rect()).center();
    const double away = std::hypot(from.x(), from.y());
    if (away > radius() || away < 4)
        return Hand::none;
    if (away > radius() * (hourLength + 0.08))
        return Hand::minute;
    const double angle = angleOf(from);
    return distance(angle, hourAngle(shown)) < distance(angle, minuteAngle(shown)) ? Hand::hour
                                                                                   : Hand::minute;
}

void ClockFace::moveBy(int minutes)
{
    const int now = shown.hour() * 60 + shown.minute();
    const int then = ((now + minutes) % dayMinutes + dayMinutes) % dayMinutes;
    const QTime time(then / 60, then % 60, shown.second());
    if (time == shown)
        return;
    setTime(time);
    emit timeChanged(time);
}

void ClockFace::dragTo(QPointF place)
{
    const double angle = angleOf(place - QRectF(rect()).center());
    if (dragged == Hand::minute)
        moveBy(shortest(int(std::lround(angle / 6)) - shown.minute(), 60));
    else
        moveBy(60 * shortest(int(std::lround((angle - shown.minute() * 0.5) / 30)) - shown.hour(), 12));
}

void ClockFace::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton)
        return QWidget::mousePressEvent(event);
    dragged = handAt(event->position());
    if (dragged != Hand::none)
        dragTo(event->position());
    update();
}

void ClockFace::mouseMoveEvent(QMouseEvent* event)
{
    if (dragged != Hand::none)
        dragTo(event->position());
}

void ClockFace::mouseReleaseEvent(QMouseEvent*)
{
    dragged = Hand::none;
    update();
}

void ClockFace::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        return moveBy(1);
    case Qt::Key_Down:
    case Qt::Key_Left:
        return moveBy(-1);
    case Qt::Key_PageUp:
        return moveBy(60);
    case Qt::Key_PageDown:
        return moveBy(-60);
    default:
        QWidget::keyPressEvent(event);
    }
}

void ClockFace::drawFace(QPainter& painter) const
{
    const double r = radius();
    const bool focused = hasFocus();
    painter.setPen(QPen(palette().color(focused ? QPalette::Highlight : QPalette::Mid), focused ? 2 : 1));
    painter.setBrush(palette().color(QPalette::Window));
    painter.drawEllipse(QPointF(), r, r);
    for (int mark = 0; mark < 60; ++mark) {
        const bool isHour = mark % 5 == 0;
        const double angle = mark * M_PI / 30;
        const QPointF outward(std::sin(angle), -std::cos(angle));
        painter.setPen(QPen(palette().color(isHour ? QPalette::Text : QPalette::Mid), isHour ? 2 : 1,
            Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(outward * r * 0.95, outward * r * (isHour ? 0.89 : 0.92));
        if (!isHour)
            continue;
        const QPointF centre = outward * r * 0.77;
        painter.drawText(QRectF(centre.x() - 14, centre.y() - 10, 28, 20), Qt::AlignCenter,
            QString::number(mark == 0 ? 12 : mark / 5));
    }
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(
        QRectF(-r / 2, r * 0.24, r, r * 0.3), Qt::AlignCenter, halves[shown.hour() < 12 ? 0 : 1]);
}

void ClockFace::drawHand(
    QPainter& painter, double degrees, double length, double width, const QColor& color) const
{
    painter.save();
    painter.rotate(degrees);
    painter.setPen(QPen(color, width, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(0, 0.1 * radius()), QPointF(0, -length * radius()));
    painter.restore();
}

void ClockFace::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(QRectF(rect()).center());
    drawFace(painter);
    const QColor plain = palette().color(QPalette::Text);
    const QColor grabbed = palette().color(QPalette::Highlight);
    drawHand(painter, hourAngle(shown), hourLength, 5, dragged == Hand::hour ? grabbed : plain);
    drawHand(painter, minuteAngle(shown), minuteLength, 3, dragged == Hand::minute ? grabbed : plain);
    drawHand(painter, shown.second() * 6, secondLength, 1, grabbed);
    painter.setPen(Qt::NoPen);
    painter.setBrush(grabbed);
    painter.drawEllipse(QPointF(), 4, 4);
}
