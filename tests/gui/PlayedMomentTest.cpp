#include "telemetry/views/GraphView.h"
#include "tests/support/AppDelegateProbe.h"
#include "tools/samplecard/AviWriter.h"

using testing::EndsWith;

namespace {

/// Ten samples paired with one place; three fixes: north-east, south-east, south-west.
std::vector<std::byte> crossingTheEquator()
{
    SideDataWriter sideData;
    for (int i = 0; i < 10; ++i)
        sideData.gsensor(i * 100, 0, 0, 0);
    sideData.gps(
        {900, 1, 3723.4567, 12701.5, 21, '9', "$GA,,,,,,N,E*00\n$GA,,,,,,S,E*00\n$GA,,A,,,,S,W*00\n"});
    return AviWriter().junk(sideData).bytes();
}

/// A front recording with places and a rear one without.
class PlayedMoment : public AppTest {
protected:
    PlayedMoment()
    {
        folder.file("alwa_20150321_142530_F.avi", crossingTheEquator());
        folder.file("alwa_20150321_142600_R.avi", AviWriter().junk(SideDataWriter()).bytes());
        app.open(folder.path());
    }
    /// What the map is told at a position.
    std::string toldAt(double position)
    {
        app.desk.map.scripts.clear();
        app.playInfo().setPosition(position);
        return app.desk.map.scripts.empty() ? "" : app.desk.map.scripts.back();
    }
};

TEST_F(PlayedMoment, SouthAndWestComeFromTheFixOfThePlacesIndexAndStay)
{
    // In a process of its own: the hemisphere stays for the rest of the run.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto walk = [this] {
        app.start(0);
        EXPECT_EQ(toldAt(0.95), "setLatLag('127.025000','37.390945')") << "there is no tenth fix";
        EXPECT_EQ(toldAt(0.05), "setLatLag('127.025000','37.390945')");
        EXPECT_EQ(toldAt(0.15), "setLatLag('127.025000','-37.390945')");
        EXPECT_EQ(toldAt(0.25), "setLatLag('-127.025000','-37.390945')");
        EXPECT_EQ(toldAt(0.05), "setLatLag('-127.025000','-37.390945')");
        EXPECT_EQ(app.texts({"latitudeField", "longitudeField"}), "-37.3909|-127.0250");
        std::fflush(stdout);
        std::_Exit(HasFailure() ? 1 : 0);
    };
    EXPECT_EXIT(walk(), testing::ExitedWithCode(0), "");
}

TEST_F(PlayedMoment, ARecordingWithoutPlacesTellsTheMapSo)
{
    app.start(1);
    EXPECT_EQ(toldAt(0.1), "ZVKDebug('GPS Data Count=Zero')");
    EXPECT_EQ(toldAt(0.1), "ZVKDebug('GPS Data Count=Zero')");
}

TEST_F(PlayedMoment, AClickOnTheGraphGoesThereAndThePointerTellsWhatIsThere)
{
    auto& graph = app.find<GraphView>("graphView");
    const auto at = [&](double fraction) {
        return QPoint(int(20 + fraction * (graph.width() - 40)), graph.height() / 2);
    };
    QTest::mouseClick(&graph, Qt::LeftButton, {}, at(0.5));
    EXPECT_EQ(app.player().countOf("setMedia"), 0u) << "nothing to go to";
    app.start(0);
    QTest::mousePress(&graph, Qt::LeftButton, {}, at(0.5));
    EXPECT_NEAR(app.playInfo().position(), 0.5, 0.01);
    QTest::mouseMove(&graph, at(0.75));
    EXPECT_EQ(graph.described(0.5), "00:30   X=0.00  Y=0.00  Z=0.00   21 Km/h");
    app.start(1);
    EXPECT_EQ(graph.described(0.5), "");
}

TEST_F(PlayedMoment, TheUnitOfSpeedChangesAlsoWhileNothingMoves)
{
    app.start(0);
    app.controller->setDisplayMile(1);
    EXPECT_EQ(app.text("speedField"), "33 Mi/h");
}

TEST_F(PlayedMoment, TheDirectionIsTheCamerasOnlyWithAudio)
{
    for (const auto& [tracks, direction] : {std::pair{std::vector{1}, 1}, {{}, 2}}) {
        app.desk.player->tracks = tracks;
        app.start(1);
        EXPECT_EQ(app.playInfo().audioMediaDirection(), direction);
    }
}

TEST_F(PlayedMoment, TheMapsPageFollowsTheLanguage)
{
    EXPECT_THAT(app.desk.map.loads.back(), EndsWith("map2_eng.htm"));
    EXPECT_THAT(AppDelegateProbe("ko").desk.map.loads.back(), EndsWith("map2.htm"));
}

TEST_F(PlayedMoment, EveryFileBeginsAtItsOwnSpeed)
{
    app.start(0);
    app.controller->increaseSpeed();
    ASSERT_EQ(app.player().speed, 2);
    app.start(1);
    EXPECT_EQ(app.player().speed, 1);
    EXPECT_EQ(app.playInfo().speed(), 1);
    EXPECT_EQ(app.text("speedTextButton"), "1.0x");
}

} // namespace
