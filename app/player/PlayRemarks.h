#pragma once

#include <QString>
#include <QStringList>

/// What there is to say about the files that were played since a folder was opened; their names.
struct PlayRemarks {
    QStringList passedOver; ///< a drive went past them, as they could not be played
    QStringList brokenOff; ///< they ended long before their length
    QString withoutReadings; ///< the file at hand, when it may hold readings that are not shown
};
