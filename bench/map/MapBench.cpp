// The map page in the embedded view: how soon it answers, and what a call costs on either side.

#include "platform/desktop/LinuxPlatform.h"
#include "platform/web/QtWebView.h"
#include "platform/web/WebEngine.h"
#include "telemetry/Readouts.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <unistd.h>

namespace {

QVariant evaluate(const platform::QtWebView& view, const QString& script)
{
    std::optional<QVariant> answer;
    view.ask(script, [&](const QVariant& value) { answer = value; });
    while (!answer)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return *answer;
}

} // namespace

int main(int argc, char* argv[])
{
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    QApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    platform::initialiseLayer();
    QFile calls(QStringLiteral(ZAVIK_MAP_BENCH_SCRIPT));
    if (!calls.open(QIODevice::ReadOnly))
        return 1;

    QWidget window;
    window.resize(334, 400);
    QElapsedTimer clock;
    clock.start();
    platform::QtWebView view(window, std::make_shared<platform::WebEngine>());
    view.loadResource("map2_eng.htm");
    std::printf("view made in %.3f ms\n", double(clock.nsecsElapsed()) / 1e6);
    clock.restart();
    window.show();
    const auto hasPage = [&] {
        return std::ranges::any_of(view.widget().findChildren<QWidget*>(),
            [](const QWidget* child) { return child->inherits("QWebEngineView"); });
    };
    while (!hasPage())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    std::printf("engine started %.0f ms after the window\n", double(clock.nsecsElapsed()) / 1e6);
    while (evaluate(view, QStringLiteral("typeof zavikMapState")) != QStringLiteral("function")) { }
    std::printf("page ready %.0f ms after the window\n", double(clock.nsecsElapsed()) / 1e6);

    constexpr int count = 2000;
    clock.restart();
    for (int i = 0; i < count; ++i)
        view.evaluateWebScript(setLatLagScript(126.5 + i * 1e-5, 37.5));
    const double sent = double(clock.nsecsElapsed());
    evaluate(view, QStringLiteral("0"));
    std::printf("sending a call %.1f us, until the page has it %.1f us\n", sent / 1e3 / count,
        double(clock.nsecsElapsed()) / 1e3 / count);
    const QString inside = evaluate(view, QString::fromUtf8(calls.readAll())).toString();
    std::printf("inside the page, in us: %s\n", inside.toUtf8().constData());
    return 0;
}
