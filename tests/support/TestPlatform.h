#pragma once

#include "platform/Platform.h"
#include "platform/mpv/VideoView.h"
#include "tests/support/ScriptedPlayer.h"
#include "tests/support/ScriptedPreviews.h"
#include "tests/support/TestDiskArbitration.h"
#include "tests/support/TestPrinting.h"
#include "tests/support/TestWebView.h"
#include "tests/support/VirtualDispatcher.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// A desktop for tests: a virtual clock, a scripted player, answers given in advance, screens as told.
class TestPlatform {
public:
    TestPlatform()
    {
        pieces.makePreviews = [this] { return std::make_unique<ScriptedPreviews>(previews); };
    }

    VirtualDispatcher dispatcher;
    ScriptedPlayer* player = nullptr; // once the controller has made it

    struct TestPanels final : platform::Panels {
        std::optional<std::string> folder;
        int asked = 0;
        void chooseFolder(QWidget&, const std::string&, Answer answer) override
        {
            ++asked;
            answer(folder);
        }
        platform::OpenPanel open;
        Answer openAnswer; // of the open panel
        void chooseFile(QWidget&, const platform::OpenPanel& panel, Answer answer) override
        {
            open = panel;
            openAnswer = std::move(answer);
        }
        platform::SavePanel save;
        Answer saveAnswer; // of the open panel
        void chooseSaveFile(QWidget&, const platform::SavePanel& panel, Answer answer) override
        {
            save = panel;
            saveAnswer = std::move(answer);
        }
    } panels;

    struct TestAlerts final : platform::Alerts {
        std::vector<std::string> shown; // "title|message"
        void alertSheet(QWidget&, const std::string& title, const std::string& message,
            std::function<void()> dismissed) override
        {
            shown.push_back(title + "|" + message);
            if (dismissed)
                dismissed();
        }
        /// Which button the user presses at once; without one the question stays open.
        std::optional<size_t> answer;
        struct Question {
            std::vector<std::string> buttons;
            std::function<void(size_t)> answered;
        };
        std::vector<std::shared_ptr<Question>> open;
        std::function<void()> ask(QWidget&, const std::string& title, const std::string& message,
            const std::vector<std::string>& buttons, std::function<void(size_t)> answered) override
        {
            shown.push_back(title + "|" + message);
            const auto question = std::make_shared<Question>(Question{buttons, std::move(answered)});
            if (answer)
                question->answered(*answer);
            else
                open.push_back(question);
            return [this, question] { std::erase(open, question); };
        }
    } alerts;

    struct TestDefaults final : platform::UserDefaults {
        std::map<std::string, std::vector<std::string>> lists;
        std::map<std::string, bool> flags;
        std::vector<std::string> stringList(const std::string& key) const override
        {
            return lists.contains(key) ? lists.at(key) : std::vector<std::string>{};
        }
        void setStringList(const std::string& key, const std::vector<std::string>& values) override
        {
            lists[key] = values;
        }
        std::optional<bool> boolean(const std::string& key) const override
        {
            return flags.contains(key) ? std::optional(flags.at(key)) : std::nullopt;
        }
    } defaults;

    /// Frames are kept by the window's name; the window really gets the size.
    struct TestScreens final : platform::Screens {
        std::vector<platform::Screen> screens{{1, {0, 0, 1920, 1080}, {0, 0, 1920, 1050}}};
        platform::Rect frame;
        platform::Screen screenOf(const QWidget&) const override
        {
            return platform::screenHoldingMost(screens, frame);
        }
        std::vector<platform::Screen> all() const override { return screens; }
        platform::Rect frameOf(const QWidget&) const override { return frame; }
        bool wasAnimated = false; // the latest change of a frame
        void setFrameOf(QWidget& window, const platform::Rect& wanted, bool animated) override
        {
            frame = wanted;
            wasAnimated = animated;
            window.resize(int(wanted.width), int(wanted.height));
        }
        bool startMove(QWidget&) override { return false; }
        uint32_t options = 0;
        uint32_t presentationOptions() const override { return options; }
        void setPresentationOptions(QWidget&, uint32_t wanted) override { options = wanted; }
    } screens;

    TestDiskArbitration disks;
    TestPrintSession printing;
    TestScriptRunner scripts;

    TestWebView::Log map;
    ScriptedPreviews::Log previews;

    platform::Platform pieces{dispatcher, panels, alerts, defaults, screens, printing, scripts, disks,
        [this](platform::VideoView&) {
            auto made = std::make_unique<ScriptedPlayer>();
            player = made.get();
            return made;
        },
        [this](QWidget& parent) { return std::make_unique<TestWebView>(parent, map); }};
};
