#pragma once

#include <QProgressBar>

/// A progress bar over a range of numbers; an indeterminate one moves while its animation runs and stands
/// empty otherwise.
class ProgressIndicator : public QProgressBar {
    Q_OBJECT

public:
    explicit ProgressIndicator(QWidget* parent = nullptr);

    double minValue() const { return least; }
    double maxValue() const { return most; }
    double doubleValue() const { return current; }
    void setMinValue(double value);
    void setMaxValue(double value);
    /// Kept as given; drawn within the range.
    virtual void setDoubleValue(double value);

    bool isIndeterminate() const { return indeterminate; }
    void setIndeterminate(bool flag);
    void startAnimation();
    void stopAnimation();
    bool isAnimating() const { return animating; }

private:
    void showState();

    double least = 0;
    double most = 100;
    double current = 0;
    bool indeterminate = false;
    bool animating = false;
};
