#pragma once

#include <string>

class QWidget;

namespace platform {

/// An embedded web page. Scripts sent before the page has loaded, or that fail, are lost without a report.
class WebView {
public:
    virtual ~WebView() = default;

    virtual QWidget& widget() = 0;
    /// Loads a page of the application's resources ("map2_eng.htm").
    virtual void loadResource(const std::string& page) = 0;
    virtual void evaluateWebScript(const std::string& script) = 0;
};

} // namespace platform
