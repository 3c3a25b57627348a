// The telemetry of the moment that plays: proportional look-ups, no time matching.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "common/Coordinates.h"
#include "telemetry/Readouts.h"
#include "telemetry/views/GraphView.h"

namespace {

// Once a recording had a southern (western) fix, the run stays with it.
bool isSouth = false;
bool isWest = false;

QString text(const std::string& value)
{
    return QString::fromStdString(value);
}

} // namespace

void ZVKAppDelegate::evaluateMapScript(const std::string& script)
{
    if (mapWebView)
        mapWebView->evaluateWebScript(script);
}

void ZVKAppDelegate::updateGsensorUIByPlayPositon()
{
    outlets->graphView->updateTimePosition(double(player1->position()));
    const auto& samples = blackBoxData.m_GSensors;
    if (samples.empty())
        return;
    const ZVKGSensor& sample = samples[proportionalIndex(playInfo.position(), samples.size())];
    outlets->gsensorXField->setText(text(gsensorText('X', sample.x)));
    outlets->gsensorYField->setText(text(gsensorText('Y', sample.y)));
    outlets->gsensorZField->setText(text(gsensorText('Z', sample.z)));
}

void ZVKAppDelegate::updateGpsUIByPlayPosition()
{
    const auto& headers = blackBoxData.m_vGpsData;
    const auto& fixes = blackBoxData.m_NMEAs;
    if (headers.empty()) {
        // Whether a file that is still being prepared has GPS is not known yet.
        if (!waitingForPlayStart || hasTelemetry)
            evaluateMapScript("ZVKDebug('GPS Data Count=Zero')");
    } else {
        const size_t i = proportionalIndex(playInfo.position(), headers.size());
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
        outlets->longitudeField->setText(text(degreesText(longitude, 180)));
        outlets->latitudeField->setText(text(degreesText(latitude, 90)));
        outlets->speedField->setText(
            text(speedText(header.fSpeed, static_cast<uint8_t>(header.KM), m_bMileDisplay)));
    }
    if (fixes.empty())
        return;
    const ZVKGpsData fix = fixes[proportionalIndex(playInfo.position(), fixes.size())];
    outlets->hdopField->setText(text(hdopText(fix.HDOP)));
    outlets->sateliteField->setText(text(satelliteText(fix.SatelliteUsedCount)));
}
