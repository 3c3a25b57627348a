#pragma once

#include <QStyledItemDelegate>

/// Draws a drive as a row: at the left its small picture, beside it the day with the kinds of its recordings
/// at the right, and on two lines below times, figures and how many moments it has.
class DriveRowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// How wide the pictures of a view are, in its pixels.
    static int pictureWidth(const QWidget& view);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(
        QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
