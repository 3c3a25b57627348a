#include "lib/RangeSlider/SMDoubleSliderAccess.h"

#include "lib/RangeSlider/SMDoubleSlider.h"

#include <QAccessibleWidget>

namespace {

class DoubleSliderAccess : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit DoubleSliderAccess(SMDoubleSlider& widget)
        : QAccessibleWidget(&widget, QAccessible::Slider),
          slider(widget)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Value)
            return slider.stringLoValue() + QStringLiteral(" – ") + slider.stringHiValue();
        return QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return slider.cell().doubleValue(); }
    void setCurrentValue(const QVariant& value) override
    {
        slider.cell().setObjectValue(value);
        if (slider.trackingLoKnob())
            slider.updateBoundControllerLoValue(slider.doubleLoValue());
        else
            slider.updateBoundControllerHiValue(slider.doubleHiValue());
    }
    QVariant maximumValue() const override { return slider.maxValue(); }
    QVariant minimumValue() const override { return slider.minValue(); }
    QVariant minimumStepSize() const override { return slider.altIncrementValue(); }

private:
    SMDoubleSlider& slider;
};

QAccessibleInterface* makeAccess(const QString&, QObject* object)
{
    auto* slider = qobject_cast<SMDoubleSlider*>(object);
    return slider ? new DoubleSliderAccess(*slider) : nullptr;
}

} // namespace

void installDoubleSliderAccess()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccess);
        return true;
    }();
    static_cast<void>(installed);
}
