#pragma once

#include "lib/SliderCell.h"
#include "platform/Images.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <functional>
#include <memory>

/// A slider cell with a low and a high knob. The high value is the base's slot, the low value is kept beside
/// it; while the low knob is dragged the two are swapped, so that the base's tracking moves the low knob.
/// minimum <= low <= high <= maximum after every setter, whatever it is given.
class SMDoubleSliderCell : public SliderCell {
public:
    void setMinValue(double value) override;
    void setMaxValue(double value) override;

    double doubleLoValue() const;
    double doubleHiValue() const;
    void setDoubleLoValue(double value);
    void setDoubleHiValue(double value);
    float floatLoValue() const { return static_cast<float>(doubleLoValue()); }
    float floatHiValue() const { return static_cast<float>(doubleHiValue()); }
    void setFloatLoValue(float value) { setDoubleLoValue(value); }
    void setFloatHiValue(float value) { setDoubleHiValue(value); }
    /// Truncated toward zero.
    int intLoValue() const;
    int intHiValue() const;
    void setIntLoValue(int value) { setDoubleLoValue(value); }
    void setIntHiValue(int value) { setDoubleHiValue(value); }
    int64_t integerLoValue() const;
    int64_t integerHiValue() const;
    void setIntegerLoValue(int64_t value) { setDoubleLoValue(static_cast<double>(value)); }
    void setIntegerHiValue(int64_t value) { setDoubleHiValue(static_cast<double>(value)); }
    /// As "%g" prints it.
    QString stringLoValue() const;
    QString stringHiValue() const;
    /// The number at the text's start; 0 when there is none.
    void setStringLoValue(const QString& text);
    void setStringHiValue(const QString& text);
    QVariant objectLoValue() const { return doubleLoValue(); }
    QVariant objectHiValue() const { return doubleHiValue(); }
    /// An object's own property "doubleLoValue" ("doubleHiValue") or "doubleValue", a number, or a text; 0.0
    /// for anything else.
    void setObjectLoValue(const QVariant& value);
    void setObjectHiValue(const QVariant& value);

    /// The plain values are those of the selected knob.
    double doubleValue() const override;
    void setDoubleValue(double value) override;
    // Of the widget library; the program's own windows use the double and int values only.
    float floatValue() const { return static_cast<float>(doubleValue()); }
    void setFloatValue(float value) { setDoubleValue(value); }
    int intValue() const { return trackingLoKnob() ? intLoValue() : intHiValue(); }
    void setIntValue(int value) { setDoubleValue(value); }
    QString stringValue() const { return trackingLoKnob() ? stringLoValue() : stringHiValue(); }
    void setStringValue(const QString& text);
    QVariant objectValue() const { return doubleValue(); }
    void setObjectValue(const QVariant& value);

    bool lockedSliders() const { return _sm_flags.lockedSliders; }
    /// Switching it on brings the low value to the high one.
    void setLockedSliders(bool flag);
    /// Whether the low knob is the selected one.
    bool trackingLoKnob() const { return _sm_flags.isTrackingLoKnob; }
    void setTrackingLoKnob(bool flag);
    /// Whether the view has the keyboard focus: the selected knob shows it.
    void setShowsFocus(bool flag);

    const platform::Image& knobLeftImage() const { return _knobLeftImage; }
    const platform::Image& knobRightImage() const { return _knobRightImage; }
    const platform::Image& barFillImage() const { return _barFillImage; }
    void setKnobLeftImage(const platform::Image& image);
    void setKnobRightImage(const platform::Image& image);
    void setBarFillImage(const platform::Image& image);

    QRectF loKnobRectFlipped(bool flipped);
    bool startTrackingAt(QPointF point, bool flipped) override;
    void continueTracking(QPointF point, bool flipped) override;
    void stopTracking(QPointF point, bool flipped) override;

    using SliderCell::drawKnob;
    void drawBarInside(QPainter& painter, const QRectF& rect, bool flipped) override;
    void drawKnob(QPainter& painter) override;
    void drawKnob(QPainter& painter, const QRectF& rect) override;

    void encodeWithCoder(QVariantMap& coder) const override;
    void initWithCoder(const QVariantMap& coder) override;
    /// Without a view and without the two reports below.
    // Of the widget library; the program's own windows do not use it.
    std::unique_ptr<SMDoubleSliderCell> copyWithZone() const;

    /// The user moved a knob; the number belongs into what the control is bound to.
    std::function<void(double)> updateBoundControllerLoValue;
    std::function<void(double)> updateBoundControllerHiValue;

private:
    /// Where a knob's picture is drawn; the knob itself when pictures are missing.
    QRectF pictureRect(const platform::Image& picture, const QRectF& knob, const QRectF& bar) const;
    bool choosesLoKnob(QPointF point, const QRectF& loKnob, bool flipped) const;

    QRectF _currentKnobRect;
    QRectF _barRect;
    bool _flipped = true;
    double _sm_loValue = 0;
    double _sm_saveValue = 0; // the high value while the low knob is dragged
    struct {
        bool lockedSliders : 1 = false;
        bool isTrackingLoKnob : 1 = false;
        bool mouseTrackingSwapped : 1 = false;
        bool removeFocusRingStyle : 1 = true;
    } _sm_flags;
    platform::Image _knobLeftImage;
    platform::Image _knobRightImage;
    platform::Image currentKnobImage;
    platform::Image _barFillImage;
};
