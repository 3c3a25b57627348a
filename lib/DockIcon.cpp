#include "lib/DockIcon.h"

#include <QApplication>
#include <QPainter>

QIcon applicationIcon()
{
    return QApplication::windowIcon();
}

void setApplicationIcon(const QIcon& icon)
{
    QApplication::setWindowIcon(icon);
}

QImage dockIconImage(const QIcon& icon)
{
    constexpr int pixels = 2 * dockIconSide;
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!icon.isNull())
        painter.drawPixmap(image.rect(), icon.pixmap(QSize(pixels, pixels), 1.0));
    painter.end();
    image.setDevicePixelRatio(2);
    return image;
}
