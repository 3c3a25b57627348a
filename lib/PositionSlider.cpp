#include "lib/PositionSlider.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>

#include <algorithm>
#include <cmath>

PositionSlider::PositionSlider(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    setRange(0, steps);
    setSingleStep(steps / 100);
    setPageStep(steps / 20);
    setTracking(true);
    setMouseTracking(true);
    connect(this, &QSlider::valueChanged, this, [this] { emit moved(doubleValue()); });
}

double PositionSlider::doubleValue() const
{
    return double(value()) / steps;
}

void PositionSlider::setDoubleValue(double fraction)
{
    if (isSliderDown())
        return;
    const QSignalBlocker silent(this);
    setValue(int(std::lround(std::clamp(fraction, 0.0, 1.0) * steps)));
}

QRect PositionSlider::knob() const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

int PositionSlider::valueAt(double x) const
{
    const int length = knob().width();
    return QStyle::sliderValueFromPosition(minimum(), maximum(), int(x) - length / 2, width() - length);
}

void PositionSlider::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !knob().contains(event->position().toPoint()))
        setValue(valueAt(event->position().x()));
    QSlider::mousePressEvent(event);
}

void PositionSlider::mouseMoveEvent(QMouseEvent* event)
{
    QSlider::mouseMoveEvent(event);
    if (event->buttons() == Qt::NoButton)
        emit hovered(double(valueAt(event->position().x())) / steps, int(event->position().x()));
}
