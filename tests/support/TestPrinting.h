#pragma once

#include "common/Log.h"
#include "platform/PrintSession.h"
#include "platform/ScriptRunner.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// A printing service that answers as told and writes down what it was asked.
class TestPrintSession final : public platform::PrintSession {
public:
    std::optional<Destination> destination = Destination::printer;
    Printer printer{0, "office"};
    Types types = {{"application/pdf", "image/jpeg"}};
    int printStatus = 0;
    /// "makePrintInfo", "showPanel", "setValue fit-to-page=true", "mimeTypes office", ...
    std::vector<std::string> calls;
    /// What the user's next press in the panel answers.
    std::function<void(int)> panelAnswer;
    std::function<void(Types)> typesAnswer;
    /// Settings of every panel, in order.
    std::vector<const platform::PrintInfo*> shown;

    std::unique_ptr<platform::PrintInfo> makePrintInfo() override
    {
        calls.emplace_back("makePrintInfo");
        return std::make_unique<platform::PrintInfo>();
    }
    void showPanel(QWidget&, platform::PrintInfo& info, std::function<void(int)> answer) override
    {
        calls.emplace_back("showPanel");
        shown.push_back(&info);
        panelAnswer = std::move(answer);
    }
    void setValue(platform::PrintInfo&, const std::string& key, const std::string& value) override
    {
        calls.push_back(formatted("setValue %s=%s", key.c_str(), value.c_str()));
    }
    std::optional<Destination> destinationType(const platform::PrintInfo&) override { return destination; }
    Printer currentPrinter(const platform::PrintInfo&) override { return printer; }
    void mimeTypes(
        const std::string& name, const platform::PrintInfo&, std::function<void(Types)> answer) override
    {
        calls.push_back("mimeTypes " + name);
        typesAnswer = std::move(answer);
    }
    void printFile(const std::string& name, const platform::PrintInfo&, const std::string& mimeType,
        std::string contents, std::function<void(int)> answer) override
    {
        calls.push_back(formatted("printFile %s %s %s", name.c_str(), mimeType.c_str(), contents.c_str()));
        answer(printStatus);
    }

    /// The user presses Print (1) or Cancel (0), and the printer tells its types.
    void press(int returnCode)
    {
        panelAnswer(returnCode);
        if (typesAnswer)
            std::exchange(typesAnswer, {})(types);
    }
};

/// Writes the commands down; shell scripts answer as told.
class TestScriptRunner final : public platform::ScriptRunner {
public:
    int status = 0;
    std::vector<std::string> commands;

    int system(const std::string& command) override
    {
        commands.push_back(command);
        return status;
    }
    bool canLaunch = true;
    bool launchApplication(const std::string& name) override
    {
        commands.push_back("launch " + name);
        return canLaunch;
    }

    /// Called for every shell script, on the thread that runs it.
    std::function<platform::ScriptResult(const std::string& command, bool privileged)> script;
    platform::ScriptResult doShellScript(const std::string& command, bool privileged) override
    {
        commands.push_back(command + (privileged ? " as administrator" : ""));
        return script ? script(command, privileged) : platform::ScriptResult{};
    }
    std::optional<platform::ChosenMedium> chosen;
    void chooseMedium(const platform::ChosenMedium& medium) override { chosen = medium; }
};
