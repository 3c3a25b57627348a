#pragma once

#include "lib/KeyPath.h"
#include "settings/pages/GpsFields.h"
#include "settings/pages/RecordPage.h"

#include <memory>

namespace Ui {
class ZVKSettingForObdViewController;
}
namespace platform {
struct Platform;
}

/// The settings page for a camera at the vehicle's OBD port: what the GPS page has, power cut-off voltage,
/// OBD in parking mode and the range of economical driving. Such a camera uses several carried fields of the
/// record; the page is not shown for other cameras.
class ZVKSettingForObdViewController : public RecordPage {
    Q_OBJECT
    /// Where the slider's knobs are, 0 to 100. Every assignment is announced.
    Q_PROPERTY(double ecoLoValue READ ecoLoValue WRITE setEcoLoValue NOTIFY ecoLoValueChanged)
    Q_PROPERTY(double ecoHiValue READ ecoHiValue WRITE setEcoHiValue NOTIFY ecoHiValueChanged)

public:
    explicit ZVKSettingForObdViewController(platform::Platform& desktop, QWidget* parent = nullptr);
    ~ZVKSettingForObdViewController() override;

    double ecoLoValue() const { return ecoLo; }
    double ecoHiValue() const { return ecoHi; }
    void setEcoLoValue(double value);
    void setEcoHiValue(double value);

signals:
    void ecoLoValueChanged();
    void ecoHiValueChanged();

protected:
    void showRecord(const _FILEDATA& record) override;

private:
    void awakeFromNib();
    void setUpTexts();
    void setUpSlider();
    void bindControls();
    void bindSaveDuration();
    void updateEco();

    std::unique_ptr<Ui::ZVKSettingForObdViewController> outlets;
    GpsFields shared;
    ObjectController objController;
    double ecoLo = 0;
    double ecoHi = 0;
    size_t ecoLoSetting = 0;
    size_t ecoHiSetting = 0;
};
