#include "lib/SliderCell.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

constexpr double overlap = 4; // of knob and bar

}

void SliderCell::setMinValue(double value)
{
    if (std::isnan(value))
        return;
    minimum = value;
    maximum = std::max(maximum, value);
    slot = std::clamp(slot, minimum, maximum);
    updateCell();
}

void SliderCell::setMaxValue(double value)
{
    if (std::isnan(value))
        return;
    maximum = value;
    minimum = std::min(minimum, value);
    slot = std::clamp(slot, minimum, maximum);
    updateCell();
}

void SliderCell::setDoubleValue(double value)
{
    if (std::isnan(value))
        return;
    slot = std::clamp(value, minimum, maximum);
    updateCell();
}

void SliderCell::setEnabled(bool flag)
{
    enabled = flag;
    updateCell();
}

void SliderCell::updateCell()
{
    if (view)
        view->update();
}

void SliderCell::updateCell(const QRectF& rect)
{
    if (view)
        view->update(rect.toAlignedRect().adjusted(-3, -3, 3, 3));
}

QRectF SliderCell::barRectFlipped(bool flipped) const
{
    const double across = vertical ? frame.width() : frame.height();
    // Knob and bar are in the middle together; the knob's tip rests on the bar.
    const double offset = (across - knobThickness - barThickness + overlap) / 2 + knobThickness - overlap;
    if (vertical)
        return {frame.x() + offset, frame.y(), barThickness, frame.height()};
    const double y = flipped ? frame.y() + offset : frame.bottom() - offset - barThickness;
    return {frame.x(), y, frame.width(), barThickness};
}

QRectF SliderCell::knobRectFlipped(bool flipped) const
{
    const double range = maximum - minimum;
    const double fraction = range > 0 ? (slot - minimum) / range : 0;
    const QRectF bar = barRectFlipped(flipped);
    if (vertical) {
        const double travel = std::max(frame.height() - knobLength, 0.0);
        const double along = flipped ? (1 - fraction) * travel : fraction * travel;
        return {bar.x() - knobThickness + overlap, frame.y() + along, knobThickness, knobLength};
    }
    const double travel = std::max(frame.width() - knobLength, 0.0);
    const double y = flipped ? bar.y() - knobThickness + overlap : bar.bottom() - overlap;
    return {frame.x() + fraction * travel, y, knobLength, knobThickness};
}

double SliderCell::valueAt(QPointF point, bool flipped) const
{
    const double travel = (vertical ? frame.height() : frame.width()) - knobLength;
    if (travel <= 0)
        return slot;
    double along = (vertical ? point.y() - frame.y() : point.x() - frame.x()) - knobLength / 2;
    if (vertical && flipped)
        along = travel - along;
    return minimum + std::clamp(along / travel, 0.0, 1.0) * (maximum - minimum);
}

bool SliderCell::startTrackingAt(QPointF point, bool flipped)
{
    if (!enabled)
        return false;
    const QRectF knob = knobRectFlipped(flipped);
    const bool onKnob = knob.contains(point);
    grip = !onKnob ? 0 : vertical ? point.y() - knob.center().y() : point.x() - knob.center().x();
    if (!onKnob)
        slot = valueAt(point, flipped);
    updateCell();
    return true;
}

void SliderCell::continueTracking(QPointF point, bool flipped)
{
    const QPointF middle =
        vertical ? QPointF(point.x(), point.y() - grip) : QPointF(point.x() - grip, point.y());
    slot = valueAt(middle, flipped);
    updateCell();
}

void SliderCell::stopTracking(QPointF, bool)
{
    grip = 0;
    updateCell();
}

void SliderCell::draw(QPainter& painter, bool flipped)
{
    drawnFlipped = flipped;
    drawBarInside(painter, barRectFlipped(flipped), flipped);
    drawKnob(painter);
}

void SliderCell::drawBarInside(QPainter& painter, const QRectF& rect, bool)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(view ? view->palette().color(QPalette::Mid) : QColor(Qt::gray));
    painter.drawRoundedRect(rect, barThickness / 2, barThickness / 2);
}

void SliderCell::drawKnob(QPainter& painter)
{
    drawKnob(painter, knobRectFlipped(drawnFlipped));
}

void SliderCell::drawKnob(QPainter& painter, const QRectF& rect)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(view ? view->palette().color(QPalette::ButtonText) : QColor(Qt::white));
    painter.drawRoundedRect(rect, 4, 4);
}

void SliderCell::encodeWithCoder(QVariantMap& coder) const
{
    coder["value"] = slot;
    coder["minValue"] = minimum;
    coder["maxValue"] = maximum;
    coder["altIncrementValue"] = alternateIncrement;
    coder["continuous"] = continuous;
    coder["vertical"] = vertical;
    coder["enabled"] = enabled;
}

void SliderCell::initWithCoder(const QVariantMap& coder)
{
    const auto number = [&](const char* key, double absent) {
        const QVariant stored = coder.value(QLatin1String(key));
        const double value = stored.isValid() ? stored.toDouble() : absent;
        return std::isnan(value) ? absent : value;
    };
    minimum = number("minValue", 0);
    maximum = std::max(number("maxValue", 1), minimum);
    slot = std::clamp(number("value", 0), minimum, maximum);
    alternateIncrement = number("altIncrementValue", 0);
    continuous = coder.value("continuous", true).toBool();
    vertical = coder.value("vertical", false).toBool();
    enabled = coder.value("enabled", true).toBool();
}
