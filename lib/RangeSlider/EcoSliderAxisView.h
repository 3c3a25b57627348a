#pragma once

#include <QColor>
#include <QRectF>
#include <QWidget>

#include <array>

/// The tick marks under a two-knob slider: 22 of them, the first, the eleventh and the last one longer. Ticks
/// that lie beyond the view's right edge are not seen; 496 points wide, the ticks stand at every 5 % of a
/// slider of that width.
class EcoSliderAxisView : public QWidget {
    Q_OBJECT

public:
    explicit EcoSliderAxisView(QWidget* parent = nullptr);

    static constexpr int tickCount = 22;
    /// y counts from the view's bottom.
    static std::array<QRectF, tickCount> ticks(double width);

    QSize sizeHint() const override { return {200, 14}; }

    QColor backgroundColor; // not used when drawing

protected:
    void paintEvent(QPaintEvent* event) override;
};
