#pragma once

#include <QRectF>
#include <QVariantMap>

class QPainter;
class QWidget;

/// What a slider control is inside: one value within a range, where its knob and bar are, how the mouse moves
/// the knob, and how both look. Coordinates are the control view's. In a flipped view y grows downwards, as
/// it does in every widget; unflipped ones are for views that a caller turned itself.
class SliderCell {
public:
    virtual ~SliderCell() = default;

    double minValue() const { return minimum; }
    double maxValue() const { return maximum; }
    /// The other end moves along when they would cross. A value that is no number is ignored, here and below.
    virtual void setMinValue(double value);
    virtual void setMaxValue(double value);
    /// Kept within the range.
    virtual double doubleValue() const { return slot; }
    virtual void setDoubleValue(double value);
    /// How far one key press moves the knob.
    double altIncrementValue() const { return alternateIncrement; }
    void setAltIncrementValue(double value) { alternateIncrement = value; }
    /// Whether the value is reported while the knob is dragged, not only when it is let go.
    bool isContinuous() const { return continuous; }
    bool isVertical() const { return vertical; }
    bool isEnabled() const { return enabled; }
    void setEnabled(bool flag);

    /// The view that shows this cell; redrawn by the two below. None at first.
    void setControlView(QWidget* widget) { view = widget; }
    QWidget* controlView() const { return view; }
    void updateCell();
    void updateCell(const QRectF& rect);
    /// Where the cell is in its view.
    void setFrame(const QRectF& rect) { frame = rect; }

    QRectF barRectFlipped(bool flipped) const;
    /// The knob at the value in the slot.
    QRectF knobRectFlipped(bool flipped) const;

    /// The mouse goes down: the knob jumps to it unless it went down on the knob. False when disabled.
    virtual bool startTrackingAt(QPointF point, bool flipped);
    virtual void continueTracking(QPointF point, bool flipped);
    virtual void stopTracking(QPointF point, bool flipped);

    void draw(QPainter& painter, bool flipped);
    virtual void drawBarInside(QPainter& painter, const QRectF& rect, bool flipped);
    /// Draws the knob at the slot's value with the operation below.
    virtual void drawKnob(QPainter& painter);
    virtual void drawKnob(QPainter& painter, const QRectF& rect);

    /// Stores value, range, increment and the flags under their names; reads them back.
    virtual void encodeWithCoder(QVariantMap& coder) const;
    virtual void initWithCoder(const QVariantMap& coder);

    static constexpr double knobLength = 16; // along the bar
    static constexpr double knobThickness = 20;
    static constexpr double barThickness = 6;

protected:
    /// The one value that tracking moves and the knob's place comes from.
    double slotValue() const { return slot; }
    void setSlotValue(double value) { slot = value; }
    bool showsFocusRing = false;

private:
    double valueAt(QPointF point, bool flipped) const;

    double minimum = 0;
    double maximum = 1;
    double slot = 0;
    double alternateIncrement = 0;
    bool continuous = true;
    bool vertical = false;
    bool enabled = true;
    bool drawnFlipped = true;
    QWidget* view = nullptr;
    QRectF frame;
    double grip = 0; // from the knob's middle to where the mouse took it
};
