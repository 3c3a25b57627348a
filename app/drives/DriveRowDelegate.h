#pragma once

#include <QStyledItemDelegate>

/// Draws a drive as a row of two lines: day and times, then the figures; at the right the kinds of its
/// recordings and how many moments it has.
class DriveRowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
