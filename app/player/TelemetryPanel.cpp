#include "app/player/TelemetryPanel.h"

#include "app/window/MainWindowLayout.h"
#include "app/window/MainWindowOutlets.h"
#include "common/Coordinates.h"
#include "platform/Texts.h"
#include "telemetry/Readouts.h"

#include <utility>

namespace {

QString text(const std::string& value)
{
    return QString::fromStdString(value);
}

} // namespace

TelemetryPanel::TelemetryPanel(MainWindowOutlets& widgets, MainWindowLayout& layout, const MakeMap& makeMap)
    : outlets(widgets)
{
    for (const auto& [caption, key] : {std::pair(outlets.latitudeLabel, "label.latitude"),
             std::pair(outlets.longitudeLabel, "label.longitude"), std::pair(outlets.hdopLabel, "label.hdop"),
             std::pair(outlets.sateliteLabel, "label.satellites")})
        caption->setText(platform::localized(key));
    outlets.graphView->setAccessibleName(platform::localized("tip.graph"));
    resetReadouts();
    if (!makeMap)
        return;
    mapWebView = makeMap(*outlets.mapContainerTopView);
    mapWebView->widget().setObjectName(QStringLiteral("mapWebView"));
    layout.fill(*outlets.mapContainerTopView, mapWebView->widget());
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

void TelemetryPanel::show(ZVKBlackBoxData read)
{
    blackBoxData = std::move(read);
    outlets.graphView->setGraphData(blackBoxData.m_GSensors);
}

void TelemetryPanel::clear()
{
    blackBoxData.clear();
    outlets.graphView->setGraphData({});
    outlets.graphView->updateTimePosition(0);
    resetReadouts();
    evaluateMapScript("zavikNewRecording()");
}

void TelemetryPanel::resetReadouts()
{
    outlets.gsensorXField->setText(QStringLiteral("X=+0.00"));
    outlets.gsensorYField->setText(QStringLiteral("Y=+0.00"));
    outlets.gsensorZField->setText(QStringLiteral("Z=+0.00"));
    for (QLabel* field : {outlets.speedField, outlets.longitudeField, outlets.latitudeField,
             outlets.hdopField, outlets.sateliteField})
        field->clear();
}

void TelemetryPanel::showMoment(double position, double playerPosition, bool isKnown)
{
    updateGsensorUIByPlayPositon(position, playerPosition);
    updateGpsUIByPlayPosition(position, isKnown);
}

void TelemetryPanel::updateGsensorUIByPlayPositon(double position, double playerPosition)
{
    outlets.graphView->updateTimePosition(playerPosition);
    const auto& samples = blackBoxData.m_GSensors;
    if (samples.empty())
        return;
    const ZVKGSensor& sample = samples[proportionalIndex(position, samples.size())];
    outlets.gsensorXField->setText(text(gsensorText('X', sample.x)));
    outlets.gsensorYField->setText(text(gsensorText('Y', sample.y)));
    outlets.gsensorZField->setText(text(gsensorText('Z', sample.z)));
}

void TelemetryPanel::updateGpsUIByPlayPosition(double position, bool isKnown)
{
    const auto& headers = blackBoxData.m_vGpsData;
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
        outlets.longitudeField->setText(text(degreesText(longitude, 180)));
        outlets.latitudeField->setText(text(degreesText(latitude, 90)));
        outlets.speedField->setText(
            text(speedText(header.fSpeed, static_cast<uint8_t>(header.KM), m_bMileDisplay)));
    }
    if (fixes.empty())
        return;
    const ZVKGpsData fix = fixes[proportionalIndex(position, fixes.size())];
    outlets.hdopField->setText(text(hdopText(fix.HDOP)));
    outlets.sateliteField->setText(text(satelliteText(fix.SatelliteUsedCount)));
}

void TelemetryPanel::setDisplayMile(bool isMile, double position)
{
    if (std::exchange(m_bMileDisplay, isMile) != isMile && !blackBoxData.m_vGpsData.empty())
        updateGpsUIByPlayPosition(position, true);
}
