#include "lib/NinePartLayer.h"

#include "common/Log.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

std::unique_ptr<NinePartLayer> NinePartLayer::layerWithImage(const QImage& image)
{
    auto layer = std::make_unique<NinePartLayer>();
    layer->setImage(image);
    return layer;
}

QImage NinePartLayer::imageFromImage(const QImage& image, const QRect& rectangle)
{
    if (rectangle.isEmpty() || !image.rect().contains(rectangle)) {
        logFormat("piece %dx%d+%d+%d is outside a picture of %dx%d", rectangle.width(), rectangle.height(),
            rectangle.x(), rectangle.y(), image.width(), image.height());
        return {};
    }
    return image.copy(rectangle);
}

void NinePartLayer::setImage(const QImage& image)
{
    block = QSizeF(image.width() / 3.0, image.height() / 3.0);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const QPoint from(int(block.width() * column), int(block.height() * row));
            const QPoint to(int(block.width() * (column + 1)) - 1, int(block.height() * (row + 1)) - 1);
            pieces[size_t(row)][size_t(column)] = imageFromImage(image, QRect(from, to));
        }
    }
    updateLayers();
}

void NinePartLayer::setFrame(const QRectF& frame)
{
    whole = frame;
    updateLayers();
}

void NinePartLayer::updateLayers()
{
    const double cornerWidth = std::min(std::ceil(block.width()), whole.width() / 2);
    const double cornerHeight = std::min(std::ceil(block.height()), whole.height() / 2);
    const double xs[] = {
        whole.left(), whole.left() + cornerWidth, whole.right() - cornerWidth, whole.right()};
    const double ys[] = {
        whole.top(), whole.top() + cornerHeight, whole.bottom() - cornerHeight, whole.bottom()};
    for (size_t row = 0; row < 3; ++row)
        for (size_t column = 0; column < 3; ++column)
            frames[row][column] = QRectF(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
}

void NinePartLayer::draw(QPainter& painter) const
{
    for (size_t row = 0; row < 3; ++row)
        for (size_t column = 0; column < 3; ++column)
            painter.drawImage(frames[row][column], pieces[row][column]);
}
