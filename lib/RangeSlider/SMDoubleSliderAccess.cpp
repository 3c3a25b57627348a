#include "lib/RangeSlider/SMDoubleSliderAccess.h"

#include "lib/RangeSlider/SMDoubleSlider.h"
#include "lib/SliderAccess.h"

namespace {

class DoubleSliderAccess : public SliderAccess<SMDoubleSlider> {
public:
    using SliderAccess::SliderAccess;

    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return slid.stringLoValue() + QStringLiteral(" – ") + slid.stringHiValue();
        return QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return slid.cell().doubleValue(); }
    void setCurrentValue(const QVariant& value) override
    {
        slid.cell().setObjectValue(value);
        if (slid.trackingLoKnob())
            slid.updateBoundControllerLoValue(slid.doubleLoValue());
        else
            slid.updateBoundControllerHiValue(slid.doubleHiValue());
    }
    QVariant maximumValue() const override { return slid.maxValue(); }
    QVariant minimumValue() const override { return slid.minValue(); }
    QVariant minimumStepSize() const override { return slid.altIncrementValue(); }
};

} // namespace

void installDoubleSliderAccess()
{
    installSliderAccess<DoubleSliderAccess, SMDoubleSlider>();
}
