#include "lib/RangeSlider/SMDoubleSliderCell.h"

#include <QObject>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

template <typename Integer> Integer truncated(double value)
{
    constexpr auto least = std::numeric_limits<Integer>::min();
    constexpr auto most = std::numeric_limits<Integer>::max();
    if (value <= static_cast<double>(least))
        return least;
    return value >= static_cast<double>(most) ? most : static_cast<Integer>(value);
}

double numberAtStart(const QString& text)
{
    QByteArray bytes = text.trimmed().toLatin1();
    if (bytes.startsWith('+'))
        bytes.remove(0, 1);
    double value = 0;
    std::from_chars(bytes.constData(), bytes.constData() + bytes.size(), value);
    return std::isnan(value) ? 0 : value;
}

double numberOf(const QVariant& value, const char* ownProperty)
{
    if (const auto* object = value.value<QObject*>()) {
        for (const char* name : {ownProperty, "doubleValue", "floatValue", "intValue", "stringValue"}) {
            const QVariant found = object->property(name);
            if (found.isValid())
                return numberOf(found, ownProperty);
        }
        return 0;
    }
    if (value.typeId() == QMetaType::QString)
        return numberAtStart(value.toString());
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    return isNumber ? number : 0;
}

} // namespace

double SMDoubleSliderCell::doubleLoValue() const
{
    return _sm_flags.mouseTrackingSwapped ? slotValue() : _sm_loValue;
}

double SMDoubleSliderCell::doubleHiValue() const
{
    return _sm_flags.mouseTrackingSwapped ? _sm_saveValue : slotValue();
}

void SMDoubleSliderCell::setDoubleLoValue(double value)
{
    if (std::isnan(value))
        return;
    value = std::max(std::min(value, doubleHiValue()), minValue());
    if (_sm_flags.mouseTrackingSwapped)
        setSlotValue(value);
    else
        _sm_loValue = value;
    updateCell();
}

void SMDoubleSliderCell::setDoubleHiValue(double value)
{
    if (std::isnan(value))
        return;
    value = std::min(std::max(value, doubleLoValue()), maxValue());
    if (_sm_flags.mouseTrackingSwapped)
        _sm_saveValue = value;
    else
        setSlotValue(value);
    updateCell();
}

void SMDoubleSliderCell::setMinValue(double value)
{
    if (std::isnan(value))
        return;
    if (value > maxValue())
        SliderCell::setMaxValue(value);
    if (value > doubleHiValue())
        setDoubleHiValue(value);
    if (value > doubleLoValue())
        setDoubleLoValue(value);
    SliderCell::setMinValue(value);
}

void SMDoubleSliderCell::setMaxValue(double value)
{
    if (std::isnan(value))
        return;
    if (value < minValue())
        SliderCell::setMinValue(value);
    if (doubleLoValue() > value)
        setDoubleLoValue(value);
    if (doubleHiValue() > value)
        setDoubleHiValue(value);
    SliderCell::setMaxValue(value);
}

int SMDoubleSliderCell::intLoValue() const
{
    return truncated<int>(doubleLoValue());
}

int SMDoubleSliderCell::intHiValue() const
{
    return truncated<int>(doubleHiValue());
}

int64_t SMDoubleSliderCell::integerLoValue() const
{
    return truncated<int64_t>(doubleLoValue());
}

int64_t SMDoubleSliderCell::integerHiValue() const
{
    return truncated<int64_t>(doubleHiValue());
}

QString SMDoubleSliderCell::stringLoValue() const
{
    return QString::asprintf("%g", doubleLoValue());
}

QString SMDoubleSliderCell::stringHiValue() const
{
    return QString::asprintf("%g", doubleHiValue());
}

void SMDoubleSliderCell::setStringLoValue(const QString& text)
{
    setDoubleLoValue(numberAtStart(text));
}

void SMDoubleSliderCell::setStringHiValue(const QString& text)
{
    setDoubleHiValue(numberAtStart(text));
}

void SMDoubleSliderCell::setObjectLoValue(const QVariant& value)
{
    setDoubleLoValue(numberOf(value, "doubleLoValue"));
}

void SMDoubleSliderCell::setObjectHiValue(const QVariant& value)
{
    setDoubleHiValue(numberOf(value, "doubleHiValue"));
}

double SMDoubleSliderCell::doubleValue() const
{
    return trackingLoKnob() ? doubleLoValue() : doubleHiValue();
}

void SMDoubleSliderCell::setDoubleValue(double value)
{
    trackingLoKnob() ? setDoubleLoValue(value) : setDoubleHiValue(value);
}

void SMDoubleSliderCell::setStringValue(const QString& text)
{
    trackingLoKnob() ? setStringLoValue(text) : setStringHiValue(text);
}

void SMDoubleSliderCell::setObjectValue(const QVariant& value)
{
    trackingLoKnob() ? setObjectLoValue(value) : setObjectHiValue(value);
}

void SMDoubleSliderCell::setLockedSliders(bool flag)
{
    if (flag == lockedSliders())
        return;
    _sm_flags.lockedSliders = flag;
    if (flag)
        setDoubleLoValue(doubleHiValue());
    updateCell();
}

void SMDoubleSliderCell::setTrackingLoKnob(bool flag)
{
    if (flag == trackingLoKnob())
        return;
    _sm_flags.isTrackingLoKnob = flag;
    updateCell();
}

void SMDoubleSliderCell::encodeWithCoder(QVariantMap& coder) const
{
    SliderCell::encodeWithCoder(coder);
    coder["value"] = doubleHiValue();
    coder["loValue"] = doubleLoValue();
    coder["lockedSliders"] = lockedSliders();
}

void SMDoubleSliderCell::initWithCoder(const QVariantMap& coder)
{
    SliderCell::initWithCoder(coder);
    _sm_flags.mouseTrackingSwapped = false;
    _sm_flags.lockedSliders = coder.value("lockedSliders").toBool();
    const double stored = coder.value("loValue").toDouble();
    _sm_loValue = std::isnan(stored) ? minValue() : std::clamp(stored, minValue(), slotValue());
}

std::unique_ptr<SMDoubleSliderCell> SMDoubleSliderCell::copyWithZone() const
{
    auto copy = std::make_unique<SMDoubleSliderCell>(*this);
    copy->setControlView(nullptr);
    copy->updateBoundControllerLoValue = nullptr;
    copy->updateBoundControllerHiValue = nullptr;
    if (_sm_flags.mouseTrackingSwapped) {
        copy->_sm_flags.mouseTrackingSwapped = false;
        copy->setSlotValue(doubleHiValue());
        copy->_sm_loValue = doubleLoValue();
    }
    return copy;
}
