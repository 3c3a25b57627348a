#include "common/Text.h"
#include "tests/core/CliSupport.h"
#include "tests/support/Testing.h"
#include "tools/samplecard/AviWriter.h"

using testing::StartsWith;

TEST(Cli, RefusesWrongUsage)
{
    const std::vector<std::string> cases[] = {{}, {"frobnicate"}, {"list"}, {"list", "--", "--json", "a"},
        {"telemetry", "--json"}, {"telemetry", "a", "--json", "--csv"}, {"telemetry", "a", "-j"}};
    for (const auto& words : cases) {
        SCOPED_TRACE(testing::PrintToString(words));
        const Outcome outcome = zavikctl(words);
        EXPECT_EQ(outcome.code, 2);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_THAT(outcome.err, HasSubstr("usage: zavikctl "));
    }
}

TEST(Cli, FailsWithOneLineWhenSomethingCannotBeRead)
{
    const TempFolder folder;
    const std::string text = folder.file("notes.avi", "not a recording");
    const std::string empty = folder.file("empty.avi");
    const std::string missing = folder.path("miss\ning");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"list", missing}, {"list", text},
             {"list", ""}, {"telemetry", missing}, {"telemetry", text, "--json"},
             {"telemetry", empty, "--csv"}, {"telemetry", folder.path(), "--gpx"}, {"telemetry", ""}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        const Outcome outcome = zavikctl(words);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_THAT(outcome.out, IsEmpty());
        EXPECT_THAT(outcome.err, StartsWith("zavikctl: "));
        EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1);
    }
}

TEST(Cli, PrintsNothingThatCommandsATerminal)
{
    const TempFolder folder;
    const std::string evil = "\x1B[2J\r\xC2\x9B\xE2\x80\xAE\xE2\x81\xA9\x9B";
    const std::string shown = R"(\x1b[2J\x0d\u009b\u202e\u2069\x9b)";
    EXPECT_EQ(visibleText(evil + "앞"), shown + "앞");
    EXPECT_EQ(visibleText(shown), shown);
    const std::string file = folder.file(evil + ".avi", AviWriter().junk(SideDataWriter()).bytes());
    for (const std::vector<std::string>& words : {std::vector<std::string>{evil}, {"list", "--" + evil},
             {"drive-log", "--lang", evil, "a"}, {"telemetry", file}, {"telemetry", evil}, {"list", evil},
             {"list", file}, {"size", evil}, {"config", "show", evil}, {"config", "set", file, evil},
             {"clock", evil}, {"volumes", "--card", evil}, {"drive-log", evil + ".drv"}}) {
        SCOPED_TRACE(testing::PrintToString(words));
        const Outcome outcome = zavikctl(words);
        EXPECT_THAT(outcome.out + outcome.err, HasSubstr(R"(\x1b)"));
        EXPECT_EQ((outcome.out + outcome.err).find_first_of("\x1B\r\x9B"), std::string::npos);
    }
}

TEST(Cli, ListsInTheOrderOfTheLibrary)
{
    const TempFolder card;
    const std::string rear = card.file("a/alwa_20150321_142530_R.avi");
    const std::string odd = card.file("od\"d\n\xFF/park_20150321_142530.AVI");

    const Outcome plain = zavikctl({"list", card.path()});
    EXPECT_EQ(plain.code, 0);
    EXPECT_EQ(plain.out,
        "-          -        always -     " + card.path()
            + "/od\"d\\x0a\\xff/park_20150321_142530.AVI\n2015-03-21 14:25:30 always rear  " + rear + "\n");

    const Outcome json = zavikctl({"list", card.path(), "--json"});
    EXPECT_EQ(json.code, 0);
    EXPECT_EQ(json.out,
        "[{\"path\":\"" + card.path()
            + R"(/od\"d\u000a\udcff/park_20150321_142530.AVI",)"
              R"("file":"park_20150321_142530.AVI","kind":0,"date":"","time":"","direction":2},)"
              "\n{\"path\":\""
            + rear
            + R"(","file":"alwa_20150321_142530_R.avi","kind":0,)"
              R"("date":"2015-03-21","time":"14:25:30","direction":1}])"
              "\n");

    const TempFolder emptyFolder;
    EXPECT_EQ(zavikctl({"list", emptyFolder.path(), "--json"}).out, "[]\n");
    EXPECT_EQ(zavikctl({"list", emptyFolder.path()}).out, "");
}
