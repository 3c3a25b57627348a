#include "lib/TKThreePartImageView.h"

#include <QPainter>

TKThreePartImageView::TKThreePartImageView(QWidget* parent)
    : QWidget(parent)
{
}

void TKThreePartImageView::setImagesLeft(
    const platform::Image& left_img, const platform::Image& middle_img, const platform::Image& right_img)
{
    images = {left_img, middle_img, right_img};
}

void TKThreePartImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    images.draw(painter, QRectF(rect()));
}
