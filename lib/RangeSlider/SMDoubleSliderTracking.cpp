// The mouse and the picture of SMDoubleSliderCell.
#include "lib/RangeSlider/SMDoubleSliderCell.h"

#include "lib/ThreePart.h"

#include <QPainter>
#include <QWidget>

#include <algorithm>

QRectF SMDoubleSliderCell::loKnobRectFlipped(bool flipped)
{
    const double saved = slotValue();
    setSlotValue(doubleLoValue());
    const QRectF rect = knobRectFlipped(flipped);
    setSlotValue(saved);
    return rect;
}

QRectF SMDoubleSliderCell::pictureRect(
    const platform::Image& picture, const QRectF& knob, const QRectF& bar) const
{
    if (_knobLeftImage.isNull() || _knobRightImage.isNull())
        return knob;
    const auto [width, height] = picture.size();
    return {(bar.width() - (width - knob.width())) * knob.x() / bar.width(), knob.y(), width, height};
}

bool SMDoubleSliderCell::choosesLoKnob(QPointF point, const QRectF& loKnob, bool flipped) const
{
    const QRectF bar = barRectFlipped(flipped);
    const bool onLo = pictureRect(_knobLeftImage, loKnob, bar).contains(point);
    const bool onHi = pictureRect(_knobRightImage, knobRectFlipped(flipped), bar).contains(point);
    if (!isVertical() && onLo != onHi)
        return onLo;
    bool lo = false;
    if (!isVertical())
        lo = loKnob.center().x() > point.x();
    else if (flipped)
        lo = point.y() > loKnob.y();
    else
        lo = loKnob.y() + loKnob.height() > point.y();
    // Both at one place: the knob that still has room on its own side.
    if (lo && knobRectFlipped(flipped) == loKnob)
        return doubleLoValue() > minValue();
    return lo;
}

bool SMDoubleSliderCell::startTrackingAt(QPointF point, bool flipped)
{
    if (!isEnabled())
        return false;
    const QRectF loKnob = loKnobRectFlipped(flipped);
    const bool lo = choosesLoKnob(point, loKnob, flipped);
    setTrackingLoKnob(lo);
    if (lo)
        updateCell(loKnob);
    _sm_saveValue = slotValue();
    _sm_flags.mouseTrackingSwapped = lo;
    if (lo)
        setSlotValue(_sm_loValue);
    const bool started = SliderCell::startTrackingAt(point, flipped);
    // The base's jump to the mouse obeys the other knob too.
    setSlotValue(lo ? std::min(slotValue(), _sm_saveValue) : std::max(slotValue(), _sm_loValue));
    return started;
}

void SMDoubleSliderCell::continueTracking(QPointF point, bool flipped)
{
    SliderCell::continueTracking(point, flipped);
    if (_sm_flags.mouseTrackingSwapped) {
        setSlotValue(std::min(slotValue(), _sm_saveValue));
        if (isContinuous() && updateBoundControllerLoValue)
            updateBoundControllerLoValue(doubleLoValue());
    } else {
        setSlotValue(std::max(slotValue(), _sm_loValue));
        if (isContinuous() && updateBoundControllerHiValue)
            updateBoundControllerHiValue(doubleHiValue());
    }
}

void SMDoubleSliderCell::stopTracking(QPointF point, bool flipped)
{
    if (_sm_flags.mouseTrackingSwapped) {
        _sm_loValue = slotValue();
        setSlotValue(_sm_saveValue);
        _sm_flags.mouseTrackingSwapped = false;
        updateCell(loKnobRectFlipped(flipped));
        if (updateBoundControllerLoValue)
            updateBoundControllerLoValue(doubleLoValue());
    } else if (updateBoundControllerHiValue) {
        updateBoundControllerHiValue(doubleHiValue());
    }
    SliderCell::stopTracking(point, flipped);
}

void SMDoubleSliderCell::setShowsFocus(bool flag)
{
    _sm_flags.removeFocusRingStyle = !flag;
    updateCell();
}

void SMDoubleSliderCell::setKnobLeftImage(const platform::Image& image)
{
    _knobLeftImage = image;
    updateCell();
}

void SMDoubleSliderCell::setKnobRightImage(const platform::Image& image)
{
    _knobRightImage = image;
    updateCell();
}

void SMDoubleSliderCell::setBarFillImage(const platform::Image& image)
{
    _barFillImage = image;
    updateCell();
}

void SMDoubleSliderCell::drawBarInside(QPainter& painter, const QRectF& rect, bool flipped)
{
    _barRect = rect;
    _flipped = flipped;
    ThreePart{_barFillImage, _barFillImage, _barFillImage}.draw(painter, rect);
}

void SMDoubleSliderCell::drawKnob(QPainter& painter)
{
    const double saved = slotValue();
    const bool savedFocus = showsFocusRing;
    const double lo = doubleLoValue();
    const double hi = doubleHiValue();

    setSlotValue(lo);
    showsFocusRing = !_sm_flags.removeFocusRingStyle && trackingLoKnob();
    currentKnobImage = _knobLeftImage;
    drawKnob(painter, knobRectFlipped(_flipped));

    setSlotValue(hi);
    showsFocusRing = !_sm_flags.removeFocusRingStyle && !trackingLoKnob();
    currentKnobImage = _knobRightImage;
    SliderCell::drawKnob(painter);

    setSlotValue(saved);
    showsFocusRing = savedFocus;
}

void SMDoubleSliderCell::drawKnob(QPainter& painter, const QRectF& rect)
{
    if (_knobLeftImage.isNull() || _knobRightImage.isNull()) {
        SliderCell::drawKnob(painter, rect);
        return;
    }
    _currentKnobRect = rect;
    const QRectF picture = pictureRect(currentKnobImage, rect, _barRect);
    painter.setOpacity(isEnabled() ? 1.0 : 0.5);
    currentKnobImage.draw(painter, picture);
    painter.setOpacity(1.0);
    if (showsFocusRing && controlView()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(controlView()->palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(picture, 4, 4);
    }
}
