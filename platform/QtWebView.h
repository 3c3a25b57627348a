#pragma once

#include "platform/WebView.h"

#include <QPointer>

#include <memory>

class QWebEngineView;

namespace platform {

class WebEngine;

/// A web view on Qt WebEngine. Cheap to make: the engine starts only after the window that holds the parent
/// is on screen. Where the engine cannot run, or its page has died twice, a plain text takes the page's
/// place.
class QtWebView final : public WebView {
public:
    QtWebView(QWidget& parent, std::shared_ptr<WebEngine> engine);
    ~QtWebView() override;

    QWidget& widget() override;
    void loadResource(const std::string& page) override;
    void evaluateWebScript(const std::string& script) override;

private:
    class Stage;

    void start();
    void load();
    void pageLoaded(bool isComplete);
    void pageDied();
    void showUnavailable();

    std::shared_ptr<WebEngine> engine;
    QPointer<Stage> stage;
    QPointer<QWebEngineView> view;
    std::string page;
    std::string latestScript;
    bool isLoaded = false;
    bool hasDied = false;
};

} // namespace platform
