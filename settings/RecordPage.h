#pragma once

#include "settings/ZVKSettingControllerDelegate.h"

/// A page that edits the live record: what the pages' protocol asks is the same for all of them.
class RecordPage : public SettingPage {
public:
    using SettingPage::SettingPage;

    void setFileData(_FILEDATA* record) override
    {
        fileData = record;
        displayFileData();
    }
    void populate() override
    {
        if (fileData && !validateUserInput())
            storeControls(*fileData);
    }
    std::optional<QString> validateUserInput() override { return std::nullopt; }
    void setMainController(SettingPageHost* controller) override { mainController = controller; }

    /// Fills the controls from the record; nothing without one.
    void displayFileData()
    {
        if (fileData)
            showRecord(*fileData);
    }

protected:
    virtual void showRecord(const _FILEDATA& record) = 0;
    /// Copies the controls into the record; a control without a selection leaves its field as it was.
    virtual void storeControls(_FILEDATA& record) = 0;

    _FILEDATA* fileData = nullptr;
    SettingPageHost* mainController = nullptr;
};
