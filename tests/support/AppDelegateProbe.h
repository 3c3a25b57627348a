#pragma once

#include "app/ZVKAppDelegate.h"
#include "lib/PositionSlider.h"
#include "lib/TKImageButton.h"
#include "tests/support/GuiTesting.h"

using platform::PlayerState;

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
    PlaybackSession& playback() const { return controller->playback(); }
    ZVKPlayInfo& playInfo() { return playback().playInfo(); }
    const ZVKMediaList& list() const { return controller->recordingsPanel().list(); }
    int64_t mediaIndex() const { return playback().index(); }
    bool isWaiting() const { return playback().isWaiting(); }
    bool isMoving() const { return playback().seek().target().has_value(); }
    uint64_t volume() const { return controller->transportControls().volume(); }
    bool isKorean() const { return controller->isKorean(); }
    bool showsMiles() const { return controller->telemetryPanel().showsMiles(); }
    const ZVKBlackBoxData& telemetry() const { return controller->telemetryPanel().telemetry(); }

    template <typename Widget> Widget& find(const char* name)
    {
        return *controller->mainWindow().findChild<Widget*>(QLatin1String(name));
    }

    CustomWindow& window() { return controller->mainWindow(); }
    QTableView& table() { return find<QTableView>("mediaListTableView"); }
    /// -1 when it is not exactly one.
    int selectedRow()
    {
        const auto rows = table().selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.first().row() : -1;
    }
    bool isShown(const char* widget) { return find<QWidget>(widget).isVisible(); }
    QString text(const char* label) { return find<QLabel>(label).text(); }
    /// "A|B"
    std::string texts(std::initializer_list<const char*> labels)
    {
        QStringList all;
        for (const char* label : labels)
            all += text(label);
        return all.join('|').toStdString();
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
        begin();
    }
    /// What is prepared plays.
    void begin()
    {
        desk.dispatcher.runAll();
        player().reportState(PlayerState::playing);
    }
};

/// The program with a folder of recordings.
class AppTest : public testing::Test {
protected:
    explicit AppTest(std::vector<platform::Screen> screens = {})
        : app("en", {}, std::move(screens))
    {
    }
    void openWith(std::initializer_list<const char*> recordings)
    {
        for (const char* recording : recordings)
            folder.file(recording);
        app.open(folder.path());
    }

    TempFolder folder;
    AppDelegateProbe app;
    ZVKAppDelegate& controller = *app.controller;
};
