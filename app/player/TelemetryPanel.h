#pragma once

#include "common/Life.h"
#include "platform/DiskArbitration.h"
#include "platform/Dispatcher.h"
#include "platform/MediaPlayer.h"
#include "platform/WebView.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class MainWindowLayout;

namespace Ui {
class GraphPanel;
class MapPanel;
} // namespace Ui

/// The telemetry of the current moment: readouts, the graph with its bar, the map with its marker. Entries
/// are found in proportion to the position in the file; no times are matched. Main thread only.
class TelemetryPanel {
public:
    using MakeMap = std::function<std::unique_ptr<platform::WebView>(QWidget& parent)>;

    /// Without `makeMap` there is no map.
    TelemetryPanel(
        Ui::GraphPanel& graph, Ui::MapPanel& map, MainWindowLayout& layout, const MakeMap& makeMap);

    /// What the pointer tells at a fraction of the file that long: its time and the values there.
    QString textAt(double position, platform::MediaTime length) const;
    void loadMapPage(bool isKorean);
    /// Destroys the map; the web engine must end before the program does.
    void closeMap() { mapWebView.reset(); }

    /// The way of a drive, as a script for the map's page; it stays over its recordings.
    void showDriveRoute(const std::string& script);
    void showDriveTake(const std::string& script) { evaluateMapScript(script); }
    /// Called with what the map's page says.
    std::function<void(const std::string& word)> mapSaid = [](const std::string&) {};

    /// A recording's telemetry from now on; the readouts follow with the next moment.
    void show(ZVKBlackBoxData read);
    const ZVKBlackBoxData& telemetry() const { return blackBoxData; }
    /// Shows no recording.
    void clear();
    /// No moment is played.
    void resetReadouts();

    /// The moment at a fraction of the file; `playerPosition` is the player's own, where the graph's bar
    /// stands. `isKnown`: it is known whether the file has GPS.
    void showMoment(double position, double playerPosition, bool isKnown);
    void updateGsensorUIByPlayPositon(double position, double playerPosition);
    void updateGpsUIByPlayPosition(double position, bool isKnown);

    /// Shows speeds in miles per hour (1) or kilometres per hour (0), also the one that is on screen now; any
    /// other value changes nothing.
    void setDisplayMile(uint32_t value);
    /// Called after every change of the unit.
    std::function<void(bool isMile)> unitChanged = [](bool) {};
    /// The same with the unit of the card's settings, read in the background; dropped when a newer unit was
    /// set meanwhile.
    void readDisplayMile(platform::Dispatcher& dispatcher, platform::DiskArbitration& disks, bool isKorean);
    bool showsMiles() const { return m_bMileDisplay; }

private:
    void evaluateMapScript(const std::string& script);

    Ui::GraphPanel& graph;
    Ui::MapPanel& map;
    std::unique_ptr<platform::WebView> mapWebView;
    ZVKBlackBoxData blackBoxData;
    bool m_bMileDisplay = false;
    double moment = 0; // that is shown, as a fraction of the file
    // Stays set for the rest of the run once a recording had a southern (western) fix.
    bool isSouth = false;
    bool isWest = false;
    Life unitReading;
};
