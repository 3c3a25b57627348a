#pragma once

#include "lib/ProgressIndicator.h"

#include <QLabel>
#include <QPointer>

#include <cstdint>
#include <functional>
#include <optional>

/// A progress bar that can tell in a companion text how much is done and how long the rest will take, and
/// that can show itself on the application's icon. Main thread only.
class PMProgressIndicator : public ProgressIndicator {
    Q_OBJECT

public:
    explicit PMProgressIndicator(QWidget* parent = nullptr);
    ~PMProgressIndicator() override;

    /// Changes bar, icon and text, but only when the whole-number part of the value changes.
    void setDoubleValue(double value) override;

    /// The companion text; none at first.
    void setProgressText(QLabel* label) { progressText = label; }
    void updateProgressText();
    /// The time remaining is estimated from what is done from now on.
    void restartEstimate();
    /// Draws icon, text and bar anew.
    void display();

    // The getters are of the widget library; the program's own windows only set.
    /// On at first. Puts the bar on the icon or takes it off.
    bool drawDockProgress() const { return dockProgress; }
    void setDrawDockProgress(bool flag);
    /// Off at first.
    bool displayPercentage() const { return percentage; }
    void setDisplayPercentage(bool flag) { percentage = flag; }
    /// On at first.
    bool displayTimeRemaining() const { return timeRemaining; }
    void setDisplayTimeRemaining(bool flag) { timeRemaining = flag; }

    /// Seconds from any fixed moment; a steady clock at first.
    void setTimeSource(std::function<double()> seconds) { now = std::move(seconds); }

    /// How much is done, 0 to 1 within the range.
    double fraction() const;

private:
    void moveInterval();
    std::optional<QString> timeText() const;

    QPointer<QLabel> progressText;
    std::optional<double> startTime; // of the interval that the estimate is made from
    std::optional<double> startTime2; // of the next one
    bool dockProgress = true;
    bool alreadyBounced = false;
    bool percentage = false;
    bool timeRemaining = true;
    double startFraction = 0;
    double startFraction2 = 0;
    int32_t lastValue = 0;
    std::function<double()> now;
};

/// The text for a remaining time in seconds; empty when the estimate is infinite, negative or no number.
QString progressTimeText(double seconds);
