#pragma once

#include <QString>
#include <QStringList>

/// Names of files that could not be played well since the folder was opened.
struct PlayRemarks {
    QStringList passedOver; ///< skipped, as they could not be played
    QStringList brokenOff; ///< they ended long before their length
    QString withoutReadings; ///< the current file, when its telemetry could not be read whole
};
