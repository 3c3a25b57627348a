#pragma once

#include <QStyledItemDelegate>

/// Shows file names whole: what does not fit into one line goes on in the next, after an underscore where
/// there is one. The cell's own text stays as it is.
class MediaNameDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override;
};
