#include "app/drives/DriveRowDelegate.h"

#include "app/drives/DriveListModel.h"
#include "lib/Style.h"
#include "platform/Images.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int margin = 8;
constexpr int lineGap = 2;
constexpr int iconSize = 18;
constexpr QSize pictureSize(80, 45);

QFont smallFont(QFont font)
{
    font.setPixelSize(11);
    return font;
}

QFont dayFont(QFont font)
{
    font.setPixelSize(12);
    font.setBold(true);
    return font;
}

/// The texts on two lines, divided between two of them; what is too long is cut.
void drawOnTwoLines(QPainter& painter, const QRect& first, const QStringList& texts)
{
    const QString between = QStringLiteral(" · ");
    const QFontMetrics metrics = painter.fontMetrics();
    QStringList above = texts;
    while (above.size() > 1 && metrics.horizontalAdvance(above.join(between)) > first.width())
        above.removeLast();
    const QStringList below = texts.mid(above.size());
    QRect line = first;
    for (const QStringList& part : {above, below}) {
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
            metrics.elidedText(part.join(between), Qt::ElideRight, line.width()));
        line.translate(0, metrics.height() + lineGap);
    }
}

void drawPicture(QPainter& painter, const QRect& place, const QImage& picture)
{
    painter.fillRect(place, style::videoBackdrop);
    if (picture.isNull())
        return platform::imageNamed(QStringLiteral("icon_play_n"))
            .icon()
            .paint(&painter, QRect(place.center() - QPoint(11, 11), QSize(22, 22)), Qt::AlignCenter,
                QIcon::Disabled);
    QRect target(QPoint(), picture.size().scaled(place.size(), Qt::KeepAspectRatio));
    target.moveCenter(place.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, picture);
}

} // namespace

int DriveRowDelegate::pictureWidth(const QWidget& view)
{
    return int(std::lround(pictureSize.width() * view.devicePixelRatioF()));
}

QSize DriveRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const int lines = QFontMetrics(dayFont(option.font)).height()
        + 2 * (QFontMetrics(smallFont(option.font)).height() + lineGap);
    return {0, std::max(lines, pictureSize.height()) + 2 * margin};
}

void DriveRowDelegate::paint(
    QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem row = option;
    initStyleOption(&row, index);
    row.text.clear();
    const QStyle* style = row.widget ? row.widget->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &row, painter, row.widget);

    painter->save();
    QRect space = row.rect.adjusted(margin, margin, -margin, -margin);
    QRect picture(space.topLeft(), pictureSize);
    picture.moveTop(space.top() + (space.height() - picture.height()) / 2);
    drawPicture(*painter, picture, index.data(DriveListModel::pictureRole).value<QImage>());
    space.setLeft(picture.right() + 1 + margin);

    painter->setPen(
        row.palette.color(row.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text));
    QRect first = space;
    painter->setFont(dayFont(row.font));
    first.setHeight(painter->fontMetrics().height());
    int right = first.right();
    const QStringList kinds = index.data(DriveListModel::kindsRole).toStringList();
    for (auto kind = kinds.crbegin(); kind != kinds.crend(); ++kind) {
        platform::imageNamed(*kind).icon().paint(
            painter, QRect(right - iconSize, first.top() - 1, iconSize, iconSize));
        right -= iconSize + 2;
    }
    first.setRight(right);
    painter->drawText(first, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip,
        painter->fontMetrics().elidedText(
            index.data(DriveListModel::dayRole).toString(), Qt::ElideRight, first.width()));

    QStringList texts{index.data(DriveListModel::timesRole).toString()};
    texts += index.data(DriveListModel::figuresRole).toString().split(QStringLiteral(" · "));
    texts += index.data(DriveListModel::momentsRole).toString();
    texts.removeAll(QString());
    QRect second = space;
    second.setTop(first.bottom() + 1 + lineGap);
    painter->setFont(smallFont(row.font));
    second.setHeight(painter->fontMetrics().height());
    drawOnTwoLines(*painter, second, texts);
    painter->restore();
}
