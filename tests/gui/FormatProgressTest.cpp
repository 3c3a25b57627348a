#include "cardtools/format/FormatWriting.h"
#include "cardtools/format/ZVKFormatWindowController.h"
#include "lib/PMProgressIndicator.h"
#include "platform/disks/WrittenBytes.h"
#include "tests/support/GuiTesting.h"

TEST(FormatProgress, GoesOnByWhatHasArrivedOnTheCard)
{
    TestPlatform platform;
    platform.disks.unmounted = {TestDiskArbitration::card("")};
    const uint64_t size = bytesOfFormat(platform.disks.unmounted[0].size);
    std::optional<uint64_t> count = 1'000'000;
    platform.pieces.writtenBytes = [&](const std::string& device) {
        return device == "sdb1" ? count : std::nullopt;
    };
    ZVKFormatWindowController controller(platform.pieces);
    auto& bar = *controller.window().findChild<PMProgressIndicator*>("progressBar");
    bar.setTimeSource([&] { return double(platform.dispatcher.now().count()) / 1000; });
    const auto after = [&](std::chrono::seconds time, std::optional<uint64_t> counted) {
        count = counted;
        platform.dispatcher.advance(time);
        return controller.window().findChild<QLabel*>("progressTextField")->text().toStdString();
    };
    const uint64_t half = 1'000'000 + size / 2;
    platform.scripts.script = [&](const std::string& command, bool) {
        if (!command.starts_with("sudo"))
            return platform::ScriptResult{};
        // The first bytes come before the main thread gets to it.
        count = *count + size / 10;
        EXPECT_EQ(after(1s, count), "30 % completed - Less than a minute remaining");
        EXPECT_EQ(after(3s, half), "50 % completed - About ten seconds remaining");
        EXPECT_EQ(after(2s, std::nullopt), "50 % completed - Less than a minute remaining");
        after(19s, 0);
        EXPECT_EQ(after(1s, half - size / 4), "50 % completed") << "it does not get on";
        EXPECT_EQ(after(1s, half + size), "75 % completed") << "the reading back is not measured";
        return platform::ScriptResult{};
    };
    platform.dispatcher.runAll();
    controller.onFormat();
    platform.dispatcher.runAll();

    // The time for the password is no part of the writing; the next card is counted from its own beginning.
    count = half;
    platform.scripts.script = [&](const std::string& command, bool) {
        if (command.starts_with("sudo")) {
            EXPECT_EQ(after(20min, half), "25 % completed");
            EXPECT_EQ(after(1s, half + size / 2), "50 % completed - About five seconds remaining");
        } else if (command.starts_with("diskutil mount")) {
            EXPECT_EQ(after(5s, half + size / 2), "75 % completed") << "never back";
        }
        return platform::ScriptResult{};
    };
    controller.onFormat();
    platform.dispatcher.runAll();
}

TEST(FormatProgress, CounterOfTheKernelIsTheSeventh)
{
    const TempFolder folder;
    folder.file("class/block/sdb1/stat", "  931231 31 31661318   122958    17800  1801569  8623664 87945\n");
    folder.file("class/block/sdc1/stat", "1 2 3 4 5 6\n");
    const platform::SystemRoots roots{.sys = folder.path()};
    EXPECT_EQ(platform::writtenBytes("sdb1", roots), uint64_t(8623664) * 512);
    for (const char* name : {"sdc1", "sdd1", "../block/sdb1", ""})
        EXPECT_EQ(platform::writtenBytes(name, roots), std::nullopt) << name;
}
