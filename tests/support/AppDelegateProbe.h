#pragma once

#include "app/ZVKAppDelegate.h"
#include "tests/support/TestPlatform.h"

#include <memory>
#include <string>

/// The main controller on the test desktop, and what a test needs to see of it.
class AppDelegateProbe {
public:
    explicit AppDelegateProbe(const std::string& language = "en",
        std::vector<platform::VolumeDescription> cards = {}, std::vector<platform::Screen> screens = {})
    {
        desk.disks.volumes = std::move(cards);
        if (!screens.empty())
            desk.screens.screens = std::move(screens);
        controller = std::make_unique<ZVKAppDelegate>(desk.pieces, language);
        controller->awakeFromNib();
        controller->applicationDidFinishLaunching();
    }

    TestPlatform desk;
    std::unique_ptr<ZVKAppDelegate> controller;

    ScriptedPlayer& player() { return *desk.player; }
    ZVKPlayInfo& playInfo() { return controller->playInfo; }
    const ZVKMediaList& list() const { return *controller->mediaList; }
    int64_t mediaIndex() const { return controller->mediaIndex; }
    bool isWaiting() const { return controller->waitingForPlayStart; }
    bool isMoving() const { return controller->moving; }
    uint64_t volume() const { return controller->volume; }
    bool isKorean() const { return controller->m_bKorean; }
    bool showsMiles() const { return controller->m_bMileDisplay; }
    const ZVKBlackBoxData& telemetry() const { return controller->blackBoxData; }

    template <typename Widget> Widget& find(const char* name)
    {
        return *controller->mainWindow().findChild<Widget*>(QLatin1String(name));
    }

    /// Opens the folder and lets the scan finish.
    void open(const std::string& folder)
    {
        controller->openMediaDirectory(folder);
        desk.dispatcher.runAll();
    }

    /// Starts an entry up to the player's first reports.
    void start(int64_t index)
    {
        controller->playAtIndex(index);
        desk.dispatcher.runAll();
        player().reportState(platform::PlayerState::playing);
    }
};
