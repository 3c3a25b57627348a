#include "app/player/TelemetryPanel.h"

#include "app/window/MainWindowLayout.h"
#include "common/Coordinates.h"
#include "platform/Texts.h"
#include "settings/window/CardSettings.h"
#include "telemetry/Readouts.h"
#include "ui_GraphPanel.h"
#include "ui_MapPanel.h"

#include <utility>

namespace {

QString text(const std::string& value)
{
    return QString::fromStdString(value);
}

} // namespace

TelemetryPanel::TelemetryPanel(
    Ui::GraphPanel& chart, Ui::MapPanel& place, MainWindowLayout& layout, const MakeMap& makeMap)
    : graph(chart),
      map(place)
{
    for (const auto& [caption, key] :
        {std::pair(map.latitudeLabel, "label.latitude"), std::pair(map.longitudeLabel, "label.longitude"),
            std::pair(map.hdopLabel, "label.hdop"), std::pair(map.sateliteLabel, "label.satellites")})
        caption->setText(platform::localized(key));
    graph.graphView->setAccessibleName(platform::localized("tip.graph"));
    resetReadouts();
    if (!makeMap)
        return;
    mapWebView = makeMap(*map.mapContainerTopView);
    mapWebView->widget().setObjectName(QStringLiteral("mapWebView"));
    layout.fill(*map.mapContainerTopView, mapWebView->widget());
    mapWebView->said = [this](const std::string& word) { mapSaid(word); };
}

QString TelemetryPanel::textAt(double position, platform::MediaTime length) const
{
    const auto& samples = blackBoxData.m_GSensors;
    if (samples.empty())
        return {};
    QStringList parts;
    if (!length.isNull())
        parts += text(
            platform::MediaTime::timeWithInt(int64_t(position * double(length.intValue()))).stringValue());
    const ZVKGSensor& sample = samples[proportionalIndex(position, samples.size())];
    parts += text(
        gsensorText('X', sample.x) + "  " + gsensorText('Y', sample.y) + "  " + gsensorText('Z', sample.z));
    if (const auto& headers = blackBoxData.m_vGpsData(); !headers.empty()) {
        const _AVI_GPS_DATA_T header = headers[proportionalIndex(position, headers.size())].data;
        parts += text(speedText(header.fSpeed, static_cast<uint8_t>(header.KM), m_bMileDisplay));
    }
    return parts.join(QStringLiteral("   "));
}

void TelemetryPanel::loadMapPage(bool isKorean)
{
    if (mapWebView)
        mapWebView->loadResource(isKorean ? "map2.htm" : "map2_eng.htm");
}

void TelemetryPanel::evaluateMapScript(const std::string& script)
{
    if (mapWebView)
        mapWebView->evaluateWebScript(script);
}

void TelemetryPanel::showDriveRoute(const std::string& script)
{
    if (mapWebView)
        mapWebView->setStandingScript(script);
}

void TelemetryPanel::show(ZVKBlackBoxData read)
{
    blackBoxData = std::move(read);
    graph.graphView->setGraphData(blackBoxData.m_GSensors);
}

void TelemetryPanel::clear()
{
    blackBoxData.clear();
    graph.graphView->setGraphData({});
    graph.graphView->updateTimePosition(0);
    resetReadouts();
    evaluateMapScript("zavikNewRecording()");
}

void TelemetryPanel::resetReadouts()
{
    graph.gsensorXField->setText(QStringLiteral("X=+0.00"));
    graph.gsensorYField->setText(QStringLiteral("Y=+0.00"));
    graph.gsensorZField->setText(QStringLiteral("Z=+0.00"));
    for (QLabel* field :
        {graph.speedField, map.longitudeField, map.latitudeField, map.hdopField, map.sateliteField})
        field->clear();
}

void TelemetryPanel::showMoment(double position, double playerPosition, bool isKnown)
{
    moment = position;
    updateGsensorUIByPlayPositon(position, playerPosition);
    updateGpsUIByPlayPosition(position, isKnown);
}

void TelemetryPanel::updateGsensorUIByPlayPositon(double position, double playerPosition)
{
    graph.graphView->updateTimePosition(playerPosition);
    const auto& samples = blackBoxData.m_GSensors;
    if (samples.empty())
        return;
    const ZVKGSensor& sample = samples[proportionalIndex(position, samples.size())];
    graph.gsensorXField->setText(text(gsensorText('X', sample.x)));
    graph.gsensorYField->setText(text(gsensorText('Y', sample.y)));
    graph.gsensorZField->setText(text(gsensorText('Z', sample.z)));
}

void TelemetryPanel::updateGpsUIByPlayPosition(double position, bool isKnown)
{
    const auto& headers = blackBoxData.m_vGpsData();
    const auto& fixes = blackBoxData.m_NMEAs;
    if (headers.empty()) {
        if (isKnown)
            evaluateMapScript("ZVKDebug('GPS Data Count=Zero')");
    } else {
        const size_t i = proportionalIndex(position, headers.size());
        const _AVI_GPS_DATA_T header = headers[i].data;
        if (i < fixes.size()) {
            isSouth = isSouth || fixes[i].NS != 'N';
            isWest = isWest || fixes[i].EW != 'E';
        }
        double latitude = 0;
        double longitude = 0;
        nmeaCoordinateToDegrees(&latitude, &longitude, isSouth ? -header.fLatitude : header.fLatitude,
            isWest ? -header.fLongitude : header.fLongitude);
        evaluateMapScript(setLatLagScript(longitude, latitude));
        map.longitudeField->setText(text(degreesText(longitude, 180)));
        map.latitudeField->setText(text(degreesText(latitude, 90)));
        graph.speedField->setText(
            text(speedText(header.fSpeed, static_cast<uint8_t>(header.KM), m_bMileDisplay)));
    }
    if (fixes.empty())
        return;
    const ZVKGpsData fix = fixes[proportionalIndex(position, fixes.size())];
    map.hdopField->setText(text(hdopText(fix.HDOP)));
    map.sateliteField->setText(text(satelliteText(fix.SatelliteUsedCount)));
}

void TelemetryPanel::setDisplayMile(uint32_t value)
{
    unitReading.renew();
    if (value > 1)
        return;
    const bool isMile = value == 1;
    unitChanged(isMile);
    if (std::exchange(m_bMileDisplay, isMile) != isMile && !blackBoxData.m_vGpsData().empty())
        updateGpsUIByPlayPosition(moment, true);
}

void TelemetryPanel::readDisplayMile(
    platform::Dispatcher& dispatcher, platform::DiskArbitration& disks, bool isKorean)
{
    dispatcher.inBackgroundThen([&disks, isKorean] { return readsMiles(disks, isKorean); },
        unitReading.guarded([this](bool isMile) { setDisplayMile(isMile ? 1 : 0); }));
}
