#include "settings/pages/RecordPage.h"

#include <QCheckBox>

#include <cstring>
#include <utility>

void RecordPage::setFileData(_FILEDATA* record)
{
    fileData = record;
    displayFileData();
}

void RecordPage::displayFileData()
{
    if (!fileData)
        return;
    shownRecord = *fileData;
    for (Setting& setting : settings)
        setting.touched = false;
    isShowing = true;
    showRecord(*fileData);
    isShowing = false;
}

void RecordPage::populate()
{
    if (!fileData || validateUserInput())
        return;
    endEditing();
    storeTouched(*fileData);
}

bool RecordPage::isTouched() const
{
    _FILEDATA stored = shownRecord;
    storeTouched(stored);
    return std::memcmp(&stored, &shownRecord, sizeof stored) != 0;
}

void RecordPage::storeTouched(_FILEDATA& record) const
{
    for (const Setting& setting : settings) {
        if (setting.touched)
            setting.store(record);
    }
}

size_t RecordPage::addSetting(std::initializer_list<QWidget*> controls, Store store)
{
    const size_t added = settings.size();
    settings.push_back({std::move(store)});
    for (QWidget* control : controls) {
        onUserChange(*control, [this, added] { touch(added); });
        leaveWheelToPage(*control);
    }
    return added;
}

void RecordPage::touch(size_t setting)
{
    if (!isShowing)
        settings[setting].touched = true;
}

void RecordPage::addFlag(QCheckBox* box, uint32_t _FILEDATA::*field, uint32_t on, uint32_t off)
{
    addSetting({box}, [=](_FILEDATA& record) { record.*field = box->isChecked() ? on : off; });
}
