#include "lib/PMProgressIndicator.h"

#include "lib/PMProgressIndicatorController.h"
#include "platform/Texts.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

namespace {

constexpr double edge = 0.00001; // how near to an end counts as being there
constexpr double interval = 3.5; // seconds
constexpr double firstEstimate = 0.5; // seconds after the start

struct TimeText {
    double above; // seconds
    const char* key;
};

constexpr TimeText timeTexts[] = {
    {615, "progress.minutes_fmt"},
    {555, "progress.ten_minutes"},
    {495, "progress.nine_minutes"},
    {435, "progress.eight_minutes"},
    {375, "progress.seven_minutes"},
    {315, "progress.six_minutes"},
    {255, "progress.five_minutes"},
    {195, "progress.four_minutes"},
    {135, "progress.three_minutes"},
    {75, "progress.two_minutes"},
    {50, "progress.one_minute"},
    {10, "progress.less_than_a_minute"},
    {5, "progress.ten_seconds"},
    {-1, "progress.five_seconds"},
};

double steadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// The whole-number part, clamped to the range of the type.
int32_t wholeNumber(double value)
{
    if (std::isnan(value))
        return 0;
    constexpr double least = std::numeric_limits<int32_t>::min();
    constexpr double most = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::clamp(std::trunc(std::trunc(value) + 0.5), least, most));
}

QString percentText(const char* key, double fraction)
{
    QString text = platform::localized(key);
    text.replace(QLatin1String("%.0f"), QString::asprintf("%.0f", fraction * 100));
    return text.replace(QLatin1String("%%"), QLatin1String("%"));
}

} // namespace

QString progressTimeText(double seconds)
{
    if (!std::isfinite(seconds) || seconds < 0)
        return {};
    for (const auto& [above, key] : timeTexts) {
        if (seconds > above) {
            const double minutes = std::trunc(seconds / 60 + 0.75);
            return platform::localized(key).replace(QLatin1String("%d"), QString::asprintf("%.0f", minutes));
        }
    }
    return {};
}

PMProgressIndicator::PMProgressIndicator(QWidget* parent)
    : ProgressIndicator(parent),
      now(steadySeconds)
{
}

PMProgressIndicator::~PMProgressIndicator()
{
    setDrawDockProgress(false);
}

double PMProgressIndicator::fraction() const
{
    const double range = maxValue() - minValue();
    return range > 0 ? (doubleValue() - minValue()) / range : 0;
}

void PMProgressIndicator::setDoubleValue(double value)
{
    const int32_t key = wholeNumber(value);
    if (key == lastValue)
        return;
    ProgressIndicator::setDoubleValue(value);
    lastValue = key;
    if (dockProgress) {
        auto& dock = PMProgressIndicatorController::sharedInstance();
        dock.addProgressIndicator(*this);
        if (const double done = fraction(); done > 1 - edge || done < edge)
            dock.removeProgressIndicator(*this);
    }
    if (progressText)
        updateProgressText();
}

void PMProgressIndicator::setDrawDockProgress(bool flag)
{
    dockProgress = flag;
    auto& dock = PMProgressIndicatorController::sharedInstance();
    flag ? dock.addProgressIndicator(*this) : dock.removeProgressIndicator(*this);
}

void PMProgressIndicator::display()
{
    if (dockProgress)
        PMProgressIndicatorController::sharedInstance().drawProgressIndicators();
    if (progressText)
        progressText->update();
    update();
}

void PMProgressIndicator::restartEstimate()
{
    startTime.reset();
    startTime2.reset();
}

/// The estimate is made from an interval that restarts about every 3.5 seconds.
void PMProgressIndicator::moveInterval()
{
    const double moment = now();
    const double share = doubleValue() / maxValue();
    if (doubleValue() < minValue() + edge)
        restartEstimate();
    if (!startTime) {
        startTime = moment;
        startFraction = share;
        progressText->clear();
    }
    if (!startTime2 && moment - *startTime > interval) {
        startTime2 = moment;
        startFraction2 = share;
    }
    if (startTime2 && moment - *startTime2 > interval) {
        startTime = startTime2;
        startFraction = startFraction2;
        startTime2.reset();
    }
}

/// Nothing when no time is to be shown; an empty text when there is no usable estimate.
std::optional<QString> PMProgressIndicator::timeText() const
{
    const double elapsed = now() - *startTime;
    if (!timeRemaining || elapsed <= firstEstimate)
        return std::nullopt;
    const double rate = (fraction() - startFraction) / elapsed;
    return progressTimeText(rate > 0 ? (1 - fraction()) / rate : -1);
}

void PMProgressIndicator::updateProgressText()
{
    if (!progressText)
        return;
    if (isIndeterminate()) {
        progressText->clear();
        return;
    }
    moveInterval();
    const std::optional<QString> time = timeText();
    if (percentage && time && !time->isEmpty())
        progressText->setText(
            percentText("progress.percent_time_fmt", fraction()).replace(QLatin1String("%@"), *time));
    else if (percentage)
        progressText->setText(percentText("progress.percent_fmt", fraction()));
    else if (time)
        progressText->setText(*time);
}
