#pragma once

#include <QAccessibleWidget>

/// What assistive technology sees of a widget that is a slider with a value. `Slid` is the widget.
template <typename Slid> class SliderAccess : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SliderAccess(Slid& widget)
        : QAccessibleWidget(&widget, QAccessible::Slider),
          slid(widget)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

protected:
    Slid& slid;
};

/// From now on each `Slid` is seen through an `Access`. Further calls do nothing.
template <typename Access, typename Slid> void installSliderAccess()
{
    static const bool installed = [] {
        QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
            auto* widget = qobject_cast<Slid*>(object);
            return widget ? new Access(*widget) : nullptr;
        });
        return true;
    }();
    static_cast<void>(installed);
}
