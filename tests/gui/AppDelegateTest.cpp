#include "app/CommandLine.h"
#include "lib/LoadingIndicator.h"
#include "lib/SegmentedControl.h"
#include "platform/Images.h"
#include "tests/support/AppDelegateProbe.h"

namespace {

constexpr const char* first = "alwa_20150321_142530_F.avi";
using Start = AppTest;
using SecondaryWindow = AppTest;
using Folder = AppTest;

TEST_F(SecondaryWindow, IsReplacedOnlyWhenItsChangesAreSavedOrDropped)
{
    const auto shown = [](const char* className) {
        const auto all = QApplication::topLevelWidgets();
        return std::ranges::any_of(all, [&](QWidget* window) {
            return window->isVisible() && window->objectName() == QLatin1String(className);
        });
    };
    controller.showSettingPanel();
    app.desk.dispatcher.runAll();
    app.desk.dispatcher.advance(500ms);
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (auto* const rate = window->findChild<SegmentedControl*>("videoFrameRate"))
            rate->findChildren<QAbstractButton*>().front()->click();
    controller.showTimeSetupPanel();
    EXPECT_TRUE(shown("ZVKSettingController"));
    ASSERT_EQ(app.desk.alerts.open.size(), 1u);
    app.desk.alerts.open[0]->answered(2); // stay
    EXPECT_TRUE(shown("ZVKSettingController"));
    app.desk.alerts.answer = 1; // drop
    controller.showTimeSetupPanel();
    app.desk.dispatcher.runMain();
    EXPECT_FALSE(shown("ZVKSettingController"));
    EXPECT_TRUE(shown("ZVKTimeSetupController"));
}

TEST_F(Start, StoresTheLanguageUnlessItFollowsTheSystem)
{
    EXPECT_EQ(AppDelegateProbe("en").desk.defaults.lists["AppleLanguages"], std::vector<std::string>{"en"});
    EXPECT_TRUE(AppDelegateProbe("ko").isKorean());
    AppDelegateProbe automatic("auto");
    EXPECT_TRUE(automatic.desk.defaults.lists.empty());
    EXPECT_FALSE(automatic.isKorean());
}

TEST_F(Start, TakesTheUnitOfSpeedFromTheCardUnlessANewerOneWasSaved)
{
    for (const auto& [unit, expected] : {std::pair{1u, true}, {0u, false}, {0x100u, false}, {0x2u, true}}) {
        _FILEDATA record;
        initFileData(record);
        record.speed_disp_unit = unit;
        folder.file("config.bin", std::as_bytes(std::span(&record, 1)));
        AppDelegateProbe reading("en", {TestDiskArbitration::card(folder.path())});
        EXPECT_FALSE(reading.showsMiles());
        reading.desk.dispatcher.runAll();
        EXPECT_EQ(reading.showsMiles(), expected) << unit;
        AppDelegateProbe later("en", {TestDiskArbitration::card(folder.path())});
        for (const uint32_t saved : {expected ? 0u : 1u, 2u, 256u}) // the last two are no units
            later.controller->setDisplayMile(saved);
        later.desk.dispatcher.runAll();
        EXPECT_EQ(later.showsMiles(), !expected) << unit;
    }
}

TEST_F(Folder, ChoosingOneStopsThePlayerAndStartsNothing)
{
    TempFolder empty;
    openWith({first, "alwa_20150321_142600_F.avi"});
    EXPECT_EQ(app.list().count(), 2);
    app.start(1);
    controller.openMediaDirectoryDialog(); // and cancelled
    app.desk.dispatcher.runAll();
    EXPECT_EQ(app.list().count(), 2);
    EXPECT_EQ(app.player().countOf("stop"), 2u);
    app.desk.panels.folder = empty.path();
    controller.openMediaDirectoryDialog();
    EXPECT_EQ(app.player().countOf("stop"), 3u) << "two of them by the first folder and the start";
    app.desk.dispatcher.runAll();
    app.desk.dispatcher.advance(5s);
    EXPECT_EQ(app.list().count(), 0);
    EXPECT_EQ(app.player().calls.back(), "setMedia none");
    EXPECT_EQ(app.table().model()->rowCount(), 0);
    EXPECT_TRUE(app.isShown("listStateLabel"));
}

TEST_F(Folder, ListSaysWhatItDoesAndWhatWentWrong)
{
    folder.file(first);
    const auto said = [&] {
        return app.isShown("listStateLabel") ? app.text("listStateLabel").section(' ', 0, 0).toStdString()
                                             : "";
    };
    EXPECT_EQ(said(), "No");
    app.controller->openMediaDirectory(folder.path());
    EXPECT_EQ(said(), "Looking");
    app.desk.dispatcher.runAll();
    EXPECT_EQ(said(), "");
    app.open(folder.path("gone"));
    EXPECT_EQ(said(), "Nothing");
    TempFolder empty;
    app.open(empty.path());
    EXPECT_EQ(said(), "There");
}

TEST_F(Folder, ListSaysWhatIsNotInIt)
{
    const std::string path = folder.file(first);
    int deep = open(folder.path().c_str(), O_DIRECTORY);
    for (int i = 0; i < 20; ++i) { // a path that is too long for any program to read
        const std::string name(250, i ? 'x' : '<');
        ASSERT_EQ(mkdirat(deep, name.c_str(), 0700), 0);
        const int next = openat(deep, name.c_str(), O_DIRECTORY);
        close(std::exchange(deep, next));
    }
    close(deep);
    app.open(folder.path());
    const auto& label = app.find<QLabel>("listStateLabel");
    EXPECT_TRUE(label.isVisible());
    EXPECT_EQ(label.text(), "The folder “…" + QString(39, 'x') + "” could not be read.");
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    EXPECT_TRUE(app.table().isVisible());

    TempFolder full;
    for (int i = 0; i < 15001; ++i)
        fs::create_hard_link(path, full.path("alwa_20150321_" + std::to_string(100000 + i) + ".avi"));
    app.open(full.path());
    EXPECT_TRUE(label.text().startsWith("The list holds the first 15,000 recordings that were found in “"));
    EXPECT_TRUE(label.text().contains(QString::fromStdString(full.path()).right(20) + "”."));
    EXPECT_EQ(app.list().count(), 15000);
}

TEST_F(Folder, ListShowsKindDateTimeAndName)
{
    openWith({"event_20150321_142500.avi", "motion_20150321_142530.AVI", "abcdefghijklmnopqrst.avi"});
    const QAbstractItemModel& model = *app.table().model();
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells += model.index(row, column).data().toString();
        rows += cells.join('|');
    }
    EXPECT_EQ(rows.join('\n').toStdString(),
        "Always|||abcdefghijklmnopqrst.avi\n"
        "Event|2015-03-21|14:25:00|event_20150321_142500.avi\n"
        "Motion|2015-03-21|14:25:30|motion_20150321_142530.AVI");
    const char* const pictures[] = {"car_alwa", "car_event", "car_motion"};
    for (int row = 0; row < 3; ++row) {
        const auto icon = model.index(row, 0).data(Qt::DecorationRole).value<QIcon>();
        const QIcon wanted = platform::imageNamed(pictures[row]).icon();
        EXPECT_EQ(icon.pixmap(24).toImage(), wanted.pixmap(24).toImage()) << row;
    }
}

TEST_F(Folder, IndicatorHidesAfterFifteenSeconds)
{
    openWith({first});
    auto& indicator = app.find<LoadingIndicator>("progressIndicator");
    app.start(0);
    EXPECT_TRUE(indicator.isVisible());
    app.desk.dispatcher.advance(14900ms);
    EXPECT_TRUE(indicator.isVisible());
    EXPECT_NEAR(indicator.doubleValue(), 98, 0.01);
    app.desk.dispatcher.advance(300ms);
    EXPECT_FALSE(indicator.isVisible() || indicator.isAnimating());
}

TEST_F(Folder, QuittingDuringAScanAndDuringAnExtractionLeavesNothingBehind)
{
    openWith({first});
    controller.playAtIndex(0);
    controller.openMediaDirectory(folder.path());
    app.window().close();
    controller.applicationWillTerminate();
    app.controller.reset();
    app.desk.dispatcher.runAll();
    app.desk.dispatcher.advance(20s);
}

TEST(CommandLineArguments, AreRefusedWithUsageWhenWrong)
{
    const auto parse = [](std::vector<const char*> arguments) {
        return CommandLine::parsed(arguments, "en");
    };
    EXPECT_EQ(parse({"/card"}).folder, "/card");
    EXPECT_EQ(parse({"--language", "ko", "--", "-odd"}).folder, "-odd");
    EXPECT_EQ(parse({"--language", "ko"}).language, "ko");
    const CommandLine both = parse({"--card", "/copy", "/card"});
    EXPECT_EQ(both.card.value_or("") + both.folder.value_or(""), "/copy/card");
    EXPECT_EQ(parse({"--help"}).exitCode, 0);
    const CommandLine version = parse({"--version"});
    EXPECT_EQ(version.message, "zavik " ZAVIK_VERSION "\n");
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(parse({"--open-card"}).opensCard && !parse({"--open-card"}).opensSettings);
    EXPECT_TRUE(parse({"/card", "--settings"}).opensSettings);
    for (const auto& wrong :
        {std::vector{"--nonsense"}, {"--language"}, {"--language", "fr"}, {"a", "b"}, {"--card"},
            {"--card", "a", "--card", "b"}, {"--open-card", "a"}, {"--file-panel", "--settings"}})
        EXPECT_EQ(CommandLine::parsed(wrong, "en").exitCode, 2);
    EXPECT_TRUE(
        parse({"--\x1B[2J\xE2\x80\xAE"}).message.starts_with("zavik: unknown option --\\x1b[2J\\u202e\n"));
}

} // namespace
