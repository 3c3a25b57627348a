#include "lib/TKImageButtonCell.h"

#include "lib/ThreePart.h"

namespace {

ThreePart background(const char* suffix)
{
    const auto piece = [suffix](const char* place) {
        return platform::imageNamed(
            QStringLiteral("bg_bt_info_%1%2.png").arg(QLatin1String(place), QLatin1String(suffix)));
    };
    return {piece("left"), piece("center"), piece("right")};
}

} // namespace

void TKImageButtonCell::drawBezelWithFrame(QPainter& painter, const QRectF& frame) const
{
    background(on ? "" : "_pressed").draw(painter, frame);
}

void TKImageButtonCell::highlight(bool flag, QPainter& painter, const QRectF& frame) const
{
    if (flag)
        background("_pressed").draw(painter, frame);
}
