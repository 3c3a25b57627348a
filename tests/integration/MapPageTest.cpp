// The real page in the real view.

#include "platform/Texts.h"
#include "platform/web/QtWebView.h"
#include "platform/web/WebEngine.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/WaitFor.h"

#include <QWebEngineProfile>
#include <QWebEngineView>

// Asked by AddressSanitizer where it is on. The engine frees objects of its own by another size than it made
// them with.
extern "C" const char* __asan_default_options()
{
    return "new_delete_type_mismatch=0";
}

namespace {

class MapPage : public ::testing::Test {
protected:
    MapPage()
    {
        // Tests run side by side; each has its own storage.
        qputenv("XDG_DATA_HOME", storage.path().toLocal8Bit());
        qputenv("XDG_CACHE_HOME", storage.path().toLocal8Bit());
        window.resize(334, 400);
    }

    QWebEnginePage* content() const
    {
        const auto* engineView = window.findChild<QWebEngineView*>();
        return engineView ? engineView->page() : nullptr;
    }

    QVariant evaluate(const QString& script) const
    {
        std::optional<QVariant> answer;
        content()->runJavaScript(script, [&](const QVariant& value) { answer = value; });
        waitFor([&] { return answer.has_value(); });
        return answer.value_or(QVariant());
    }

    QJsonObject state() const
    {
        const QString text =
            evaluate("window.zavikMapState ? JSON.stringify(zavikMapState()) : '{}'").toString();
        return QJsonDocument::fromJson(text.toUtf8()).object();
    }

    QJsonObject car() const { return state()["car"].toObject(); }

    void openWithCarAt(const char* script)
    {
        view.loadResource("map2_eng.htm");
        view.evaluateWebScript(script);
        window.show();
        ASSERT_TRUE(waitFor([&] { return content() && !car().isEmpty(); }));
    }

    QTemporaryDir storage;
    QWidget window;
    std::shared_ptr<platform::WebEngine> engine = std::make_shared<platform::WebEngine>();
    platform::QtWebView view{window, engine};
};

TEST_F(MapPage, StartsOnlyWhenItsWindowIsOnScreenAndShowsTheLatestPoint)
{
    view.loadResource("map2_eng.htm");
    view.evaluateWebScript("setLatLag('127.000000','37.000000')");
    QCoreApplication::processEvents();
    EXPECT_EQ(content(), nullptr);
    openWithCarAt("setLatLag('126.978000','37.566500')");
    EXPECT_FALSE(content()->profile()->isOffTheRecord()) << "what is chosen on the page is kept";
    EXPECT_DOUBLE_EQ(car()["lng"].toDouble(), 126.978);
    EXPECT_DOUBLE_EQ(car()["lat"].toDouble(), 37.5665);
    EXPECT_EQ(state()["parts"].toArray().size(), 1);

    view.evaluateWebScript("setLatLag('126.978000','37.566600')");
    ASSERT_TRUE(waitFor([&] { return car()["lat"].toDouble() == 37.5666; }));
    EXPECT_DOUBLE_EQ(car()["course"].toDouble(), 0);
    view.evaluateWebScript("this is no script");
    view.evaluateWebScript("ZVKDebug('GPS Data Count=Zero')");
    EXPECT_TRUE(waitFor([&] { return state()["noGps"].toBool(); }));
}

TEST_F(MapPage, OutOfSightItGetsEveryScriptAllTheSame)
{
    openWithCarAt("setLatLag('127.000000','37.000000')");
    view.widget().hide();
    for (int i = 0; i < 3; ++i)
        view.evaluateWebScript("window.calls = (window.calls || 0) + 1");
    EXPECT_TRUE(waitFor([&] { return evaluate("window.calls").toInt() == 3; }));
    view.evaluateWebScript("window.calls = 9");
    view.widget().show();
    EXPECT_EQ(evaluate("window.calls").toInt(), 9) << "nothing is missing when it comes into sight";
}

TEST_F(MapPage, StaysWhereItIsAndOpensLinksInTheBrowser)
{
    QTextBrowser browser; // remembers the address that it is given
    QDesktopServices::setUrlHandler("https", &browser, "setSource");
    openWithCarAt("setLatLag('126.978000','37.566500')");
    const QUrl home = content()->url();
    evaluate("location.href = 'https://example.invalid/'; window.open('https://example.invalid/'); 0");
    evaluate("location.href = 'file:///etc/hostname'; 0");
    EXPECT_EQ(evaluate("fetch('https://example.invalid/').then(() => 1); typeof zavikMapState"), "function");
    EXPECT_EQ(content()->url(), home);
    EXPECT_FALSE(car().isEmpty());
    EXPECT_TRUE(browser.source().isEmpty());

    evaluate("document.querySelector('.leaflet-control-attribution a').click()");
    ASSERT_TRUE(waitFor([&] { return !browser.source().isEmpty(); }));
    EXPECT_EQ(browser.source(), QUrl("https://www.naturalearthdata.com/"));
    EXPECT_EQ(content()->url(), home);
    QDesktopServices::unsetUrlHandler("https");
}

TEST_F(MapPage, ComesBackAfterACrashAndAfterTwoWithTheNextLoad)
{
    openWithCarAt("setLatLag('126.978000','37.566500')");
    const auto kill = [&] {
        const qint64 process = content()->renderProcessPid();
        ASSERT_GT(process, 0);
        ASSERT_EQ(::kill(pid_t(process), SIGKILL), 0);
    };
    // A dead page never answers; it may be asked again when it is there again.
    bool isBack = false;
    QObject::connect(content(), &QWebEnginePage::loadFinished, &window, [&](bool ok) { isBack = ok; });
    kill();
    ASSERT_TRUE(waitFor([&] { return isBack; }));
    ASSERT_TRUE(waitFor([&] { return !car().isEmpty(); }));
    EXPECT_DOUBLE_EQ(car()["lng"].toDouble(), 126.978);
    kill();
    ASSERT_TRUE(waitFor([&] { return content() == nullptr; }));
    EXPECT_EQ(window.findChild<QLabel*>()->text(), platform::localized("map.unavailable"));
    view.loadResource("map2.htm");
    view.evaluateWebScript("setLatLag('127.000000','37.000000')");
    EXPECT_TRUE(waitFor([&] { return content() && car()["lng"].toDouble() == 127; }));
}

TEST_F(MapPage, ShowsATextWhereTheEngineMustNotStart)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root's engine needs its sandbox switched off";
    qunsetenv("QTWEBENGINE_DISABLE_SANDBOX");
    view.loadResource("map2_eng.htm");
    window.show();
    ASSERT_TRUE(waitFor([&] { return window.findChild<QLabel*>() != nullptr; }));
    EXPECT_EQ(window.findChild<QLabel*>()->text(), platform::localized("map.unavailable"));
    EXPECT_EQ(content(), nullptr);
}

} // namespace
