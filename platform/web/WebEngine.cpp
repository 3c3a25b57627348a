#include "platform/web/WebEngine.h"

#include <QDesktopServices>
#include <QLoggingCategory>
#include <QQuickWindow>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineUrlRequestInterceptor>

#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int tileCacheBytes = 32 * 1024 * 1024;

bool isResource(const QUrl& url)
{
    return url.scheme() == QLatin1String("qrc") && url.path().startsWith(QLatin1String("/map/"));
}

class Gate final : public QWebEngineUrlRequestInterceptor {
    void interceptRequest(QWebEngineUrlRequestInfo& request) override
    {
        const QUrl url = request.requestUrl();
        const bool isTile =
            url.scheme() == QLatin1String("https") && url.host() == QLatin1String("tile.openstreetmap.org");
        if (!isTile && !isResource(url) && url.scheme() != QLatin1String("data"))
            request.block(true);
    }
};

// Nothing here may allocate or lock: in the forked child other threads' locks stay taken.
bool wrote(const char* path, const char* text)
{
    const int file = open(path, O_WRONLY | O_CLOEXEC);
    return file >= 0 && write(file, text, strlen(text)) == ssize_t(strlen(text));
}

// The engine's sandbox is a user namespace of its own with the user mapped into it. Some systems forbid the
// one, some the other.
bool canMakeUserNamespace()
{
    const std::string users = std::to_string(geteuid()) + ' ' + std::to_string(geteuid()) + " 1";
    const std::string groups = std::to_string(getegid()) + ' ' + std::to_string(getegid()) + " 1";
    const pid_t child = fork();
    if (child == 0)
        _exit(unshare(CLONE_NEWUSER) == 0 && wrote("/proc/self/setgroups", "deny")
                    && wrote("/proc/self/gid_map", groups.c_str())
                    && wrote("/proc/self/uid_map", users.c_str())
                ? 0
                : 1);
    int status = 1;
    return child > 0 && waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// The addresses of the map's credits.
bool isCredit(const QUrl& url)
{
    return url.scheme() == QLatin1String("https")
        && (url.host() == QLatin1String("www.openstreetmap.org")
            || url.host() == QLatin1String("www.naturalearthdata.com"));
}

} // namespace

WebEngine::WebEngine() = default;
WebEngine::~WebEngine() = default;

bool WebEngine::canRun()
{
    if (qEnvironmentVariableIntValue("QTWEBENGINE_DISABLE_SANDBOX") != 0)
        return true;
    return geteuid() != 0 && canMakeUserNamespace();
}

QWebEngineProfile& WebEngine::profile()
{
    if (shared)
        return *shared;
    // A map changes little, so it needs no GPU; and a view that draws with one would make its window, which
    // is on screen by now, be created anew.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    // It would list its parameters at every start.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.webenginecontext=false"));
    gate = std::make_unique<Gate>();
    // A name gives it storage on disk: the page remembers the kind of map, and tiles are not fetched twice.
    shared = std::make_unique<QWebEngineProfile>(QStringLiteral("map"));
    shared->setUrlRequestInterceptor(gate.get());
    shared->setHttpUserAgent(QStringLiteral("ZAVIK (dash camera player)"));
    shared->setHttpCacheMaximumSize(tileCacheBytes);
    shared->setPersistentCookiesPolicy(QWebEngineProfile::NoPersistentCookies);
    // The filter rules over the page's own storage too.
    shared->cookieStore()->setCookieFilter([](const QWebEngineCookieStore::FilterRequest& request) {
        return request.origin.scheme() == QLatin1String("qrc");
    });
    QWebEngineSettings& settings = *shared->settings();
    // Tiles only; every other address is refused.
    settings.setAttribute(QWebEngineSettings::LocalContentCanAccessRemoteUrls, true);
    for (const auto attribute : {QWebEngineSettings::LocalContentCanAccessFileUrls,
             QWebEngineSettings::JavascriptCanOpenWindows, QWebEngineSettings::PluginsEnabled,
             QWebEngineSettings::PdfViewerEnabled, QWebEngineSettings::WebGLEnabled,
             QWebEngineSettings::ErrorPageEnabled, QWebEngineSettings::HyperlinkAuditingEnabled,
             QWebEngineSettings::FocusOnNavigationEnabled, QWebEngineSettings::AutoLoadIconsForPage,
             QWebEngineSettings::NavigateOnDropEnabled, QWebEngineSettings::ShowScrollBars})
        settings.setAttribute(attribute, false);
    return *shared;
}

ResourcePage::ResourcePage(QWebEngineProfile& profile, QObject& owner)
    : QWebEnginePage(&profile, &owner)
{
}

QUrl ResourcePage::address(const std::string& page)
{
    return QUrl(QStringLiteral("qrc:/map/") + QString::fromStdString(page));
}

bool ResourcePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    if (type == NavigationTypeLinkClicked && isCredit(url))
        QDesktopServices::openUrl(url);
    return isMainFrame && isResource(url);
}

} // namespace platform
