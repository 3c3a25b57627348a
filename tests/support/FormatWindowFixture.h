#pragma once

#include "cardtools/format/ZVKFormatWindowController.h"
#include "cardtools/volumes/CardHolder.h"
#include "settings/record/FileData.h"
#include "tests/support/GuiTesting.h"

using testing::StartsWith;

inline const std::string unmountCommand = "diskutil umount sdb1";
inline const std::string formatCommand =
    "sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c 32 sdb1 as administrator";
inline const std::string mountCommand = "diskutil mount sdb1";

/// A card whose folder the scripted commands really unmount, empty and mount again.
class FormatWindow : public testing::Test {
protected:
    FormatWindow()
    {
        put("config.bin", settings);
        put("AlwaysMovie/old.avi", "video");
        setenv("HOME", home.path().c_str(), 1);
        platform.disks.volumes = {card()};
        platform.scripts.script = [this](const std::string& command, bool) { return run(command); };
    }
    ~FormatWindow() override { setenv("HOME", homeBefore.c_str(), 1); }

    platform::VolumeDescription card() const { return TestDiskArbitration::card(root.path("card")); }
    void put(const std::string& name, const std::string& text) const { root.file("card/" + name, text); }
    std::string onCard(const std::string& name) const { return contents(root.path("card/" + name)); }
    /// The settings' copy that the one alert names.
    std::string copyNamed() const
    {
        const auto& shown = platform.alerts.shown;
        const std::string path = shown.size() == 1 ? shown[0].substr(shown[0].rfind('\n') + 1) : "";
        return path.starts_with(home.path("Documents/Zavik/config-")) ? contents(path) : "";
    }
    size_t copiesKept() const
    {
        std::error_code none;
        return static_cast<size_t>(
            std::distance(fs::directory_iterator(home.path("Documents/Zavik"), none), {}));
    }
    /// The card is in its reader, but mounted nowhere.
    void unmountCard()
    {
        platform.disks.unmounted = std::exchange(platform.disks.volumes, {});
        platform.disks.unmounted[0].mountPath.clear();
    }
    void mountCard()
    {
        platform.disks.unmounted.clear();
        platform.disks.volumes = {card()};
    }

    platform::ScriptResult run(const std::string& command)
    {
        const auto answer = answers.find(command.substr(0, command.find(' ', 9)));
        if (command.starts_with("sudo") && formatAnswer.number == 0) {
            fs::remove_all(root.path("card"));
            fs::create_directory(root.path("card"));
        }
        for (const auto& [start, event] : events) {
            if (command.starts_with(start))
                event();
        }
        if (command.starts_with("sudo"))
            return formatAnswer;
        return answer == answers.end() ? platform::ScriptResult{} : answer->second;
    }

    void loadVolumes()
    {
        controller.window();
        controller.loadUSBVolumes();
        platform.dispatcher.runAll();
    }
    void pressFormat()
    {
        controller.onFormat();
        platform.dispatcher.runAll();
    }
    void format()
    {
        platform.alerts.shown.clear();
        platform.scripts.commands.clear();
        loadVolumes();
        pressFormat();
    }
    std::string line(const char* name) { return outlet<QLineEdit>(name).text().toStdString(); }
    std::string label(const char* name) { return outlet<QLabel>(name).text().toStdString(); }
    template <typename Widget> Widget& outlet(const char* name)
    {
        return *controller.window().findChild<Widget*>(name);
    }

    const std::string settings = std::string(271, 'x') + "y";
    TempFolder root;
    TempFolder home;
    const std::string homeBefore = getenv("HOME");
    TestPlatform platform;
    platform::ScriptResult formatAnswer;
    std::map<std::string, platform::ScriptResult> answers;
    std::map<std::string, std::function<void()>> events;
    /// What the card's holder was told.
    struct Holder final : CardHolder {
        std::vector<std::string> told;
        std::function<void()> letsGo = [] {};
        void letGoOf(const std::string& path) override
        {
            told.push_back("let go of " + path);
            letsGo();
        }
        void cardFormatted(const std::string& from, const std::string& to) override
        {
            told.push_back(from + " is " + to);
        }
    } holder;
    ZVKFormatWindowController controller{platform.pieces, &holder};
};
