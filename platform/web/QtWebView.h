#pragma once

#include "platform/WebView.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWebEngineView;

namespace platform {

class WebEngine;

/// A web view on Qt WebEngine. Cheap to make: the engine starts only after the window that holds the parent
/// is on screen. Where the engine cannot run, or its page has died twice within a minute, a plain text takes
/// the page's place until the next load. Out of sight the page gets its scripts once a second, together, so
/// that it costs little; when it comes into sight it has all of them.
class QtWebView final : public WebView {
public:
    QtWebView(QWidget& parent, std::shared_ptr<WebEngine> engine);
    ~QtWebView() override;

    QWidget& widget() override;
    void loadResource(const std::string& page) override;
    void evaluateWebScript(const std::string& script) override;
    void setStandingScript(const std::string& script) override;

    /// What a script gives, for tests and measurements; never answers when there is no page.
    void ask(const QString& script, std::function<void(const QVariant&)> answer) const;

private:
    class Stage;

    void start();
    void load();
    void pageLoaded(bool isComplete);
    void pageDied();
    void showUnavailable();
    void runWaiting();
    void titleChanged(const QString& title);

    std::shared_ptr<WebEngine> engine;
    QPointer<Stage> stage;
    QPointer<QWebEngineView> view;
    QPointer<QLabel> unavailable;
    std::string page;
    std::string latestScript;
    std::string standingScript;
    std::vector<std::string> waiting; // for a page out of sight
    QTimer gathering;
    bool isLoaded = false;
    bool isOnScreen = false;
    QElapsedTimer lastDeath;
};

} // namespace platform
