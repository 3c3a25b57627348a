#include "platform/Texts.h"
#include "platform/qt/QtPanels.h"
#include "platform/qt/ShownFolders.h"
#include "tests/support/GuiTesting.h"

namespace {

class Panels : public testing::Test {
protected:
    Panels()
    {
        window.show();
        panels.setCardFinder([this] { return card; });
    }

    QFileDialog* panel() const
    {
        const auto found = window.findChildren<QFileDialog*>();
        const auto shown = std::ranges::find_if(found, [](QFileDialog* each) { return each->isVisible(); });
        return shown == found.end() ? nullptr : *shown;
    }

    std::string folderOfPanel(const platform::OpenPanel& wanted = {"Open", "drv"})
    {
        panels.chooseFile(window, wanted, [](const auto&) {});
        EXPECT_FALSE(panel()) << "nothing is looked at before the background has its turn";
        desktop.dispatcher.runAll();
        const QString start = panel()->directory().path();
        panel()->reject();
        return start.toStdString();
    }

    TempFolder folder;
    TestPlatform desktop;
    platform::ShownFolders folders;
    platform::QtPanels panels{
        desktop.dispatcher, desktop.defaults, [this](QWidget& asking, const auto& request, auto answer) {
            QFileDialog& made = platform::makeFilePanel(request, folders, &asking);
            QObject::connect(&made, &QFileDialog::finished, &made, [=, this, &made](int result) {
                answer(result == QDialog::Accepted ? chosenPath(made, folders) : std::nullopt);
            });
            made.open();
        }};
    std::optional<std::string> card;
    QWidget window;
};

TEST_F(Panels, StartOnTheCardElseInTheLastFolderElseInTheDocuments)
{
    folder.file("last/track.drv");
    folder.file("card/config.bin");
    const std::string documents = folderOfPanel();
    EXPECT_NE(documents, QDir::currentPath().toStdString());

    std::vector<std::optional<std::string>> answers;
    folder.file("last/a.csv", "mine"); // whoever asks looks at it; the panel does not
    panels.chooseSaveFile(window, {"Save", "a.csv", folder.path("last"), "csv"},
        [&](const auto& path) { answers.push_back(path); });
    EXPECT_TRUE(panel()->filter() & QDir::Hidden);
    QMetaObject::invokeMethod(panel(), "accept");
    ASSERT_EQ(answers.size(), 1u);
    EXPECT_EQ(answers[0], folder.path("last/a.csv"));
    EXPECT_EQ(folderOfPanel(), folder.path("last"));
    card = folder.path("card");
    EXPECT_EQ(folderOfPanel(), folder.path("card"));
    card = folder.path("pulled");
    EXPECT_EQ(folderOfPanel(), folder.path("last")) << "a card that cannot be looked into";
    card.reset();
    fs::remove_all(folder.path("last"));
    EXPECT_EQ(folderOfPanel(), documents);
}

TEST_F(Panels, ShowACardWhoseNameIsNotUtf8AndAnswerItsBytes)
{
    card = folder.path("caf\xe9");
    folder.file("caf\xe9/DrvInfo/a.drv");
    std::vector<std::optional<std::string>> answers;
    const auto choose = [&](const char* chosen) {
        desktop.dispatcher.runAll();
        if (chosen)
            panel()->selectFile(panel()->directory().path() + chosen);
        QMetaObject::invokeMethod(panel(), "accept");
    };
    const auto collect = [&](const auto& path) { answers.push_back(path); };
    panels.chooseFolder(window, "Open", collect);
    choose(nullptr);
    panels.chooseFile(window, {"Open", "drv"}, collect);
    choose("/DrvInfo/a.drv");
    panels.chooseSaveFile(window, {"Save", "a.csv", *card + "/DrvInfo", "csv"}, collect);
    choose(nullptr);
    EXPECT_EQ(answers,
        (std::vector<std::optional<std::string>>{*card, *card + "/DrvInfo/a.drv", *card + "/DrvInfo/a.csv"}));
    EXPECT_EQ(desktop.defaults.lists.count("LastPanelFolder"), 0u);
}

TEST_F(Panels, DoNotWaitForACardThatHangsAndOpenOnce)
{
    int answers = 0;
    {
        QWidget closed;
        panels.chooseFolder(closed, "Open", [&](const auto&) { answers = 100; });
    }
    for (int i = 0; i < 2; ++i)
        panels.chooseFolder(window, "Open", [&](const auto& path) { answers += path ? 0 : 1; });
    EXPECT_EQ(answers, 1) << "asked twice before anything was there to see";
    desktop.dispatcher.advance(499ms);
    EXPECT_FALSE(panel());
    desktop.dispatcher.advance(1ms);
    ASSERT_TRUE(panel());
    panel()->reject();
    card = folder.path();
    desktop.dispatcher.runAll();
    EXPECT_FALSE(panel()) << "the answer that came late";
    EXPECT_EQ(answers, 2);
}

TEST_F(Panels, SpeakTheLanguageOfTheProgram)
{
    platform::setTextLanguage("ko");
    panels.chooseSaveFile(window, {"저장", "a.csv", folder.path(), "", false, true}, [](const auto&) {});
    EXPECT_FALSE(panel()->filter() & QDir::Hidden);
    QStringList texts;
    for (const auto* button : panel()->findChildren<QPushButton*>())
        texts += button->text();
    for (const auto* label : panel()->findChildren<QLabel*>())
        texts += label->text();
    EXPECT_EQ(texts.filter(QRegularExpression("[A-Za-z]{2}")).join('|'), "");
    panel()->reject();
    platform::setTextLanguage("en");
}

TEST(Question, IsAnsweredByAButtonOrByEscapeAndGoesAwayUnanswered)
{
    QWidget window;
    window.show();
    std::vector<size_t> answers;
    const auto ask = [&] {
        return platform::QtAlerts().ask(window, "title", "message", {"Save & go", "Leave", "Cancel"},
            [&](size_t button) { answers.push_back(button); });
    };
    const auto box = [&] { return window.findChild<QMessageBox*>(); };
    const auto gone = [&] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return !box();
    };
    const std::function<void()> ways[] = {[&] { box()->buttons().front()->click(); },
        [&] { box()->buttons()[1]->click(); }, [&] { QTest::keyClick(box(), Qt::Key_Escape); },
        [&] { box()->defaultButton()->click(); }};
    for (const auto& way : ways) {
        const auto takeAway = ask();
        EXPECT_EQ(box()->buttons().front()->text(), "Save && go");
        way();
        ASSERT_TRUE(gone());
        takeAway();
    }
    ask()();
    EXPECT_TRUE(gone());
    EXPECT_EQ(answers, (std::vector<size_t>{0, 1, 2, 2}));
}

TEST(PlainText, IsWhatLabelsAlertsAndTipsShow)
{
    const QString hostile = QStringLiteral("<b>x</b> & <img src='/tmp/x.png'>");
    QWidget window;
    QLabel label(hostile, &window);
    window.show();
    EXPECT_EQ(label.textFormat(), Qt::PlainText);
    platform::QtAlerts().alertSheet(window, hostile.toStdString(), hostile.toStdString(), {});
    int shown = 0;
    for (const auto* each : window.findChild<QMessageBox*>()->findChildren<QLabel*>()) {
        EXPECT_EQ(each->textFormat(), Qt::PlainText) << each->objectName().toStdString();
        shown += each->text() == hostile;
    }
    EXPECT_EQ(shown, 2) << "title and message";
    QToolTip::showText({10, 10}, hostile, &window);
    const auto tips = QApplication::topLevelWidgets();
    const auto tip = std::ranges::find_if(tips, [](QWidget* each) { return each->inherits("QTipLabel"); });
    ASSERT_NE(tip, tips.end());
    EXPECT_EQ(static_cast<QLabel*>(*tip)->textFormat(), Qt::PlainText);
    QToolTip::hideText();
}

} // namespace
