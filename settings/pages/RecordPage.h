#pragma once

#include "settings/contract/ZVKSettingControllerDelegate.h"
#include "settings/pages/PageControls.h"
#include "settings/record/FileData.h"

#include <functional>
#include <initializer_list>
#include <vector>

class QCheckBox;

/// A page that edits the live record: what the pages' protocol asks is the same for all of them. The page is
/// a list of settings, each of which is bound to its controls and to the fields that it stands for. Only what
/// the user changed since the record was shown is written; everything else stays as it was, bit for bit, also
/// where a control can show it only rounded or not at all.
class RecordPage : public SettingPage {
public:
    using SettingPage::SettingPage;

    void setFileData(_FILEDATA* record) override;
    void populate() override;
    std::optional<QString> validateUserInput() override { return std::nullopt; }
    void setMainController(SettingPageHost* controller) override { mainController = controller; }
    bool isTouched() const override;

    /// Fills the controls from the record; nothing without one. From here on nothing is changed.
    void displayFileData();

    /// Copies a setting's controls into its fields.
    using Store = std::function<void(_FILEDATA&)>;
    /// Adds a setting, which counts as changed once the user has changed one of the controls. Settings are
    /// stored in the order of adding. Returns what names it in the two operations below.
    size_t addSetting(std::initializer_list<QWidget*> controls, Store store);
    /// To be called when the user changed the setting by a control that `addSetting` cannot watch.
    void touch(size_t setting);
    bool wasTouched(size_t setting) const { return settings[setting].touched; }

    /// The field becomes first + step × selected segment.
    template <typename Field>
    void addSegments(SegmentedControl* control, Field _FILEDATA::*field, int first = 0, int step = 1)
    {
        addSetting({control}, [=](_FILEDATA& record) { storeSegment(*control, record.*field, first, step); });
    }
    /// The field becomes the table's value for the selected segment. The table outlives the page.
    template <typename Field, typename Value, std::size_t count>
    void addSegments(
        SegmentedControl* control, Field _FILEDATA::*field, const std::array<Value, count>& table)
    {
        addSetting({control},
            [control, field, &table](_FILEDATA& record) { storeSegment(*control, record.*field, table); });
    }
    void addFlag(QCheckBox* box, uint32_t _FILEDATA::*field, uint32_t on = 1, uint32_t off = 0);

protected:
    virtual void showRecord(const _FILEDATA& record) = 0;
    /// What is still being typed is taken as it is.
    virtual void endEditing() { }

    _FILEDATA* fileData = nullptr;
    SettingPageHost* mainController = nullptr;

private:
    struct Setting {
        Store store;
        bool touched = false;
    };

    void storeTouched(_FILEDATA& record) const;

    std::vector<Setting> settings;
    _FILEDATA shownRecord{};
    bool isShowing = false;
};
