#pragma once

#include "platform/Geometry.h"

#include <QIcon>
#include <QString>

#include <memory>

class QPainter;
class QRectF;
class QSvgRenderer;

namespace platform {

/// A picture of the application's resources, drawn sharp at any size and scale.
/// A default-made one is empty: it draws nothing.
class Image {
public:
    Image() = default;

    bool isNull() const { return !renderer; }
    /// The name that it was found by.
    const QString& name() const { return imageName; }
    /// Its own size in points; zeros when empty.
    Size size() const;
    /// Stretched into the rectangle (the painter's coordinates).
    void draw(QPainter& painter, const QRectF& rect) const;
    QPixmap pixmap(QSize size, qreal scale) const;
    QIcon icon() const;

private:
    friend Image imageNamed(const QString& name);

    QString imageName;
    std::shared_ptr<QSvgRenderer> renderer;
};

/// The picture of that name ("icon_play_n"; an ending such as ".png" in the name does not matter);
/// an empty one when there is none.
Image imageNamed(const QString& name);

} // namespace platform
