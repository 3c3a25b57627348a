#pragma once

#include "lib/KeyPath.h"
#include "settings/pages/RecordPage.h"

#include <cstdint>
#include <memory>

namespace Ui {
class ZVKSettingForAuxViewController;
}
namespace platform {
struct Platform;
}

/// The settings page of how the kinds of recordings share the card, motion detection, night exposure, mains
/// frequency and place of use.
class ZVKSettingForAuxViewController : public RecordPage {
    Q_OBJECT
    /// Where the slider's knobs are, in percent of the card: the always share, and always and motion
    /// together. Every assignment is announced.
    Q_PROPERTY(double ratioLoValue READ ratioLoValue WRITE setRatioLoValue NOTIFY ratioLoValueChanged)
    Q_PROPERTY(double ratioHiValue READ ratioHiValue WRITE setRatioHiValue NOTIFY ratioHiValueChanged)

public:
    explicit ZVKSettingForAuxViewController(platform::Platform& desktop, QWidget* parent = nullptr);
    ~ZVKSettingForAuxViewController() override;

    double ratioLoValue() const { return ratioLo; }
    double ratioHiValue() const { return ratioHi; }
    void setRatioLoValue(double value);
    void setRatioHiValue(double value);

    /// Each kind of recording needs a tenth of the card; what nobody moved stays as it is stored.
    std::optional<QString> validateUserInput() override;
    /// Motion detection goes into the record at once.
    void clickUseMotionChk();

signals:
    void ratioLoValueChanged();
    void ratioHiValueChanged();

protected:
    void showRecord(const _FILEDATA& record) override;

private:
    void awakeFromNib();
    void setUpTexts();
    void setUpSlider();
    void bindControls();
    void moveRatio(double& ratio, double value);
    void updateRatio();
    void updateMotionUI();
    int64_t always() const { return static_cast<int64_t>(ratioLo); }
    int64_t motion() const { return static_cast<int64_t>(ratioHi) - always(); }
    int64_t event() const;

    std::unique_ptr<Ui::ZVKSettingForAuxViewController> outlets;
    ObjectController objController;
    double ratioLo = 0;
    double ratioHi = 0;
    size_t ratioSetting = 0;
};
