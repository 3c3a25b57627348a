#include "lib/RangeSlider/EcoSliderAxisView.h"

#include <QPainter>

EcoSliderAxisView::EcoSliderAxisView(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

std::array<QRectF, EcoSliderAxisView::tickCount> EcoSliderAxisView::ticks(double width)
{
    const double step = (width + 32) / 22;
    std::array<QRectF, tickCount> all;
    for (size_t k = 0; k < all.size(); ++k) {
        const bool isLong = k == 0 || k == 10 || k == 21;
        const double x = 8 + double(k) * step;
        all[k] = isLong ? QRectF(x, 3, 1, 8) : QRectF(x, 5, 1, 5);
    }
    return all;
}

void EcoSliderAxisView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor color =
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText);
    for (QRectF tick : ticks(width())) {
        tick.moveTop(height() - tick.y() - tick.height());
        painter.fillRect(tick, color);
    }
}
