#include "lib/PMProgressIndicatorController.h"

#include "lib/DockIcon.h"
#include "lib/PMProgressIndicator.h"

#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

constexpr auto drawingDelay = std::chrono::milliseconds(100);
constexpr double barWidth = dockIconSide;
constexpr double rowHeight = 16;
constexpr double stripe = PMProgressIndicatorController::barberPeriod;
constexpr double spin = 1.5; // stripes in a second

/// One band of the bar; blue ones are as wide as the part that is done, grey ones as the rest.
struct Band {
    bool isDone;
    int red, green, blue;
    double above; // the row's lower edge
    double height;
};

constexpr Band bands[] = {
    {true, 129, 204, 255, 0, 11},
    {true, 105, 183, 255, 3, 6},
    {true, 94, 171, 254, 4, 4},
    {true, 76, 148, 229, 5, 2},
    {true, 94, 147, 213, 11, 1},
    {true, 59, 120, 185, 12, 1},
    {false, 241, 241, 241, 0, 11},
    {false, 228, 228, 228, 3, 6},
    {false, 210, 210, 210, 4, 4},
    {false, 200, 200, 200, 5, 2},
    {false, 200, 210, 210, 11, 1},
    {false, 160, 160, 160, 12, 1},
};

/// y counts from the icon's bottom.
QRectF placed(double x, double y, double width, double height)
{
    return {x, dockIconSide - y - height, width, height};
}

void drawPicture(QPainter& painter, const platform::Image& image, double x, double y)
{
    const auto [width, height] = image.size();
    image.draw(painter, placed(x, y, width, height));
}

} // namespace

PMProgressIndicatorController& PMProgressIndicatorController::sharedInstance()
{
    static PMProgressIndicatorController instance;
    return instance;
}

PMProgressIndicatorController::PMProgressIndicatorController()
    : dockIcon(applicationIcon()),
      blueBar(platform::imageNamed(QStringLiteral("blueProgress.tif"))),
      greyBar(platform::imageNamed(QStringLiteral("greyProgress.tif"))),
      barberBar(platform::imageNamed(QStringLiteral("barberProgress.tif")))
{
}

void PMProgressIndicatorController::setDispatcher(platform::Dispatcher* main, std::function<double()> seconds)
{
    cancelDrawing();
    dispatcher = main;
    now = std::move(seconds);
    lastSpin.reset();
}

void PMProgressIndicatorController::addProgressIndicator(PMProgressIndicator& bar)
{
    if (std::find(progressIndicators.begin(), progressIndicators.end(), &bar) == progressIndicators.end())
        progressIndicators.push_back(&bar);
    scheduleDrawing();
}

void PMProgressIndicatorController::removeProgressIndicator(const PMProgressIndicator& bar)
{
    std::erase(progressIndicators, &bar);
    scheduleDrawing();
}

void PMProgressIndicatorController::restoreIcon()
{
    setApplicationIcon(dockIcon);
}

/// A pending redraw covers this one.
void PMProgressIndicatorController::scheduleDrawing()
{
    if (!dispatcher || std::exchange(isDrawingPending, true))
        return;
    dispatcher->after(drawingDelay, pendingDrawing.guarded([this] { drawProgressIndicators(); }));
}

void PMProgressIndicatorController::cancelDrawing()
{
    isDrawingPending = false;
    pendingDrawing.renew();
}

bool PMProgressIndicatorController::isAnimating() const
{
    return std::any_of(progressIndicators.begin(), progressIndicators.end(),
        [](const PMProgressIndicator* bar) { return bar->isIndeterminate(); });
}

void PMProgressIndicatorController::drawProgressIndicators()
{
    cancelDrawing();
    if (progressIndicators.empty()) {
        restoreIcon();
        return;
    }
    setApplicationIcon(QIcon(QPixmap::fromImage(drawnIcon())));
    if (isAnimating())
        scheduleDrawing();
}

QImage PMProgressIndicatorController::drawnIcon()
{
    QImage icon = dockIconImage(dockIcon);
    QPainter painter(&icon);
    for (size_t row = 0; row < progressIndicators.size(); ++row)
        drawBar(painter, *progressIndicators[row], rowHeight * double(row));
    return icon;
}

void PMProgressIndicatorController::drawBar(QPainter& painter, const PMProgressIndicator& bar, double y)
{
    if (bar.isIndeterminate()) {
        drawBarberPole(painter, y);
        return;
    }
    const double range = bar.maxValue() - bar.minValue();
    const double done = range > 0 ? bar.doubleValue() * barWidth / range : 0;
    if (!blueBar.isNull() && !greyBar.isNull()) {
        drawPicture(painter, blueBar, done - barWidth, y);
        drawPicture(painter, greyBar, done, y);
        return;
    }
    for (const Band& band : bands) {
        const double x = band.isDone ? 0 : done;
        const double width = band.isDone ? done : barWidth - done;
        QColor color(band.red, band.green, band.blue);
        color.setAlphaF(0.78F);
        painter.fillRect(placed(x, y + band.above, width, band.height), color);
    }
}

void PMProgressIndicatorController::drawBarberPole(QPainter& painter, double y)
{
    const double moment = now ? now() : 0;
    const double elapsed = lastSpin ? moment - *lastSpin : 0;
    barberOffset -= (elapsed - std::trunc(elapsed)) * spin * stripe;
    if (barberOffset < 0)
        barberOffset += stripe;
    drawPicture(painter, barberBar, -barberOffset, y);
    lastSpin = moment;
}
