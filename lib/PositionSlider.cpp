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

void PositionSlider::mousePressEvent(QMouseEvent* event)
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect knob = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    if (event->button() == Qt::LeftButton && !knob.contains(event->position().toPoint())) {
        const int travel = width() - knob.width();
        const int offset = int(event->position().x()) - knob.width() / 2;
        setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), offset, travel));
    }
    QSlider::mousePressEvent(event);
}
