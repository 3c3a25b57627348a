#pragma once

#include "settings/pages/RecordPage.h"

#include <memory>

namespace Ui {
class ZVKSettingForVideoViewController;
}
namespace platform {
struct Platform;
}

/// The settings page of the picture: resolution, bit rate, frame rate, brightness, window tint, sharpness
/// and noise filter.
class ZVKSettingForVideoViewController : public RecordPage {
    Q_OBJECT

public:
    explicit ZVKSettingForVideoViewController(platform::Platform& desktop, QWidget* parent = nullptr);
    ~ZVKSettingForVideoViewController() override;

    /// Titles the six bit-rate cells for resolution code 1 (true) or 0. The selected cell stays.
    void setBPStext(bool isSecondResolution);

protected:
    void showRecord(const _FILEDATA& record) override;

private:
    void awakeFromNib();
    void bindControls();
    void arrangeBitrateCells();
    void clickvideoResolutionSegment();
    void storeBitrate(_FILEDATA& record) const;

    std::unique_ptr<Ui::ZVKSettingForVideoViewController> outlets;
};
