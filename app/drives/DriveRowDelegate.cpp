#include "app/drives/DriveRowDelegate.h"

#include "app/drives/DriveListModel.h"
#include "platform/Images.h"

#include <QApplication>
#include <QPainter>

namespace {

constexpr int margin = 8;
constexpr int lineGap = 2;
constexpr int iconSize = 18;

/// The option with the font of a row's second line.
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

} // namespace

QSize DriveRowDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const
{
    const int lines =
        QFontMetrics(dayFont(option.font)).height() + QFontMetrics(smallFont(option.font)).height();
    return {0, lines + lineGap + 2 * margin};
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
    painter->setPen(
        row.palette.color(row.state & QStyle::State_Selected ? QPalette::HighlightedText : QPalette::Text));
    QRect space = row.rect.adjusted(margin, margin, -margin, -margin);
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
    const QString times = index.data(DriveListModel::timesRole).toString();
    const QString heading = index.data(DriveListModel::dayRole).toString() + "   " + times;
    painter->drawText(first, Qt::AlignLeft | Qt::AlignVCenter,
        painter->fontMetrics().elidedText(heading, Qt::ElideRight, first.width()));

    QRect second = space;
    second.setTop(first.bottom() + lineGap);
    painter->setFont(smallFont(row.font));
    QString figures = index.data(DriveListModel::figuresRole).toString();
    if (const QString moments = index.data(DriveListModel::momentsRole).toString(); !moments.isEmpty())
        figures += QStringLiteral(" · ") + moments;
    painter->drawText(second, Qt::AlignLeft | Qt::AlignVCenter,
        painter->fontMetrics().elidedText(figures, Qt::ElideRight, second.width()));
    painter->restore();
}
