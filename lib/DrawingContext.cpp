#include "lib/DrawingContext.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>

namespace drawing {

namespace {

QColor toolkitColor(const Color& color)
{
    return QColor::fromRgbF(float(color.red), float(color.green), float(color.blue), float(color.alpha));
}

QFont toolkitFont(const Font& font)
{
    QFont result(font.name);
    result.setStyleHint(QFont::SansSerif);
    result.setPixelSize(int(std::lround(font.size)));
    return result;
}

} // namespace

DrawingContext::DrawingContext(QPainter& target, double viewHeight)
    : painter(target),
      height(viewHeight)
{
    painter.setRenderHint(QPainter::Antialiasing);
}

void DrawingContext::fillRect(const Rect& rect)
{
    const qreal scale = painter.device()->devicePixelRatioF();
    const auto snapped = [scale](double edge) { return std::round(edge * scale) / scale; };
    const double left = snapped(rect.x);
    const double top = snapped(height - rect.maxY());
    const double width = std::max(snapped(rect.width), 1 / scale);
    const double tall = std::max(snapped(rect.height), 1 / scale);
    painter.fillRect(QRectF(left, top, width, tall), toolkitColor(fill));
}

void DrawingContext::moveToPoint(Point point)
{
    path.assign(1, point);
}

void DrawingContext::strokePath()
{
    QPolygonF line;
    line.reserve(qsizetype(path.size()));
    for (const Point& point : path)
        line.append(QPointF(point.x, height - point.y));
    path.clear();
    painter.setPen(QPen(toolkitColor(stroke), lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    // Where a point is several pixels wide, a long line is drawn much faster in pieces.
    constexpr qsizetype piece = 16;
    const qsizetype last = line.size() - 1;
    for (qsizetype first = 0; first < std::max<qsizetype>(last, 1); first += piece)
        painter.drawPolyline(line.constData() + first, int(std::min(piece, last - first) + 1));
}

Size DrawingContext::sizeOfText(const QString& text, const Font& font) const
{
    const QFontMetricsF metrics(toolkitFont(font), painter.device());
    return {metrics.horizontalAdvance(text), metrics.height()};
}

void DrawingContext::drawText(const QString& text, Point point, const Font& font, const Color& color)
{
    const QFont drawn = toolkitFont(font);
    const QFontMetricsF metrics(drawn, painter.device());
    painter.setFont(drawn);
    painter.setPen(toolkitColor(color));
    painter.drawText(QPointF(point.x, height - point.y - metrics.descent()), text);
}

} // namespace drawing
