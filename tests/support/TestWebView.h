#pragma once

#include "platform/WebView.h"

#include <QPointer>
#include <QWidget>

#include <string>
#include <vector>

/// Records what it is told to load and to run. The log outlives the view.
class TestWebView final : public platform::WebView {
public:
    struct Log {
        std::vector<std::string> loads;
        std::vector<std::string> scripts;
        std::string standing;
        /// The page that was made last, for what it says.
        platform::WebView* page = nullptr;
    };

    TestWebView(QWidget& parent, Log& record)
        : view(new QWidget(&parent)),
          log(record)
    {
        log.page = this;
    }
    ~TestWebView() override { delete view; }

    QWidget& widget() override { return *view; }
    void loadResource(const std::string& page) override { log.loads.push_back(page); }
    void evaluateWebScript(const std::string& script) override { log.scripts.push_back(script); }
    void setStandingScript(const std::string& script) override { log.standing = script; }

private:
    QPointer<QWidget> view;
    Log& log;
};
