#include "lib/PreviewTip.h"

#include "lib/Style.h"

#include <QPainter>

#include <algorithm>

namespace {

constexpr int frame = 5;
constexpr int textGap = 3;
constexpr int windowMargin = 6;
constexpr int radius = 6;

} // namespace

PreviewTip::PreviewTip(QWidget* window)
    : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    hide();
}

void PreviewTip::setText(const QString& text)
{
    if (line == text)
        return;
    line = text;
    setAccessibleDescription(text);
    place();
}

void PreviewTip::setPicture(const QImage& picture)
{
    shown = picture;
    hasRoom = true;
    place();
}

void PreviewTip::setWithoutPicture()
{
    shown = {};
    hasRoom = false;
    place();
}

QSize PreviewTip::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int text = metrics.horizontalAdvance(line) + 4;
    const int height = metrics.height() + 2 * frame;
    if (!hasRoom)
        return {text + 2 * frame, height};
    return {std::max(text, room.width()) + 2 * frame, height + room.height() + textGap};
}

QRect PreviewTip::placed(QSize tip, int x, const QRect& part, const QRect& window)
{
    const QRect within = window.adjusted(windowMargin, windowMargin, -windowMargin, -windowMargin);
    const int left = std::max(std::min(x - tip.width() / 2, within.right() + 1 - tip.width()), within.left());
    int top = part.top() - windowMargin - tip.height();
    if (top < within.top())
        top = std::min(part.bottom() + 1 + windowMargin, within.bottom() + 1 - tip.height());
    return {QPoint(left, std::max(top, within.top())), tip};
}

void PreviewTip::showAbove(const QRect& part, int x)
{
    above = part;
    middle = x;
    ensurePolished();
    place();
    show();
    raise();
}

void PreviewTip::place()
{
    setGeometry(placed(sizeHint(), middle, above, parentWidget()->rect()));
    update();
}

void PreviewTip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(style::line);
    painter.setBrush(style::header);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    if (hasRoom) {
        const QRect place((width() - room.width()) / 2, frame, room.width(), room.height());
        painter.fillRect(place, style::videoBackdrop);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        if (!shown.isNull()) {
            QRect target(QPoint(), shown.size().scaled(place.size(), Qt::KeepAspectRatio));
            target.moveCenter(place.center());
            painter.drawImage(target, shown);
        }
    }
    painter.setPen(style::text);
    painter.drawText(rect().adjusted(0, 0, 0, -frame), Qt::AlignHCenter | Qt::AlignBottom, line);
}
