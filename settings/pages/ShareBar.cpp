#include "settings/pages/ShareBar.h"

#include "lib/SliderCell.h"
#include "lib/Style.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

ShareBar::ShareBar(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ShareBar::setShares(const Shares& percents)
{
    shares = percents;
    update();
}

QRectF ShareBar::bar() const
{
    constexpr double inset = SliderCell::knobLength / 2;
    return QRectF(rect()).adjusted(inset, 0, -inset, 0);
}

std::array<QRectF, 3> ShareBar::parts() const
{
    double sum = 0;
    for (const int64_t share : shares)
        sum += double(std::max<int64_t>(share, 0));
    std::array<QRectF, 3> all;
    QRectF rest = bar();
    for (size_t i = 0; i < all.size(); ++i) {
        all[i] = rest;
        all[i].setWidth(bar().width() * double(std::max<int64_t>(shares[i], 0)) / std::max(sum, 100.0));
        rest.setLeft(all[i].right());
    }
    return all;
}

void ShareBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    outline.addRoundedRect(bar(), 4, 4);
    painter.fillPath(outline, style::panel);
    painter.setClipPath(outline);
    const std::array colors{style::ok, style::accent, style::danger};
    for (size_t i = 0; i < colors.size(); ++i)
        painter.fillRect(parts()[i], colors[i]);
}
