#pragma once

#include <QImage>
#include <QRectF>
#include <QSizeF>

#include <array>
#include <memory>

class QPainter;

/// A picture cut into thirds both ways and stretched over a frame: corners keep their size, edges grow along
/// the frame, the centre takes the rest. Where the picture's size is no multiple of 3, corners are rounded up
/// to whole points.
/// Part of the widget library; not used by the program's own windows.
class NinePartLayer {
public:
    using Row = std::array<QImage, 3>;

    static std::unique_ptr<NinePartLayer> layerWithImage(const QImage& image);
    /// One rectangle of a picture as a picture of that size; a null one, and a log line, when it is not
    /// inside.
    static QImage imageFromImage(const QImage& image, const QRect& rectangle);

    void setImage(const QImage& image);
    void setFrame(const QRectF& frame);

    /// The pieces by row, top row first.
    const std::array<Row, 3>& images() const { return pieces; }
    /// One third of the picture.
    QSizeF blockSize() const { return block; }
    /// Where the pieces stand, by row; they fill the frame.
    const std::array<std::array<QRectF, 3>, 3>& layers() const { return frames; }
    void draw(QPainter& painter) const;

private:
    void updateLayers();

    std::array<Row, 3> pieces;
    std::array<std::array<QRectF, 3>, 3> frames;
    QSizeF block;
    QRectF whole;
};
