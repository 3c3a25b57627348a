#pragma once

#include "platform/MediaPlayer.h"
#include "platform/WebView.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <QString>

#include <functional>
#include <memory>
#include <string>

class MainWindowLayout;

namespace Ui {
class GraphPanel;
class MapPanel;
} // namespace Ui

/// The telemetry of the moment that plays: readouts, the graph with its bar, the map with its marker. A place
/// in the file's length is looked up in proportion; no times are matched. Main thread only.
class TelemetryPanel {
public:
    using MakeMap = std::function<std::unique_ptr<platform::WebView>(QWidget& parent)>;

    /// Without `makeMap` there is no map.
    TelemetryPanel(
        Ui::GraphPanel& graph, Ui::MapPanel& map, MainWindowLayout& layout, const MakeMap& makeMap);

    /// What the pointer tells at a fraction of the file that long: its time and the values there.
    QString textAt(double position, platform::MediaTime length) const;
    void loadMapPage(bool isKorean);
    /// The web engine goes before the program ends.
    void closeMap() { mapWebView.reset(); }

    /// A recording's telemetry from now on; the readouts follow with the next moment.
    void show(ZVKBlackBoxData read);
    const ZVKBlackBoxData& telemetry() const { return blackBoxData; }
    /// Nothing of any recording.
    void clear();
    /// No moment is played.
    void resetReadouts();

    /// The moment at a fraction of the file; `playerPosition` is the player's own, where the graph's bar
    /// stands. `isKnown`: it is known whether the file has GPS.
    void showMoment(double position, double playerPosition, bool isKnown);
    void updateGsensorUIByPlayPositon(double position, double playerPosition);
    void updateGpsUIByPlayPosition(double position, bool isKnown);

    /// Shows speeds in miles per hour, also the one that is on screen while nothing moves.
    void setDisplayMile(bool isMile, double position);
    bool showsMiles() const { return m_bMileDisplay; }

private:
    void evaluateMapScript(const std::string& script);

    Ui::GraphPanel& graph;
    Ui::MapPanel& map;
    std::unique_ptr<platform::WebView> mapWebView;
    ZVKBlackBoxData blackBoxData;
    bool m_bMileDisplay = false;
    // Once a recording had a southern (western) fix, the run stays with it.
    bool isSouth = false;
    bool isWest = false;
};
