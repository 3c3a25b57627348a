#pragma once

#include <QSlider>

/// A horizontal slider over fractions from 0.0 to 1.0 (in steps of a millionth). A click on the track moves
/// the knob there. `setDoubleValue` is silent; `moved` reports only what the user does.
class PositionSlider : public QSlider {
    Q_OBJECT

public:
    explicit PositionSlider(QWidget* parent = nullptr);

    double doubleValue() const;
    /// Clamped to 0.0 and 1.0. Ignored while the user holds the knob.
    void setDoubleValue(double fraction);

signals:
    void moved(double fraction);
    /// The pointer goes over that place, at x of this widget, no button down.
    void hovered(double fraction, int x);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    QRect knob() const;
    int valueAt(double x) const;

    static constexpr int steps = 1'000'000;
};
