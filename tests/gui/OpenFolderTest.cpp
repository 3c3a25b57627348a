#include "tests/support/AppDelegateProbe.h"

namespace {

/// Recordings and settings on a card that is mounted at its label, "MUSIC".
class OpenFolder : public testing::Test {
protected:
    OpenFolder()
    {
        for (const char* name : {"MUSIC/Movie/alwa_20150321_142530_F.avi",
                 "MUSIC/Movie/alwa_20150321_142600_F.avi", "MUSIC/Movie/alwa_20150321_142630_F.avi"})
            root.file(name);
        _FILEDATA record;
        initFileData(record);
        record.speed_disp_unit = 1;
        root.file("MUSIC/config.bin", std::as_bytes(std::span(&record, 1)));
        app.desk.disks.tellOfMounts(); // as the system does once it is listened to
        app.desk.dispatcher.runAll();
    }

    void move(const char* name = "MUSIC1")
    {
        app.desk.disks.move(app.desk.disks.volumes[0], root.path(name));
        app.desk.dispatcher.runAll();
    }
    QString failure() { return app.text("videoStateLabel"); }
    std::string playersFile() { return app.player().current->url().value(); }
    const std::string& label() { return app.desk.disks.volumes[0].label; }

    TempFolder root;
    AppDelegateProbe app{"en", {TestDiskArbitration::card(root.path("MUSIC"), "MUSIC")}};
    const std::string firstMoved = root.path("MUSIC1/Movie/alwa_20150321_142530_F.avi");
};

TEST_F(OpenFolder, GoesAlongWhenItsVolumeMoves)
{
    app.open(root.path("MUSIC/Movie/"));
    app.start(0);
    app.table().selectRow(2);
    const auto calls = app.player().calls;
    move();
    EXPECT_EQ(app.list().directoryPath(), root.path("MUSIC1/Movie"));
    ASSERT_EQ(app.list().count(), 3);
    EXPECT_EQ(app.list().mediaAtIndex(0)->path(), firstMoved);
    EXPECT_EQ(app.selectedRow(), 2);
    EXPECT_EQ(playersFile(), firstMoved);
    EXPECT_EQ(app.player().calls, calls) << "what plays goes on";
    EXPECT_EQ(app.mediaIndex(), 0);

    app.player().reportEnd();
    app.desk.dispatcher.advance(3s);
    app.desk.dispatcher.runAll();
    EXPECT_EQ(app.mediaIndex(), 1);
    EXPECT_EQ(playersFile(), app.list().mediaAtIndex(1)->path());
}

TEST_F(OpenFolder, IsTheCardOnDemandButNotInPlaceOfALaterOne)
{
    app.controller->openCard();
    app.desk.dispatcher.runAll();
    EXPECT_EQ(app.list().directoryPath(), root.path("MUSIC"));
    EXPECT_EQ(app.list().count(), 3);

    AppDelegateProbe other("en", app.desk.disks.volumes);
    other.controller->openCard();
    other.open(root.path("MUSIC/Movie"));
    EXPECT_EQ(other.list().directoryPath(), root.path("MUSIC/Movie"));
}

TEST_F(OpenFolder, WhatTheMoveBrokeBeginsAgain)
{
    app.controller->openMediaDirectory(root.path("MUSIC/Movie"));
    app.desk.dispatcher.runOneBackground(); // the scan is done, its result still on the way
    move();
    ASSERT_EQ(app.list().count(), 3);
    EXPECT_EQ(app.list().mediaAtIndex(0)->path(), firstMoved);
    EXPECT_TRUE(app.list().scanState().failure.empty());

    for (const bool hasFailed : {false, true}) {
        move("MUSIC");
        app.controller->playAtIndex(0);
        app.desk.dispatcher.runAll();
        if (hasFailed)
            app.player().reportFailure("not there");
        EXPECT_EQ(!failure().isEmpty(), hasFailed);
        const size_t starts = app.player().countOf("play");
        move();
        EXPECT_EQ(playersFile(), firstMoved);
        EXPECT_TRUE(failure().isEmpty());
        EXPECT_EQ(app.player().countOf("play"), starts + 1);
        app.player().reportState(PlayerState::playing);
        EXPECT_FALSE(app.isWaiting());
    }
}

TEST_F(OpenFolder, IsLetGoWhileItsCardIsFormattedAndReadAgain)
{
    const auto letGo = [&](const char* mount) {
        app.controller->letGoOf(root.path(mount));
        app.desk.dispatcher.runAll();
    };
    const auto giveBack = [&](const char* from, const std::string& to) {
        app.controller->cardFormatted(root.path(from), to);
        app.desk.dispatcher.runAll();
    };
    app.open(root.path("MUSIC/Movie"));
    app.start(0);
    app.player().reportState(PlayerState::paused);
    letGo("OTHER");
    EXPECT_TRUE(app.player().current) << "of another card";
    letGo("MUSIC");
    EXPECT_FALSE(app.player().current);
    EXPECT_EQ(app.list().count(), 0);
    EXPECT_EQ(app.text("listStateLabel"), "The card is being formatted.");
    move("ZAVIK");
    EXPECT_EQ(app.list().count(), 0) << "nobody reads it";
    giveBack("MUSIC", root.path("ZAVIK"));
    EXPECT_EQ(app.list().directoryPath(), root.path("ZAVIK/Movie"));
    EXPECT_EQ(app.list().count(), 3) << "the format was cancelled";

    // A scan under way is void; afterwards the folder is gone, the card is there.
    app.controller->openMediaDirectory(root.path("ZAVIK/Movie"));
    app.desk.dispatcher.runOneBackground();
    letGo("ZAVIK");
    EXPECT_EQ(app.list().count(), 0);
    fs::remove_all(root.path("ZAVIK/Movie"));
    giveBack("ZAVIK", root.path("ZAVIK"));
    EXPECT_EQ(app.list().directoryPath(), root.path("ZAVIK"));

    // Another folder that was opened meanwhile stays.
    letGo("ZAVIK");
    const TempFolder other;
    app.open(other.path());
    giveBack("ZAVIK", root.path("ZAVIK"));
    EXPECT_EQ(app.list().directoryPath(), other.path());
}

TEST_F(OpenFolder, KeepsItsCardFromBeingNamed)
{
    EXPECT_TRUE(app.showsMiles());
    EXPECT_EQ(label(), "MUSIC") << "the start only reads";
    const auto openSettings = [&] {
        app.controller->showSettingPanel();
        app.desk.dispatcher.runAll();
    };
    app.open(root.path("MUSIC/Movie"));
    openSettings();
    EXPECT_EQ(label(), "MUSIC");

    const TempFolder other;
    app.open(other.path());
    openSettings();
    EXPECT_EQ(label(), "ZAVIK");
    EXPECT_EQ(app.desk.disks.volumes[0].mountPath, root.path("ZAVIK"));
    app.open(root.path("ZAVIK/Movie"));
    EXPECT_EQ(app.list().count(), 3);
}

} // namespace
