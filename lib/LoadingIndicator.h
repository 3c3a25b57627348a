#pragma once

#include <QTimer>
#include <QWidget>

/// A slim bar that shows how far a file's preparation has come, with a moving sheen while it is animated.
class LoadingIndicator : public QWidget {
    Q_OBJECT

public:
    explicit LoadingIndicator(QWidget* parent = nullptr);

    static constexpr double minimum = 0;
    static constexpr double maximum = 100;

    /// Clamped to the minimum and maximum.
    void setDoubleValue(double value);
    double doubleValue() const { return value; }
    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return animation.isActive(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double value = minimum;
    int phase = 0;
    QTimer animation;
};
