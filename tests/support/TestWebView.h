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
    };

    TestWebView(QWidget& parent, Log& record)
        : view(new QWidget(&parent)),
          log(record)
    {
    }
    ~TestWebView() override { delete view; }

    QWidget& widget() override { return *view; }
    void loadResource(const std::string& page) override { log.loads.push_back(page); }
    void evaluateWebScript(const std::string& script) override { log.scripts.push_back(script); }

private:
    QPointer<QWidget> view;
    Log& log;
};
