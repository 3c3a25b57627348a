#include "telemetry/views/ZVKMapWindowController.h"

#include "common/Log.h"
#include "platform/Texts.h"
#include "telemetry/Readouts.h"
#include "ui_ZVKMapWindowController.h"

ZVKMapWindowController::ZVKMapWindowController(platform::Platform& layer, const std::string& language)
    : desktop(layer),
      m_bKorean(language == "ko")
{
}

ZVKMapWindowController::~ZVKMapWindowController()
{
    mapWebView.reset();
}

QWidget& ZVKMapWindowController::window()
{
    if (!loaded) {
        loaded = std::make_unique<QWidget>();
        outlets = std::make_unique<Ui::ZVKMapWindowController>();
        outlets->setupUi(loaded.get());
        windowDidLoad();
    }
    return *loaded;
}

void ZVKMapWindowController::windowDidLoad()
{
    loaded->setWindowTitle(platform::localized("map.window_title"));
    const platform::Rect frame = desktop.screens.frameOf(*loaded);
    logFormat("{{%g, %g}, {%g, %g}}", frame.x, frame.y, frame.width, frame.height);
    mapWebView = desktop.makeWebView(*loaded);
    outlets->fill->addWidget(&mapWebView->widget());
    mapWebView->loadResource(m_bKorean ? "map2.htm#place" : "map2_eng.htm#place");
}

void ZVKMapWindowController::showWindow()
{
    window().setWindowState(window().windowState() & ~Qt::WindowMinimized);
    window().show();
    window().raise();
    window().activateWindow();
}

void ZVKMapWindowController::moveWindowRightBy(const platform::Rect& rect)
{
    const auto [width, height] = desktop.screens.frameOf(window()).size();
    const platform::Rect visible = screenHoldingMost(desktop.screens.all(), rect).visibleFrame;
    desktop.screens.setFrameOf(
        window(), fittedInto(visible, {rect.maxX(), rect.maxY() - height, width, height}));
}

void ZVKMapWindowController::removeMarker()
{
    window();
    mapWebView->evaluateWebScript("zavikNewRecording()");
}

void ZVKMapWindowController::updateMapLat(double lat, double lng)
{
    window();
    mapWebView->evaluateWebScript(setLatLagScript(lng, lat));
}
