#pragma once

#include "lib/DrawingContext.h"
#include "platform/Geometry.h"
#include "telemetry/ZVKGSensor.h"

#include <QPixmap>
#include <QWidget>

#include <functional>
#include <vector>

/// Strip chart of a recording's G-sensor samples: three lines (X red, Y green, Z blue) over a fixed scale
/// of -2 g to +2 g, and a white bar at the play position. Geometry is in points, y up from the view's
/// lower-left corner. The view paints no background; its container shows through. A click goes to a place of
/// the recording; the pointer shows the values of its place. Main thread only.
class GraphView : public QWidget {
public:
    explicit GraphView(QWidget* parent = nullptr);

    /// The samples in time order. Until the next call the view keeps showing them.
    void setGraphData(std::vector<ZVKGSensor> samples);
    /// Fraction of the recording, 0.0 to 1.0.
    void updateTimePosition(double position);

    const std::vector<ZVKGSensor>& graphData() const { return values; }
    double timePosition() const { return position; }

    /// A click or drag goes there, a fraction of the recording from 0.0 to 1.0; none: it takes no clicks.
    std::function<void(double fraction)> picked;
    /// What there is at that fraction, shown at the pointer; empty for nothing.
    std::function<QString(double fraction)> described;

    platform::Point graphAreaLeftBottom() const;
    platform::Size graphAreaSize() const;
    /// The left end of the 0 g line.
    platform::Point graphAreaZeroValuePoint() const;

    /// The line of one axis as it is drawn: points 0.1 apart, the first one point right of the zero point.
    /// Points between equal neighbours are left out; the line stays the same.
    std::vector<platform::Point> polyline(float ZVKGSensor::*axis) const;
    platform::Rect timeBar() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void drawRect(QPainter& painter);
    void drawBackgroundRect(drawing::DrawingContext& context);
    void drawGraphDataWithContext(drawing::DrawingContext& context);
    void drawTimePositionVerticalBarWithContext(drawing::DrawingContext& context);
    void drawString(drawing::DrawingContext& context, const QString& text, platform::Point point);
    const QPixmap& chart();
    QRect barOnScreen() const;
    double fractionAt(double x) const;

    std::vector<ZVKGSensor> values;
    double position = 0;
    /// Grid and lines as last drawn: they change with the data and the size, not with the position.
    QPixmap drawnChart;
};
