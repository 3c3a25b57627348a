#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"
#include "platform/Images.h"

#include <QIcon>
#include <QImage>

#include <functional>
#include <optional>
#include <vector>

class PMProgressIndicator;
class QPainter;

/// Shows progress bars on the application's icon, one row per listed bar from the bottom up. Main thread
/// only.
class PMProgressIndicatorController {
public:
    static constexpr double barberPeriod = 32; // the width of a stripe and its gap

    /// The one instance; made at the first use, with the icon that the application has then.
    static PMProgressIndicatorController& sharedInstance();
    PMProgressIndicatorController();
    PMProgressIndicatorController(const PMProgressIndicatorController&) = delete;
    PMProgressIndicatorController& operator=(const PMProgressIndicatorController&) = delete;

    /// Where delayed drawing runs and what time it is, in seconds from any fixed moment. Without them bars
    /// are listed but nothing is drawn by itself. To be taken away (null) before the dispatcher goes.
    void setDispatcher(platform::Dispatcher* main, std::function<double()> seconds);

    /// Appends it unless it is listed already. The icon follows 0.1 seconds later, as after a removal.
    void addProgressIndicator(PMProgressIndicator& bar);
    void removeProgressIndicator(const PMProgressIndicator& bar);
    size_t numProgressIndicators() const { return progressIndicators.size(); }

    /// Puts the icon back that was there at the start.
    void restoreIcon();
    /// Draws the icon now and cancels a pending redraw; redraws after 0.1 seconds while something moves.
    void drawProgressIndicators();
    /// The icon with its bars; each call moves the stripes one step.
    QImage drawnIcon();

private:
    void scheduleDrawing();
    void cancelDrawing();
    bool isAnimating() const;
    void drawBar(QPainter& painter, const PMProgressIndicator& bar, double y);
    void drawBarberPole(QPainter& painter, double y);

    std::vector<PMProgressIndicator*> progressIndicators;
    QIcon dockIcon;
    platform::Image blueBar;
    platform::Image greyBar;
    platform::Image barberBar;
    std::optional<double> lastSpin;
    double barberOffset = barberPeriod; // how far the stripes are moved to the left
    bool isDrawingPending = false;
    Life pendingDrawing; // until it is done or cancelled
    platform::Dispatcher* dispatcher = nullptr;
    std::function<double()> now;
};
