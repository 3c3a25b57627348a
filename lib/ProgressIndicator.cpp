#include "lib/ProgressIndicator.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int steps = 10'000;

}

ProgressIndicator::ProgressIndicator(QWidget* parent)
    : QProgressBar(parent)
{
    setTextVisible(false);
    showState();
}

void ProgressIndicator::setMinValue(double value)
{
    least = value;
    showState();
}

void ProgressIndicator::setMaxValue(double value)
{
    most = value;
    showState();
}

void ProgressIndicator::setDoubleValue(double value)
{
    current = value;
    showState();
}

void ProgressIndicator::setIndeterminate(bool flag)
{
    indeterminate = flag;
    showState();
}

void ProgressIndicator::startAnimation()
{
    animating = true;
    showState();
}

void ProgressIndicator::stopAnimation()
{
    animating = false;
    showState();
}

void ProgressIndicator::showState()
{
    if (indeterminate) {
        setRange(0, animating ? 0 : steps);
        setValue(0);
        return;
    }
    const double fraction = most > least ? (current - least) / (most - least) : 0;
    setRange(0, steps);
    setValue(std::isfinite(fraction) ? int(std::clamp(fraction, 0.0, 1.0) * steps) : 0);
}
