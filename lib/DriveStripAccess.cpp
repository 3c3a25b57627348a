#include "lib/DriveStripAccess.h"

#include "lib/DriveStrip.h"

#include <QAccessibleWidget>

namespace {

class DriveStripAccess : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit DriveStripAccess(DriveStrip& widget)
        : QAccessibleWidget(&widget, QAccessible::Slider),
          strip(widget)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return strip.position() * strip.length(); }
    void setCurrentValue(const QVariant& value) override
    {
        if (strip.length() > 0)
            strip.goTo(value.toDouble() / strip.length());
    }
    QVariant maximumValue() const override { return strip.length(); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return DriveStrip::keySeconds; }

private:
    DriveStrip& strip;
};

QAccessibleInterface* makeAccess(const QString&, QObject* object)
{
    auto* strip = qobject_cast<DriveStrip*>(object);
    return strip ? new DriveStripAccess(*strip) : nullptr;
}

} // namespace

void installDriveStripAccess()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeAccess);
        return true;
    }();
    static_cast<void>(installed);
}
