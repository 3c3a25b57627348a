#pragma once

#include "lib/RangeSlider/SMDoubleSliderCell.h"

#include <QWidget>

#include <array>
#include <memory>

class KeyPathObserver;

/// A horizontal slider with a low and a high knob, of which one is selected. Tab goes from the low knob to
/// the high one and then on; arrow keys move the selected knob by the alternate increment, Page Up and Page
/// Down by ten of them, Home and End as far as it can go.
///
/// The properties "objectLoValue" and "objectHiValue" can be bound to a number of another object: they follow
/// it, and what the user does to a knob is written back. A value that is absent or ambiguous disables the
/// slider.
class SMDoubleSlider : public QWidget {
    Q_OBJECT
    Q_PROPERTY(double doubleLoValue READ doubleLoValue WRITE setDoubleLoValue)
    Q_PROPERTY(double doubleHiValue READ doubleHiValue WRITE setDoubleHiValue)

public:
    explicit SMDoubleSlider(QWidget* parent = nullptr);
    ~SMDoubleSlider() override;

    SMDoubleSliderCell& cell() { return *doubleCell; }
    const SMDoubleSliderCell& cell() const { return *doubleCell; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    double minValue() const { return doubleCell->minValue(); }
    double maxValue() const { return doubleCell->maxValue(); }
    void setMinValue(double value) { doubleCell->setMinValue(value); }
    void setMaxValue(double value) { doubleCell->setMaxValue(value); }
    double altIncrementValue() const { return doubleCell->altIncrementValue(); }
    void setAltIncrementValue(double value) { doubleCell->setAltIncrementValue(value); }

    double doubleLoValue() const { return doubleCell->doubleLoValue(); }
    double doubleHiValue() const { return doubleCell->doubleHiValue(); }
    void setDoubleLoValue(double value) { doubleCell->setDoubleLoValue(value); }
    void setDoubleHiValue(double value) { doubleCell->setDoubleHiValue(value); }
    float floatLoValue() const { return doubleCell->floatLoValue(); }
    float floatHiValue() const { return doubleCell->floatHiValue(); }
    void setFloatLoValue(float value) { doubleCell->setFloatLoValue(value); }
    void setFloatHiValue(float value) { doubleCell->setFloatHiValue(value); }
    int intLoValue() const { return doubleCell->intLoValue(); }
    int intHiValue() const { return doubleCell->intHiValue(); }
    void setIntLoValue(int value) { doubleCell->setIntLoValue(value); }
    void setIntHiValue(int value) { doubleCell->setIntHiValue(value); }
    int64_t integerLoValue() const { return doubleCell->integerLoValue(); }
    int64_t integerHiValue() const { return doubleCell->integerHiValue(); }
    void setIntegerLoValue(int64_t value) { doubleCell->setIntegerLoValue(value); }
    void setIntegerHiValue(int64_t value) { doubleCell->setIntegerHiValue(value); }
    QString stringLoValue() const { return doubleCell->stringLoValue(); }
    QString stringHiValue() const { return doubleCell->stringHiValue(); }
    void setStringLoValue(const QString& text) { doubleCell->setStringLoValue(text); }
    void setStringHiValue(const QString& text) { doubleCell->setStringHiValue(text); }
    QVariant objectLoValue() const { return doubleCell->objectLoValue(); }
    QVariant objectHiValue() const { return doubleCell->objectHiValue(); }
    /// An absent value or a controller marker disables the slider.
    void setObjectLoValue(const QVariant& value);
    void setObjectHiValue(const QVariant& value);

    bool trackingLoKnob() const { return doubleCell->trackingLoKnob(); }
    void setTrackingLoKnob(bool flag) { doubleCell->setTrackingLoKnob(flag); }
    bool lockedSliders() const { return doubleCell->lockedSliders(); }
    void setLockedSliders(bool flag) { doubleCell->setLockedSliders(flag); }
    const platform::Image& knobLeftImage() const { return doubleCell->knobLeftImage(); }
    const platform::Image& knobRightImage() const { return doubleCell->knobRightImage(); }
    const platform::Image& barFillImage() const { return doubleCell->barFillImage(); }
    void setKnobLeftImage(const platform::Image& image) { doubleCell->setKnobLeftImage(image); }
    void setKnobRightImage(const platform::Image& image) { doubleCell->setKnobRightImage(image); }
    void setBarFillImage(const platform::Image& image) { doubleCell->setBarFillImage(image); }

    /// From now on the value named by the binding follows the number at the object's key path; the value of
    /// now is not taken. Other names do nothing. Bindings end when the slider leaves its parent.
    void bind(const QString& binding, QObject* object, const QString& keyPath);
    void unbind(const QString& binding);
    void unbindAll();
    void updateBoundControllerLoValue(double value);
    void updateBoundControllerHiValue(double value);
    /// The value of that name becomes 0.0.
    // Of the widget library; the program's own windows do not use it.
    void setNilValueForKey(const QString& key);

    void insertTab();
    void insertBacktab();

protected:
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void awakeFromNib();
    void observeValueForKeyPath(size_t context);
    void updateBoundController(size_t context, double value);
    void moveSelectedKnob(double value);
    void announceValue();

    std::unique_ptr<SMDoubleSliderCell> doubleCell;
    std::array<std::unique_ptr<KeyPathObserver>, 2> bindings; // low, high
    bool isTracking = false;
};
