#pragma once

#include "common/Life.h"
#include "settings/pages/RecordPage.h"

#include <array>
#include <memory>

class ThresholdField;

namespace Ui {
class ZVKSettingForBasicViewController;
}
class SegmentedControl;

namespace platform {
struct Platform;
}

/// The settings page of the basics: the camera's screen, recording mode, impact detection, automatic modes,
/// security light, heat protection, video output and plate number.
class ZVKSettingForBasicViewController : public RecordPage {
    Q_OBJECT

public:
    explicit ZVKSettingForBasicViewController(platform::Platform& desktop, QWidget* parent = nullptr);
    ~ZVKSettingForBasicViewController() override;

    std::optional<QString> validateUserInput() override;

    /// The standby list's item for so many seconds; the middle one for a time that is not in the list.
    static int findAlwaysModeTimeoutIndexByValue(uint32_t seconds);
    /// The preset with these thresholds in hundredths of g; 5 (custom) when there is none.
    static int findDrivingGsensorThresholdIndex(int32_t x, int32_t y, int32_t z);
    static int findParkingGsensorThresholdIndex(int32_t x, int32_t y, int32_t z);

protected:
    void showRecord(const _FILEDATA& record) override;
    void endEditing() override;

private:
    using Thresholds = std::array<int32_t, 3>; // X, Y, Z in hundredths of g

    /// One of the two groups of impact settings, while driving and while parked.
    struct Sensitivity {
        SegmentedControl* segments;
        std::array<ThresholdField*, 3> fields;
        std::array<int32_t _FILEDATA::*, 3> thresholds;
        const std::array<Thresholds, 5>& presets;
    };

    static int presetIndex(const std::array<Thresholds, 5>& presets, const Thresholds& wanted);
    static const std::array<Thresholds, 5> drivingPresets;
    static const std::array<Thresholds, 5> parkingPresets;
    static constexpr std::array<uint32_t, 5> stanbyTimes{180, 300, 420, 600, 900}; // seconds

    void awakeFromNib();
    void setUpSegments();
    void setUpSensitivity(const Sensitivity& group, const QString& title);
    void explainWords();
    void bindControls();
    void connectActions();
    void changeGsensorEnable();
    void updateGsensorThreshold();
    void clickAutoParkingModeChk();
    void clickSafeTemperatureModeChck();
    void focus(ThresholdField& field);
    void showCarNumber(const _FILEDATA& record);
    void storeCarNumber(_FILEDATA& record) const;

    platform::Platform& desktop;
    std::unique_ptr<Ui::ZVKSettingForBasicViewController> outlets;
    std::array<Sensitivity, 2> sensitivities; // driving, parking
    Life life;
};
