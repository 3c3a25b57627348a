#pragma once

#include <functional>
#include <string>

class QWidget;

namespace platform {

/// An embedded web page of the application's resources. It reaches nothing else of the machine.
/// Scripts that fail are lost without a report. So are scripts that are sent before the page has loaded, but
/// for the latest one: it runs when the page is there, so that a view that comes late shows the state of the
/// moment.
class WebView {
public:
    virtual ~WebView() = default;

    /// Lives until the view goes, or the parent that the view was made for.
    virtual QWidget& widget() = 0;
    /// Loads a page ("map2_eng.htm"); what follows a "#" is a word to the page.
    virtual void loadResource(const std::string& page) = 0;
    virtual void evaluateWebScript(const std::string& script) = 0;
    /// The script runs now and after every load of the page, before any other; empty: none.
    virtual void setStandingScript(const std::string& script) = 0;
    /// Called with a word that the page says to the program.
    std::function<void(const std::string& word)> said = [](const std::string&) {};
};

} // namespace platform
