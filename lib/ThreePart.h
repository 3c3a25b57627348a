#pragma once

#include "platform/Images.h"

class QPainter;
class QRectF;

/// Three pictures that fill a bar: caps at their own width, the middle stretched between them.
struct ThreePart {
    platform::Image left;
    platform::Image middle;
    platform::Image right;

    /// Over the whole frame; missing pictures leave their piece empty.
    void draw(QPainter& painter, const QRectF& frame) const;
};
