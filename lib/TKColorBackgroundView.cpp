#include "lib/TKColorBackgroundView.h"

#include <QPaintEvent>
#include <QPainter>

TKColorBackgroundView::TKColorBackgroundView(QWidget* parent)
    : QWidget(parent)
{
}

void TKColorBackgroundView::setBackgroundColor(std::optional<QColor> color)
{
    bgcolor = color;
    update();
}

void TKColorBackgroundView::paintEvent(QPaintEvent* event)
{
    if (bgcolor)
        QPainter(this).fillRect(event->rect(), *bgcolor);
}
