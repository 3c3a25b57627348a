#include "cli/commands/Parser.h"

#include "cli/commands/Wrapped.h"
#include "common/Text.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace cli {

namespace {

constexpr size_t lineWidth = 100;
constexpr size_t columnWidth = 26;

/// The library's page with our usage line.
class HelpPage final : public CLI::Formatter {
public:
    explicit HelpPage(std::string line)
        : usage(std::move(line))
    {
        column_width(columnWidth);
    }

    std::string make_usage(const CLI::App*, std::string) const override { return usage + '\n'; }

private:
    std::string usage;
};

std::string column(std::string_view text)
{
    return wrapped(text, lineWidth - columnWidth);
}

void dress(CLI::App& app, const std::string& usage, const std::string& details)
{
    app.formatter(std::make_shared<HelpPage>(usage));
    app.set_help_flag("-h,--help", std::string(helpText));
    app.footer(wrapped(details, lineWidth));
}

template <typename Entry> void restrict(CLI::Option& option, const Entry& entry)
{
    option.type_name("value");
    if (!entry.choices.empty())
        option.check(CLI::IsMember(std::vector<std::string>(entry.choices.begin(), entry.choices.end())));
}

/// Each of an operand's words is an option of its own: of one with many the library would split "[a,b]".
void addOperand(CLI::App& app, const Operand& operand)
{
    for (size_t i = 0; i < operand.most; ++i) {
        CLI::Option& word = *app.add_option(std::string(operand.name) + (i ? std::to_string(i) : ""));
        word.description(column(operand.explanation))
            ->option_text(operand.most > 1 ? "..." : " ")
            ->required(i < operand.fewest);
        restrict(word, operand);
        if (i > 0)
            word.group("");
    }
}

void addOptions(CLI::App& app, const Command& command)
{
    std::vector<CLI::Option*> alternatives;
    for (const Option& option : command.options) {
        const std::string name(option.name);
        CLI::Option& added = option.value.empty() ? *app.add_flag(name) : *app.add_option(name);
        added.description(column(option.explanation));
        if (option.isHidden)
            added.group("");
        if (option.value.empty()) {
            added.disable_flag_override();
            for (CLI::Option* other : alternatives)
                added.excludes(other);
            alternatives.push_back(&added);
            added.option_text(" ");
        } else {
            restrict(added, option);
            added.option_text(std::string(option.value));
            if (!option.isOnce)
                added.multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
        }
    }
}

/// The first word that is meant as an option and is none. The library takes some of them for operands: "-1".
std::optional<std::string_view> unknownOption(const Command& command, Words words)
{
    for (size_t at = 0; at < words.size() && words[at] != "--"; ++at) {
        const std::string_view word = words[at];
        const auto option = std::ranges::find(command.options, word.substr(0, word.find('=')), &Option::name);
        const bool isKnown =
            option != command.options.end() && (option->name == word || !option->value.empty());
        if (!isKnown && word.size() > 1 && word.front() == '-')
            return word;
        if (isKnown && !option->value.empty() && option->name == word)
            ++at;
    }
    return std::nullopt;
}

Ending wrong(const Command& command, Words words, const std::string& otherwise)
{
    const auto unknown = unknownOption(command, words);
    return {false, visibleText(unknown ? "unknown option " + std::string(*unknown) : otherwise)};
}

Arguments sorted(const CLI::App& app, const Command& command)
{
    Arguments arguments;
    for (const CLI::Option* option : app.get_options()) {
        if (option->get_positional() && option->count() > 0)
            arguments.operands.push_back(option->results().front());
    }
    for (const Option& option : command.options) {
        const CLI::Option& given = *app.get_option(std::string(option.name));
        if (given.count() > 0)
            arguments.options.emplace_back(option.name, option.value.empty() ? "" : given.results().back());
    }
    return arguments;
}

} // namespace

std::optional<std::string> Arguments::value(std::string_view option) const
{
    const auto given = std::ranges::find(options, option, &std::pair<std::string_view, std::string>::first);
    return given == options.end() ? std::nullopt : std::optional(given->second);
}

// An application of its own for each command: below another one the library takes "++" and, after the
// operands that must be there, "--" for its own.
std::variant<Arguments, Ending> parsed(const Program& program, const Command& command, Words words)
{
    try {
        CLI::App app{std::string(command.summary), std::string(command.name)};
        dress(app, usageLine(program, command),
            std::string(command.details) + (command.details.empty() ? "" : "\n")
                + std::string(program.details));
        for (const Operand& operand : command.operands)
            addOperand(app, operand);
        addOptions(app, command);
        try {
            app.parse(std::vector<std::string>(words.rbegin(), words.rend()));
        } catch (const CLI::CallForHelp&) {
            return Ending{true, app.help()};
        } catch (const CLI::ExtrasError&) {
            return wrong(command, words, "too many arguments");
        }
        if (unknownOption(command, words))
            return wrong(command, words, {});
        return sorted(app, command);
    } catch (const CLI::Error& error) {
        return wrong(command, words, error.what());
    }
}

std::string programHelp(const Program& program)
{
    CLI::App app{std::string(program.summary), std::string(program.name)};
    const std::string name(program.name);
    dress(app, "usage: " + name + " COMMAND ...",
        '"' + name + " COMMAND --help\" tells more about one of them.\n\n" + std::string(program.details));
    app.set_version_flag("--version", "")->description(std::string(versionText));
    for (const Command& command : program.commands)
        app.add_subcommand(std::string(command.name), column(command.summary))->group("Commands");
    return app.help();
}

} // namespace cli
