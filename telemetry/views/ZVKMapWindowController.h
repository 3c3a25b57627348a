#pragma once

#include "platform/Platform.h"
#include "platform/WebView.h"

#include <memory>
#include <string>

class QWidget;

namespace Ui {
class ZVKMapWindowController;
}

/// A small window with the map page, which shows one place. It is created on first use and lives as long as
/// its controller; closing it hides it. Main thread only.
class ZVKMapWindowController {
public:
    /// `language` is the interface language; "ko" chooses the Korean page, anything else the English one.
    ZVKMapWindowController(platform::Platform& desktop, const std::string& language);
    ~ZVKMapWindowController();

    /// Brings the window forward.
    void showWindow();
    /// Puts the window's upper left corner on the upper right corner of the rectangle (screen coordinates, y
    /// up), then moves it until it is wholly on the screen that holds most of the rectangle.
    void moveWindowRightBy(const platform::Rect& rect);
    /// Moves the page's marker; decimal degrees, negative for south and west.
    void updateMapLat(double lat, double lng);

    /// Takes the page's marker away.
    void removeMarker();

    /// The window, loaded on first use.
    QWidget& window();

private:
    void windowDidLoad();

    platform::Platform& desktop;
    bool m_bKorean = false;
    std::unique_ptr<QWidget> loaded;
    std::unique_ptr<Ui::ZVKMapWindowController> outlets;
    std::unique_ptr<platform::WebView> mapWebView;
};
