#pragma once

#include "app/window/SettingPages.h"
#include "lib/SegmentedControl.h"
#include "platform/Texts.h"
#include "settings/window/ZVKSettingController.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/ScriptedPage.h"

using ::testing::Contains;

struct UnitReceiver final : viewControllerForZVKSettingDelegate {
    std::vector<uint32_t> units;
    std::string busyPath;
    void setDisplayMile(uint32_t value) override { units.push_back(value); }
    bool isInUse(const std::string& mountPath) const override { return mountPath == busyPath; }
    std::vector<std::string> letGo;
    void letGoOf(const std::string& mountPath) override { letGo.push_back(mountPath); }
};

inline _FILEDATA recordWith(int32_t zone)
{
    _FILEDATA record;
    initFileDataForRegion(record, false);
    record.time_gmt = zone;
    record.speed_disp_unit = 1;
    return record;
}

/// The window on a test desktop with a card folder and three pages, of which the last is kept.
class SettingWindow : public ::testing::Test {
protected:
    SettingWindow()
    {
        platform::setTextLanguage("en");
        QCoreApplication::setApplicationVersion("1.2");
    }

    void insertCard(const TempFolder& folder, const std::string& label = "ZAVIK")
    {
        desk.disks.volumes.push_back(TestDiskArbitration::card(folder.path(), label));
    }
    static void writeConfig(const TempFolder& folder, const _FILEDATA& record)
    {
        folder.file("config.bin", bytesOf(record));
    }
    static int32_t zoneIn(const std::string& path)
    {
        _FILEDATA record{};
        return loadFileData(path, record) ? record.time_gmt : -1;
    }
    void show()
    {
        const auto page = [this](std::string name) {
            return [this, name](
                       const SettingPageContext&) { return std::make_unique<ScriptedPage>(script, name); };
        };
        window = std::make_unique<ZVKSettingController>(desk.pieces, language,
            SettingTools{
                {{"setting.video", "setting.video", page("a")}, {"setting.gps", "setting.gps", page("b")},
                    {"setting.driveinfoview", "setting.information", page("kept"), true}},
                settingTools().makeFormatWindow});
        window->setDelegate(&receiver);
        window->showWindow();
    }
    void settle()
    {
        desk.dispatcher.runAll();
        desk.dispatcher.advance(500ms);
    }
    void open()
    {
        show();
        settle();
    }
    /// A card whose record has the zone 5.
    void insertOwnCard()
    {
        writeConfig(card, recordWith(5));
        insertCard(card);
    }
    void openOwnCard()
    {
        insertOwnCard();
        open();
    }
    void tellOfMounts()
    {
        desk.disks.tellOfMounts();
        desk.dispatcher.runAll();
    }
    /// What the user sets on the page, then Save.
    void save(int32_t zone)
    {
        script.input = zone;
        window->onSave();
        settle();
    }
    std::string notice() { return window->window().findChild<QLabel*>("noticeLabel")->text().toStdString(); }
    std::string title() { return window->window().windowTitle().toStdString(); }
    int32_t zone() { return zoneIn(card.path("config.bin")); }
    QPushButton& button(const char* name) { return *window->window().findChild<QPushButton*>(name); }
    bool isSheetUp() { return !window->window().findChild<QWidget*>("contentBox")->isEnabled(); }
    std::vector<std::string>& alerts() { return desk.alerts.shown; }

    TestPlatform desk;
    std::string language = "en";
    TempFolder card;
    PageScript script;
    UnitReceiver receiver;
    std::unique_ptr<ZVKSettingController> window;
    CollectedLog log;
};
