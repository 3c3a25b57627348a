#pragma once

#include <functional>
#include <string>

class QWidget;

namespace platform {

/// An embedded web page of the application's resources. It cannot read anything else of the machine. Scripts
/// that fail are dropped without a report. Of the scripts sent before the page has loaded only the latest
/// runs, so that a view that loads late shows the current state.
class WebView {
public:
    virtual ~WebView() = default;

    /// Lives until the view goes, or the parent that the view was made for.
    virtual QWidget& widget() = 0;
    /// Loads a page ("map2_eng.htm"); what follows a "#" is passed to the page.
    virtual void loadResource(const std::string& page) = 0;
    virtual void evaluateWebScript(const std::string& script) = 0;
    /// The script runs now and after every load of the page, before any other; empty: none.
    virtual void setStandingScript(const std::string& script) = 0;
    /// Called with a word that the page says to the program.
    std::function<void(const std::string& word)> said = [](const std::string&) {};
};

} // namespace platform
