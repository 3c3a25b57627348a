#include "platform/qt/PanelProcess.h"
#include "platform/qt/QtPanels.h"
#include "tests/support/GuiTesting.h"

namespace {

/// A window that asks a script, which takes the panel's part.
class PanelProcess : public testing::Test {
protected:
    void ask(const std::string& script)
    {
        window.show();
        made = new platform::PanelProcess(
            window, desktop.alerts, QString::fromStdString(folder.program("panel", script)), 100ms);
        made->show({platform::PanelRequest::Kind::save, {"Save", "caf\xe9.csv", folder.path("x\ny")}},
            [this](const auto& path) { answers.push_back(path); });
    }
    bool isAnswered()
    {
        return QTest::qWaitFor([this] { return !answers.empty() && !made; }, 20000);
    }

    TempFolder folder;
    TestPlatform desktop;
    QWidget window;
    QPointer<platform::PanelProcess> made;
    std::vector<std::optional<std::string>> answers;
};

TEST_F(PanelProcess, HandsTheRequestOverAndTheAnswerBackToTheByte)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> ofTheCard(std::fopen("/", "r"), std::fclose);
    const std::string number = std::to_string(fileno(ofTheCard.get()));
    ask("sleep 0.2; dd bs=65536 count=1 2>/dev/null of=" + folder.path("request") + "; [ -e /proc/$$/fd/"
        + number + " ] || [ $(pwd) != / ] || printf '.\\n.\\0/x/caf\\351\\na.csv\\0'; exec sleep 1000");
    QWidget* const modal = QApplication::activeModalWidget();
    ASSERT_TRUE(modal) << "the window takes input meanwhile";
    EXPECT_FALSE(modal->windowHandle() && modal->windowHandle()->isExposed());
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers.front(), "/x/caf\xe9\na.csv");
    EXPECT_FALSE(QApplication::activeModalWidget());
    const std::string sent = contents(folder.path("request"));
    ASSERT_GT(sent.size(), sizeof(quint64));
    const auto request =
        platform::PanelRequest::parsed(QByteArray::fromStdString(sent.substr(sizeof(quint64))));
    ASSERT_TRUE(request);
    EXPECT_EQ(request->kind, platform::PanelRequest::Kind::save);
    EXPECT_EQ(request->panel.name, "caf\xe9.csv");
    EXPECT_EQ(request->panel.folder, folder.path("x\ny"));
    EXPECT_FALSE(platform::PanelRequest::parsed("of no panel"));
}

TEST_F(PanelProcess, TellsAPanelThatFailsButNotOneThatIsCancelled)
{
    ask("printf '\\0\\0'");
    ASSERT_TRUE(isAnswered());
    EXPECT_THAT(desktop.alerts.shown, IsEmpty());
    const CollectedLog log;
    for (const char* failing : {"kill -SEGV $$", "exit 127", "printf .; exit 0"}) {
        desktop.alerts.shown.clear();
        ask(failing);
        ASSERT_TRUE(isAnswered());
        EXPECT_THAT(desktop.alerts.shown, SizeIs(1)) << failing;
    }
    EXPECT_THAT(answers, testing::Each(std::optional<std::string>()));
}

TEST_F(PanelProcess, GoesWhenTheProgramClosesItsWindows)
{
    ask("exec sleep 1000");
    QApplication::activeModalWidget()->close();
    ASSERT_TRUE(isAnswered());
    EXPECT_THAT(answers, ElementsAre(std::nullopt));
}

TEST_F(PanelProcess, TellsOneThatHangsUntilItAnswersAndTakesItAwayWhenTheUserSaysSo)
{
    ask("echo $$ >" + folder.path("number") + "; until [ -e " + folder.path("answers")
        + " ]; do sleep 0.05; done; printf .; exec sleep 1000");
    auto& questions = desktop.alerts.open;
    const auto asks = [&](bool open) {
        return QTest::qWaitFor([&] { return questions.empty() != open; }, 20000);
    };
    ASSERT_TRUE(asks(true));
    std::exchange(questions, {}).front()->answered(1);
    ASSERT_TRUE(asks(true)) << "once more, after the user has waited";
    folder.file("answers");
    ASSERT_TRUE(asks(false)) << "at the next sign of life";
    ASSERT_TRUE(asks(true));
    EXPECT_THAT(answers, IsEmpty());
    questions.front()->answered(0);
    EXPECT_THAT(answers, ElementsAre(std::nullopt)) << "nobody waits for the process";
    const int number = std::stoi(contents(folder.path("number")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return kill(number, 0) != 0; }, 20000)) << "left behind";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace
