#pragma once

#include <QWidget>

#include <array>
#include <cstdint>

/// How always, motion and event recordings share the card, as a bar of three colours. The bar's ends are
/// where the middles of a range slider's knobs of the same width stand at 0 and 100. Shares below 100 in sum
/// leave the rest empty; above 100 all parts are scaled down.
class ShareBar : public QWidget {
    Q_OBJECT

public:
    using Shares = std::array<int64_t, 3>; // percent; negative counts as 0

    explicit ShareBar(QWidget* parent = nullptr);

    void setShares(const Shares& percents);
    /// The parts in the view's coordinates.
    std::array<QRectF, 3> parts() const;

    QSize sizeHint() const override { return {200, 14}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF bar() const;

    Shares shares{};
};
