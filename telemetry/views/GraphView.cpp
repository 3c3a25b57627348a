#include "telemetry/views/GraphView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr double marginX = 20;
constexpr double marginY = 8;
constexpr double pointsPerPoint = 10;

struct Axis {
    float ZVKGSensor::*value;
    drawing::Color color;
};

constexpr Axis axes[] = {
    {&ZVKGSensor::x, {1, 0, 0, 1}},
    {&ZVKGSensor::y, {0, 1, 0, 1}},
    {&ZVKGSensor::z, {0, 0, 1, 1}},
};

constexpr drawing::Color gridColor{0.8, 0.8, 0.8, 1};
constexpr drawing::Color white{1, 1, 1, 1};

/// The line with no more than its first, lowest, highest and last point in a column of the given width: a
/// column of one pixel looks the same.
std::vector<platform::Point> thinned(const std::vector<platform::Point>& line, double column)
{
    std::vector<platform::Point> result;
    result.reserve(line.size());
    for (auto first = line.begin(); first != line.end();) {
        const double right = first->x + column;
        auto low = first;
        auto high = first;
        auto next = first + 1;
        for (; next != line.end() && next->x < right; ++next) {
            if (next->y < low->y)
                low = next;
            if (next->y > high->y)
                high = next;
        }
        result.push_back(*first);
        for (auto kept = first; const auto point : {std::min(low, high), std::max(low, high), next - 1})
            if (point != std::exchange(kept, point))
                result.push_back(*point);
        first = next;
    }
    return result;
}

} // namespace

GraphView::GraphView(QWidget* parent)
    : QWidget(parent)
{
    setMouseTracking(true);
}

void GraphView::setGraphData(std::vector<ZVKGSensor> samples)
{
    values = std::move(samples);
    drawnChart = {};
    update();
}

void GraphView::updateTimePosition(double fraction)
{
    // Only where the bar was and where it is now.
    update(barOnScreen());
    position = fraction;
    update(barOnScreen());
}

QRect GraphView::barOnScreen() const
{
    const platform::Rect bar = timeBar();
    return QRectF(bar.x, height() - bar.maxY(), bar.width, bar.height).toAlignedRect().adjusted(-1, -1, 1, 1);
}

double GraphView::fractionAt(double x) const
{
    return std::clamp((x - marginX) / std::max(graphAreaSize().width, 1.0), 0.0, 1.0);
}

void GraphView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || values.empty() || !picked)
        return event->ignore();
    picked(fractionAt(event->position().x()));
}

void GraphView::mouseMoveEvent(QMouseEvent* event)
{
    if (values.empty())
        return;
    const double fraction = fractionAt(event->position().x());
    if (event->buttons() & Qt::LeftButton && picked)
        picked(fraction);
    if (described)
        QToolTip::showText(event->globalPosition().toPoint(), described(fraction), this);
}

platform::Point GraphView::graphAreaLeftBottom() const
{
    return {marginX, marginY};
}

platform::Size GraphView::graphAreaSize() const
{
    return {width() - 2 * marginX, height() - 2 * marginY};
}

platform::Point GraphView::graphAreaZeroValuePoint() const
{
    return {marginX, marginY + graphAreaSize().height * 0.5};
}

std::vector<platform::Point> GraphView::polyline(float ZVKGSensor::*axis) const
{
    const auto [zeroX, zeroY] = graphAreaZeroValuePoint();
    const double scale = graphAreaSize().height * 0.25;
    const double plotted = graphAreaSize().width * pointsPerPoint + 1;
    const double samplesPerPoint = double(values.size()) / plotted;
    const double startX = zeroX + 1;

    std::vector<platform::Point> line;
    if (values.empty())
        return line;
    line.reserve(static_cast<size_t>(plotted) + 1);
    const auto add = [&line](platform::Point point) {
        const size_t n = line.size();
        if (n >= 2 && line[n - 1].y == point.y && line[n - 2].y == point.y)
            line.back() = point;
        else
            line.push_back(point);
    };
    add({startX, double(values[0].*axis) * scale + zeroY});
    for (double k = 1; k < plotted; ++k) {
        const auto index = static_cast<size_t>(samplesPerPoint * k);
        if (index >= values.size())
            break;
        add({startX + k * 0.1, double(values[index].*axis) * scale + zeroY});
    }
    return line;
}

platform::Rect GraphView::timeBar() const
{
    const auto area = graphAreaSize();
    return {marginX + area.width * position, marginY, 2, area.height};
}

void GraphView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawRect(painter);
}

void GraphView::drawRect(QPainter& painter)
{
    painter.drawPixmap(0, 0, chart());
    if (values.empty())
        return;
    drawing::DrawingContext context(painter, height());
    drawTimePositionVerticalBarWithContext(context);
}

const QPixmap& GraphView::chart()
{
    const QSize wanted = size() * devicePixelRatio();
    if (drawnChart.size() == wanted && drawnChart.devicePixelRatio() == devicePixelRatio())
        return drawnChart;
    drawnChart = QPixmap(wanted);
    drawnChart.setDevicePixelRatio(devicePixelRatio());
    drawnChart.fill(Qt::transparent);
    QPainter painter(&drawnChart);
    drawing::DrawingContext context(painter, height());
    drawBackgroundRect(context);
    if (!values.empty())
        drawGraphDataWithContext(context);
    return drawnChart;
}

void GraphView::drawBackgroundRect(drawing::DrawingContext& context)
{
    const auto [left, bottom] = graphAreaLeftBottom();
    const auto [areaWidth, areaHeight] = graphAreaSize();
    const double quarter = areaHeight * 0.25;
    context.setFillColor(gridColor);
    for (int k = 0; k <= 4; ++k)
        context.fillRect({left, bottom + k * quarter, areaWidth, 1});
    context.fillRect({left, bottom, 1, areaHeight});

    constexpr const char* labels[] = {"-2", "-1", "0", "+1", "+2"};
    for (int k = 0; k <= 4; ++k)
        drawString(context, QLatin1String(labels[k]), {marginX, bottom + k * quarter});
}

void GraphView::drawString(drawing::DrawingContext& context, const QString& text, platform::Point point)
{
    const drawing::Font font{QStringLiteral("helvetica"), 12};
    const auto [textWidth, textHeight] = context.sizeOfText(text, font);
    context.drawText(text, {point.x - (textWidth + 2), point.y - (textHeight * 0.5 - 2)}, font, white);
}

void GraphView::drawGraphDataWithContext(drawing::DrawingContext& context)
{
    context.setLineWidth(1);
    for (const Axis& axis : axes) {
        const auto line = thinned(polyline(axis.value), 1 / devicePixelRatioF());
        context.setStrokeColor(axis.color);
        context.moveToPoint(line.front());
        for (size_t i = 1; i < line.size(); ++i)
            context.addLineToPoint(line[i]);
        context.strokePath();
    }
}

void GraphView::drawTimePositionVerticalBarWithContext(drawing::DrawingContext& context)
{
    context.setFillColor(white);
    context.fillRect(timeBar());
}
