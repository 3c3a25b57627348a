#pragma once

#include "platform/Geometry.h"

#include <QString>

#include <vector>

class QPainter;

namespace drawing {

using platform::Point;
using platform::Rect;
using platform::Size;

/// Red, green, blue and alpha, each 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
};

struct Font {
    QString name;
    double size = 12;
};

/// Draws into a view whose coordinates grow upwards from its lower-left corner, in points.
class DrawingContext {
public:
    DrawingContext(QPainter& painter, double viewHeight);

    void setFillColor(const Color& color) { fill = color; }
    /// Edges are moved to the nearest device pixel, so thin bars stay crisp.
    void fillRect(const Rect& rect);

    void setStrokeColor(const Color& color) { stroke = color; }
    void setLineWidth(double width) { lineWidth = width; }
    void moveToPoint(Point point);
    void addLineToPoint(Point point) { path.push_back(point); }
    /// Strokes the lines added since the last move, with round joins, and forgets them.
    void strokePath();

    Size sizeOfText(const QString& text, const Font& font) const;
    /// The point is the lower-left corner of the text's box.
    void drawText(const QString& text, Point point, const Font& font, const Color& color);

private:
    QPainter& painter;
    double height;
    Color fill;
    Color stroke;
    double lineWidth = 1;
    std::vector<Point> path;
};

} // namespace drawing
