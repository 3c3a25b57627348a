#include "platform/Images.h"

#include <QFile>
#include <QHash>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace platform {

Size Image::size() const
{
    if (!renderer)
        return {};
    const QSizeF natural = renderer->viewBoxF().size();
    return {natural.width(), natural.height()};
}

void Image::draw(QPainter& painter, const QRectF& rect) const
{
    if (!renderer || rect.isEmpty())
        return;
    const qreal scale = painter.device()->devicePixelRatioF();
    const QSize pieces(int(std::ceil(rect.width())), int(std::ceil(rect.height())));
    painter.drawPixmap(rect, pixmap(pieces, scale), QRectF());
}

QPixmap Image::pixmap(QSize size, qreal scale) const
{
    if (!renderer)
        return {};
    const QString key =
        QStringLiteral("%1@%2x%3@%4").arg(imageName).arg(size.width()).arg(size.height()).arg(scale);
    QPixmap cached;
    if (QPixmapCache::find(key, &cached))
        return cached;
    QPixmap drawn((QSizeF(size) * scale).toSize());
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    renderer->render(&painter, QRectF(QPointF(), QSizeF(drawn.size())));
    painter.end();
    drawn.setDevicePixelRatio(scale);
    QPixmapCache::insert(key, drawn);
    return drawn;
}

QIcon Image::icon() const
{
    QIcon icon;
    if (!renderer)
        return icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(pixmap({side, side}, 1.0));
    return icon;
}

Image imageNamed(const QString& name)
{
    static QHash<QString, std::shared_ptr<QSvgRenderer>> found;
    const qsizetype stop = name.lastIndexOf(u'.');
    const QString base = stop > 0 ? name.first(stop) : name;
    auto entry = found.find(base);
    if (entry == found.end()) {
        const QString file = QStringLiteral(":/images/%1.svg").arg(base);
        auto renderer = QFile::exists(file) ? std::make_shared<QSvgRenderer>(file) : nullptr;
        if (renderer) {
            renderer->setAspectRatioMode(Qt::IgnoreAspectRatio);
            if (!renderer->isValid())
                renderer.reset();
        }
        entry = found.insert(base, std::move(renderer));
    }
    Image image;
    if (*entry) {
        image.imageName = base;
        image.renderer = *entry;
    }
    return image;
}

} // namespace platform
