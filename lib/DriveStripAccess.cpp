#include "lib/DriveStripAccess.h"

#include "lib/DriveStrip.h"
#include "lib/SliderAccess.h"

namespace {

class DriveStripAccess : public SliderAccess<DriveStrip> {
public:
    using SliderAccess::SliderAccess;

    QVariant currentValue() const override { return slid.position() * slid.length(); }
    void setCurrentValue(const QVariant& value) override
    {
        if (slid.length() > 0)
            slid.goTo(value.toDouble() / slid.length());
    }
    QVariant maximumValue() const override { return slid.length(); }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return DriveStrip::keySeconds; }
};

} // namespace

void installDriveStripAccess()
{
    installSliderAccess<DriveStripAccess, DriveStrip>();
}
