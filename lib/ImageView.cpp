#include "lib/ImageView.h"

#include <QPainter>

ImageView::ImageView(QWidget* parent)
    : QWidget(parent)
{
}

void ImageView::setImage(const platform::Image& picture)
{
    image = picture;
    update();
}

void ImageView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const auto [imageWidth, imageHeight] = image.size();
    image.draw(painter, {(width() - imageWidth) / 2, (height() - imageHeight) / 2, imageWidth, imageHeight});
}
