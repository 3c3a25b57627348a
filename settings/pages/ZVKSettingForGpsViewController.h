#pragma once

#include "settings/pages/GpsFields.h"
#include "settings/pages/RecordPage.h"

#include <memory>

namespace Ui {
class ZVKSettingForGpsViewController;
}
namespace platform {
struct Platform;
}

/// The settings page of what depends on GPS: weekly alarm day, speed unit, time zone, speed in the recording,
/// route saving interval, GPS in parking mode.
class ZVKSettingForGpsViewController : public RecordPage {
    Q_OBJECT

public:
    explicit ZVKSettingForGpsViewController(platform::Platform& desktop, QWidget* parent = nullptr);
    ~ZVKSettingForGpsViewController() override;

protected:
    void showRecord(const _FILEDATA& record) override;

private:
    void awakeFromNib();

    std::unique_ptr<Ui::ZVKSettingForGpsViewController> outlets;
    GpsFields shared;
};
