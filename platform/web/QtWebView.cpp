#include "platform/web/QtWebView.h"

#include "platform/Texts.h"
#include "platform/web/WebEngine.h"

#include <QEvent>
#include <QTimer>
#include <QVBoxLayout>
#include <QWebEngineView>
#include <QWindow>

#include <functional>
#include <utility>

namespace platform {

namespace {

/// A page that ran this long is not counted as crashed at start.
constexpr int recoverySeconds = 60;

} // namespace

/// The widget that contains the page. Reports once, from the event loop, that its window has appeared on
/// screen, and every time that it comes into sight itself.
class QtWebView::Stage final : public QWidget {
public:
    Stage(QWidget& parent, std::function<void()> appeared)
        : QWidget(&parent),
          report(std::move(appeared))
    {
        setAutoFillBackground(true);
        setBackgroundRole(QPalette::Base);
        auto* fill = new QVBoxLayout(this);
        fill->setContentsMargins(0, 0, 0, 0);
        watched = window();
        watched->installEventFilter(this);
        watchScreen();
    }

    void put(QWidget& content) { layout()->addWidget(&content); }

    std::function<void()> shown;

protected:
    void showEvent(QShowEvent* event) override
    {
        QWidget::showEvent(event);
        if (shown)
            shown();
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (object == watched && event->type() == QEvent::Show)
            watchScreen();
        else if (event->type() == QEvent::Expose)
            QTimer::singleShot(0, this, [this] { watchScreen(); });
        return false;
    }

private:
    void watchScreen()
    {
        QWindow* handle = watched ? watched->windowHandle() : nullptr;
        if (!report || !handle)
            return;
        if (!handle->isExposed()) {
            handle->installEventFilter(this);
            return;
        }
        handle->removeEventFilter(this);
        watched->removeEventFilter(this);
        QTimer::singleShot(0, this, std::exchange(report, nullptr));
    }

    std::function<void()> report;
    QPointer<QWidget> watched;
};

QtWebView::QtWebView(QWidget& parent, std::shared_ptr<WebEngine> sharedEngine)
    : engine(std::move(sharedEngine)),
      stage(new Stage(parent, [this] { start(); }))
{
    constexpr auto gatheringTime = std::chrono::seconds(1);
    gathering.setSingleShot(true);
    gathering.setInterval(gatheringTime);
    QObject::connect(&gathering, &QTimer::timeout, &gathering, [this] { runWaiting(); });
    stage->shown = [this] { runWaiting(); };
}

QtWebView::~QtWebView()
{
    delete stage;
}

QWidget& QtWebView::widget()
{
    return *stage;
}

void QtWebView::start()
{
    isOnScreen = true;
    if (!WebEngine::canRun()) {
        showUnavailable();
        return;
    }
    delete unavailable;
    view = new QWebEngineView(stage);
    view->setContextMenuPolicy(Qt::NoContextMenu);
    view->setAcceptDrops(false);
    auto* content = new ResourcePage(engine->profile(), *view);
    content->setBackgroundColor(stage->palette().color(QPalette::Base));
    QObject::connect(content, &QWebEnginePage::loadStarted, stage, [this] { isLoaded = false; });
    QObject::connect(content, &QWebEnginePage::loadFinished, stage, [this](bool ok) { pageLoaded(ok); });
    QObject::connect(
        content, &QWebEnginePage::titleChanged, stage, [this](const QString& title) { titleChanged(title); },
        Qt::QueuedConnection);
    // Not from inside the engine's signal.
    QObject::connect(
        content, &QWebEnginePage::renderProcessTerminated, stage, [this] { pageDied(); },
        Qt::QueuedConnection);
    view->setPage(content);
    // Until it is shown for the first time the engine takes it for visible.
    content->setVisible(view->isVisible());
    stage->put(*view);
    load();
}

void QtWebView::loadResource(const std::string& wanted)
{
    page = wanted;
    latestScript.clear();
    lastDeath.invalidate();
    if (unavailable && isOnScreen)
        start();
    else
        load();
}

void QtWebView::load()
{
    isLoaded = false;
    if (view && !page.empty())
        view->load(ResourcePage::address(page));
}

void QtWebView::evaluateWebScript(const std::string& script)
{
    latestScript = script;
    if (!isLoaded)
        return;
    waiting.push_back(script);
    if (stage->isVisible())
        runWaiting();
    else if (!gathering.isActive())
        gathering.start();
}

void QtWebView::setStandingScript(const std::string& script)
{
    standingScript = script;
    if (isLoaded && view && !script.empty())
        view->page()->runJavaScript(QString::fromStdString(script));
}

/// A page has no other way to reach the program: its title tells a number and a word.
void QtWebView::titleChanged(const QString& title)
{
    const QStringList parts = title.split(u':');
    if (parts.size() == 3 && parts[0] == QLatin1String("zavik"))
        said(parts[2].toStdString());
}

void QtWebView::runWaiting()
{
    gathering.stop();
    for (const std::string& script : std::exchange(waiting, {})) {
        if (isLoaded && view)
            view->page()->runJavaScript(QString::fromStdString(script));
    }
}

void QtWebView::ask(const QString& script, std::function<void(const QVariant&)> answer) const
{
    if (view)
        view->page()->runJavaScript(script, std::move(answer));
}

void QtWebView::pageLoaded(bool isComplete)
{
    isLoaded = isComplete;
    waiting.clear();
    if (isLoaded && !standingScript.empty())
        view->page()->runJavaScript(QString::fromStdString(standingScript));
    if (isLoaded && !latestScript.empty())
        view->page()->runJavaScript(QString::fromStdString(latestScript));
}

void QtWebView::pageDied()
{
    isLoaded = false;
    const bool diesAgain = lastDeath.isValid() && !lastDeath.hasExpired(recoverySeconds * 1000);
    lastDeath.start();
    if (diesAgain)
        showUnavailable();
    else
        load();
}

void QtWebView::showUnavailable()
{
    delete view;
    if (unavailable)
        return;
    unavailable = new QLabel(localized("map.unavailable"), stage);
    unavailable->setAlignment(Qt::AlignCenter);
    unavailable->setWordWrap(true);
    unavailable->setProperty("role", "hint");
    stage->put(*unavailable);
}

} // namespace platform
