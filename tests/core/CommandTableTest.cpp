#include "cli/Commands.h"
#include "cli/commands/Generated.h"
#include "settings/record/FileDataFields.h"
#include "tests/support/Testing.h"
#include "tools/formathelper/FormatCard.h"

#include <algorithm>

TEST(CommandTable, HasAnActionForEachCommand)
{
    for (const cli::Command& command : cli::zavikctl.commands)
        EXPECT_EQ(std::ranges::count(cli::actions({}), command.name, &cli::Action::command), 1)
            << command.name;
}

TEST(CommandTable, EachFieldOfTheSettingsMayBeSetAtOnce)
{
    const auto config = std::ranges::find(cli::zavikctl.commands, "config", &cli::Command::name);
    EXPECT_EQ(config->operands.back().most, fileDataFields().size());
}

TEST(CommandTable, OperandsArriveAsTheyAreAndOddOptionsAreRefused)
{
    const auto read = [](const std::vector<std::string_view>& words) {
        return cli::parsed(
            cli::zavikctl, *std::ranges::find(cli::zavikctl.commands, "config", &cli::Command::name), words);
    };
    const std::vector<std::string_view> words{
        "set", "--region=en", "++", "[a=1,b=2]", "{}", "", "list", "--", "-1", "--"};
    const auto arguments = std::get<cli::Arguments>(read(words));
    EXPECT_THAT(
        arguments.operands, testing::ElementsAre("set", "++", "[a=1,b=2]", "{}", "", "list", "-1", "--"));
    EXPECT_EQ(arguments.value("--region"), "en");
    for (const char* odd : {"-1", "-!", "--!", "--json=true", "--js", "-j"})
        EXPECT_EQ(std::get<cli::Ending>(read({"set", "f", odd})).text, "unknown option " + std::string(odd));
}

TEST(CommandTable, NamesTheFormattingProgramsArguments)
{
    testing::internal::CaptureStderr();
    formatHelperMain(0, nullptr, {});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        usageLine(cli::formatCard, cli::formatCard.commands.front()) + "\n");
}

TEST(CommandTable, TextOfAManualPageIsNoRequest)
{
    const cli::Command command{"x", "Does.", ".so /etc/passwd\n'a\\b -c\n"};
    const cli::Program program{"x", 1, "Does.", "", {&command, 1}};
    EXPECT_THAT(cli::manPage(program, "1"), HasSubstr("\n\\&.so /etc/passwd\n.PP\n\\&'a\\eb \\-c\n"));
}
