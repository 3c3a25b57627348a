#pragma once

#include "settings/pages/RecordPage.h"

#include <memory>

namespace Ui {
class ZVKSettingForAudioViewController;
}
namespace platform {
struct Platform;
}

/// The settings page of sound: voice recording, voice guidance and its language, the hourly notice.
class ZVKSettingForAudioViewController : public RecordPage {
    Q_OBJECT

public:
    explicit ZVKSettingForAudioViewController(platform::Platform& desktop, QWidget* parent = nullptr);
    ~ZVKSettingForAudioViewController() override;

protected:
    void showRecord(const _FILEDATA& record) override;

private:
    void awakeFromNib();
    void nameControls();
    void bindControls();
    void connectActions();
    // These two follow the record, not the check boxes.
    void updateVoiceRecordingUI();
    void updateVoiceGuidanceUI();
    void clickVoiceRecordingChk();
    void clickVoiceGuidanceChk();
    void voiceLangMatrixSelected();
    void malaysianRadioSelected();

    std::unique_ptr<Ui::ZVKSettingForAudioViewController> outlets;
};
