#include "platform/Texts.h"
#include "platform/mpv/VideoSnapshot.h"
#include "platform/qt/NewFile.h"
#include "tests/support/AppDelegateProbe.h"
#include "tests/support/FullDisk.h"

using platform::NewFile;

namespace {

std::string alert(const char* key)
{
    return "ZAVIK|" + platform::localized(key).toStdString();
}

/// A recording that plays.
class FrameCapture : public AppTest {
protected:
    FrameCapture()
    {
        app.desk.pieces.frameFile = frame;
        folder.file("card/alwa_20150321_142530_F.avi");
        app.open(folder.path("card"));
        app.start(0);
        app.player().calls.clear();
    }

    /// Captures and answers the save panel.
    void captureTo(std::optional<std::string> path)
    {
        app.controller->captureVideo();
        ASSERT_TRUE(panels.saveAnswer);
        std::exchange(panels.saveAnswer, {})(std::move(path));
        app.desk.dispatcher.runAll();
    }

    void printAndPress(int returnCode)
    {
        app.controller->print();
        app.desk.printing.press(returnCode);
    }

    std::string frame = folder.path("zavik_capture.jpg");
    TestPlatform::TestPanels& panels = app.desk.panels;
    std::vector<std::string>& alerts = app.desk.alerts.shown;
    std::vector<std::string>& commands = app.desk.scripts.commands;
    TestPrintSession& printing = app.desk.printing;
};

TEST_F(FrameCapture, SavesTheFrameThatWasOnScreenAndOpensIt)
{
    app.controller->captureVideo();
    EXPECT_THAT(app.player().calls, ElementsAre("saveVideoSnapshotAt 0x0"));
    EXPECT_EQ(panels.save.title, "Save Settings");
    EXPECT_EQ(panels.save.name, "zavik_capture.png");
    EXPECT_FALSE(panels.save.folder) << "where the user's things are";
    folder.file("zavik_capture.jpg", "the frame of another window of the program");
    panels.saveAnswer(folder.path("saved.png"));
    app.desk.dispatcher.runAll();
    EXPECT_EQ(contents(folder.path("saved.png")), "picture");
    EXPECT_THAT(commands, ElementsAre("open " + frame + " > /dev/null &"));
    EXPECT_THAT(alerts, IsEmpty());

    app.desk.scripts.status = 127;
    captureTo(folder.path("second.png"));
    EXPECT_THAT(alerts, ElementsAre(alert("capture.saved"))) << "no viewer shows it";
}

TEST_F(FrameCapture, NeedsAPlayingPlayer)
{
    for (const PlayerState state : {PlayerState::paused, PlayerState::opening, PlayerState::stopped}) {
        app.player().now = state;
        app.controller->captureVideo();
    }
    EXPECT_THAT(app.player().calls, IsEmpty());
    EXPECT_FALSE(panels.saveAnswer);
    AppDelegateProbe empty;
    empty.controller->print();
    EXPECT_THAT(empty.desk.printing.calls, IsEmpty());
}

TEST_F(FrameCapture, ARefusedChoiceIsToldAndTheSameFrameIsAskedForAgain)
{
    folder.file("taken.png", "mine");
    folder.file("taken 2.png", "mine, too");
    fs::create_symlink(folder.path("nowhere"), folder.path("link.png"));
    // What is chosen, what is told, the folder and the name that are asked for then.
    const std::tuple<std::string, const char*, std::string, std::string> cases[] = {
        {folder.path("taken.png"), "capture.exists", folder.path(), "taken 3.png"},
        {folder.path("link.png"), "capture.exists", folder.path(), "link 2.png"},
        {folder.path("card"), "capture.exists", folder.path(), "card 2"},
        {folder.path("missing/picture.png"), "capture.failed", folder.path(), "card 2"},
        {"/sys/picture.png", "capture.failed", "/sys", "picture.png"}, // where nobody can write
    };
    app.controller->captureVideo();
    folder.file("zavik_capture.jpg", "the frame of another window of the program");
    for (const auto& [path, told, next, name] : cases) {
        SCOPED_TRACE(path);
        alerts.clear();
        ASSERT_TRUE(panels.saveAnswer);
        std::exchange(panels.saveAnswer, {})(path);
        app.desk.dispatcher.runAll();
        EXPECT_THAT(alerts, ElementsAre(alert(told)));
        EXPECT_EQ(panels.save.folder, next);
        EXPECT_EQ(panels.save.name, name);
    }
    std::exchange(panels.saveAnswer, {})({}); // cancelled
    EXPECT_THAT(commands, IsEmpty());
    EXPECT_EQ(alerts.size(), 1u);
    app.controller->captureVideo();
    panels.saveAnswer(folder.path("taken 3.png"));
    app.desk.dispatcher.runAll();
    EXPECT_EQ(contents(folder.path("taken 3.png")), "picture");
    EXPECT_EQ(contents(folder.path("taken.png")), "mine");
    EXPECT_FALSE(fs::exists(folder.path("nowhere")));
    EXPECT_THAT(commands, ElementsAre("open " + frame + " > /dev/null &"));
}

/// A folder sits on the name of the frame's file, as any file of another user would.
TEST_F(FrameCapture, AForeignFileInTheWayDoesNotStopCaptureOrPrint)
{
    const QByteArray before = qgetenv("TMPDIR");
    const auto restore =
        qScopeGuard([&] { before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before); });
    qputenv("TMPDIR", QByteArray::fromStdString(folder.path("card")));
    fs::create_directory(frame);
    captureTo(folder.path("saved.png"));
    printAndPress(1);
    EXPECT_EQ(contents(folder.path("saved.png")), "picture");
    EXPECT_THAT(printing.calls, testing::Contains("printFile office image/jpeg picture"));
    EXPECT_THAT(alerts, IsEmpty());
    EXPECT_TRUE(fs::is_empty(frame));
    ASSERT_EQ(commands.size(), 1u);
    EXPECT_TRUE(commands[0].starts_with("open " + folder.path("card/zavik-"))) << commands[0];
}

TEST_F(FrameCapture, TheButtonsOfWhatCannotBeDoneSayWhy)
{
    auto& capture = app.find<TKImageButton>("captureButton");
    auto& print = app.find<TKImageButton>("printButton");
    const auto shows = [](TKImageButton& button, const char* whyNot) {
        const QString reason = whyNot ? platform::localized(whyNot) : QString();
        return button.isEnabled() == !whyNot && button.accessibleDescription() == reason
            && button.toolTip().contains(reason) && button.toolTip().contains("Ctrl+")
            && button.toolTip().contains('\n') == !button.isEnabled()
            && button.shownImage().name().endsWith(whyNot ? "_d" : "_n");
    };
    const char* const needsPlaying = "tip.capture_needs_playing";
    const char* const needsPicture = "tip.print_needs_picture";
    EXPECT_TRUE(shows(capture, nullptr) && shows(print, nullptr)) << "while it plays";
    app.player().reportState(PlayerState::paused);
    EXPECT_TRUE(shows(capture, needsPlaying) && shows(print, nullptr)) << "paused";
    app.player().reportState(PlayerState::playing);
    app.player().reportTime(0.5F);
    EXPECT_TRUE(shows(capture, nullptr) && shows(print, nullptr)) << "goes on";
    app.player().reportFailure("damaged");
    EXPECT_TRUE(shows(capture, needsPlaying) && shows(print, needsPicture)) << "failed";
    AppDelegateProbe fresh("ko");
    EXPECT_FALSE(fresh.find<TKImageButton>("captureButton").isEnabled());
    EXPECT_TRUE(shows(fresh.find<TKImageButton>("printButton"), needsPicture)) << "before the first file";
    platform::setTextLanguage("en");
}

TEST_F(FrameCapture, NeverSavesOrPrintsAnOlderFrame)
{
    folder.file("zavik_capture.jpg", "an hour ago");
    app.player().picture.reset();
    app.controller->captureVideo();
    app.controller->print();
    app.player().picture = "";
    app.controller->captureVideo();
    EXPECT_FALSE(panels.saveAnswer);
    EXPECT_THAT(printing.calls, IsEmpty());
    EXPECT_THAT(alerts, ElementsAre(alert("capture.failed"), alert("print.failed"), alert("capture.failed")));
}

TEST_F(FrameCapture, AnswersAfterTheWindowHasGoneDoNothing)
{
    app.controller->captureVideo();
    app.controller->print();
    app.controller.reset();
    panels.saveAnswer(folder.path("late.png"));
    app.desk.dispatcher.runAll();
    printing.press(1);
    EXPECT_THAT(commands, IsEmpty());
    EXPECT_THAT(printing.calls, ElementsAre("makePrintInfo", "showPanel"));
}

TEST_F(FrameCapture, PrintsAPausedFrameAndKeepsTheSettings)
{
    app.player().now = PlayerState::paused;
    printAndPress(0);
    EXPECT_THAT(printing.calls, ElementsAre("makePrintInfo", "showPanel"));
    printing.calls.clear();
    app.controller->print();
    folder.file("zavik_capture.jpg", "the frame of another window of the program");
    printing.press(1);
    EXPECT_THAT(printing.calls,
        ElementsAre("showPanel", "setValue fit-to-page=true", "mimeTypes office",
            "printFile office image/jpeg picture"));
    ASSERT_EQ(printing.shown.size(), 2u);
    EXPECT_EQ(printing.shown[0], printing.shown[1]);
    EXPECT_THAT(alerts, IsEmpty());
}

TEST_F(FrameCapture, LogsAndTellsWhyNothingWasPrinted)
{
    using Destination = platform::PrintSession::Destination;
    // What is wrong, how the log's line begins, what is told.
    const std::tuple<std::function<void()>, const char*, const char*> cases[] = {
        {[&] { printing.destination.reset(); }, "Either got an error", "print.failed"},
        {[&] { printing.destination = Destination::file; }, "Either got an error", "print.only_printer"},
        {[&] { printing.printer.status = 1030; }, "Got an error from PMSessionGetCurrentPrinter (1030)",
            "print.no_printer"},
        {[&] { printing.types.reset(); }, nullptr, "print.failed"},
        {[&] { printing.types = {"application/pdf"}; }, "MIME type image/jpeg isn't supported",
            "print.not_accepted"},
        {[&] { printing.printStatus = 1285; }, "PMPrinterPrintWithFile returned error 1285", "print.failed"},
    };
    for (const auto& [arrange, line, told] : cases) {
        SCOPED_TRACE(line ? line : told);
        alerts.clear();
        printing.destination = Destination::printer;
        printing.printer = {0, "office"};
        printing.types = {{"image/jpeg"}};
        arrange();
        const CollectedLog log;
        printAndPress(1);
        EXPECT_EQ(log.lines.size(), line ? 1u : 0u);
        EXPECT_TRUE(!line || log.lines.front().starts_with(line));
        EXPECT_THAT(alerts, ElementsAre(alert(told)));
    }
}

TEST(NewFileTest, AFullDiskLeavesNothingBehind)
{
    const TempFolder folder;
    const FullDisk disk(65536);
    EXPECT_EQ(platform::writeNewFile(folder.path("large"), std::string(1 << 20, 'x')), NewFile::failed);
    EXPECT_FALSE(fs::exists(folder.path("large")));
    EXPECT_EQ(platform::writeNewFile(folder.path("small"), "small"), NewFile::written);
    EXPECT_EQ(contents(folder.path("small")), "small");
}

TEST(VideoSnapshotTest, SharedFolderNeverLeadsToAnotherFile)
{
    const TempFolder folder;
    fs::permissions(folder.path(), fs::perms(01777));
    QImage picture(16, 16, QImage::Format_RGB32);
    picture.fill(Qt::red);
    const std::string path = folder.path("zavik_capture.jpg");

    folder.file("victim", "mine");
    fs::create_symlink(folder.path("victim"), path);
    EXPECT_TRUE(platform::writeVideoSnapshot(picture, path));
    struct stat written = {};
    ASSERT_EQ(::lstat(path.c_str(), &written), 0);
    EXPECT_EQ(written.st_mode, S_IFREG | 0600U);
    EXPECT_EQ(contents(folder.path("victim")), "mine");

    fs::remove(path);
    ::mkfifo(path.c_str(), 0600);
    EXPECT_FALSE(platform::writeVideoSnapshot(picture, path)) << "nobody would read it";
    fs::create_directory(folder.path("folder.png"));
    for (const char* name : {"folder.png", "no-format", "missing/deep.png"})
        EXPECT_FALSE(platform::writeVideoSnapshot(picture, folder.path(name))) << name;
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3)
        << "no temporary file stays behind";

    if (::geteuid() != 0)
        GTEST_SKIP() << "another user's file can be made by root only";
    for (const bool isLink : {false, true}) {
        fs::remove(path);
        isLink ? fs::create_symlink(folder.path("victim"), path)
               : (void)folder.file("zavik_capture.jpg", "theirs");
        ASSERT_EQ(::lchown(path.c_str(), 65534, 65534), 0);
        EXPECT_FALSE(platform::writeVideoSnapshot(picture, path));
        EXPECT_EQ(contents(path), isLink ? "mine" : "theirs");
    }
}

} // namespace
