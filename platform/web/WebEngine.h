#pragma once

#include <QString>
#include <QWebEnginePage>

#include <memory>

class QWebEngineProfile;
class QWebEngineUrlRequestInterceptor;

namespace platform {

/// What all embedded pages share: their storage, and the rule that they may fetch street tiles and nothing
/// else from the network. The engine starts with the first profile(). Must outlive its pages; main thread
/// only.
class WebEngine {
public:
    WebEngine();
    ~WebEngine();

    /// Whether the engine can run its pages in a sandbox here (or was told to go without one by
    /// QTWEBENGINE_DISABLE_SANDBOX). It ends the process if it is started where it cannot.
    static bool canRun();

    QWebEngineProfile& profile();

private:
    std::unique_ptr<QWebEngineUrlRequestInterceptor> gate;
    std::unique_ptr<QWebEngineProfile> shared;
};

/// A page that stays where it is: the links of its credits open in the user's browser, everything else that
/// would lead away is refused. It opens no windows and no files.
class ResourcePage final : public QWebEnginePage {
public:
    ResourcePage(QWebEngineProfile& profile, QObject& parent);

    /// The address of a page of the application's resources.
    static QUrl address(const std::string& page);

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    QStringList chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) override { return {}; }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int, const QString&) override
    {
    }
};

} // namespace platform
