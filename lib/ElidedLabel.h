#pragma once

#include <QLabel>

/// A line of text that is elided in the middle when it does not fit; it has no minimum width.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};
