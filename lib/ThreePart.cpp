#include "lib/ThreePart.h"

#include <QPainter>

#include <algorithm>

void ThreePart::draw(QPainter& painter, const QRectF& frame) const
{
    const double leftWidth = std::min(left.size().width, frame.width());
    const double rightWidth = std::min(right.size().width, frame.width() - leftWidth);
    const double middleWidth = frame.width() - leftWidth - rightWidth;
    left.draw(painter, {frame.x(), frame.y(), leftWidth, frame.height()});
    middle.draw(painter, {frame.x() + leftWidth, frame.y(), middleWidth, frame.height()});
    right.draw(painter, {frame.right() - rightWidth, frame.y(), rightWidth, frame.height()});
}
