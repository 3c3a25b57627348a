#pragma once

#include "telemetry/SentenceText.h"
#include "telemetry/ZVKGpsData.h"

#include <string_view>

/// Reads the four standard NMEA 0183 GPS sentences "$GPRMC", "$GPGGA", "$GPGSV" and "$GPGSA" into one record
/// that keeps the latest value of every field.
/// The place in a "$GPGSV" series is shared by all parsers of the process and survives `clear`: only one
/// parse may run at a time in the process.
class ZVKNMEASentenceParser {
public:
    ZVKGpsData m_Current;

    void clear() { m_Current.clear(); }

    /// One sentence, from "$" up to, not including, its terminator. True when it was of a known kind and
    /// accepted. A sentence that is not UTF-8, has not exactly one "*", is of another kind or has too few
    /// fields is refused and leaves the record as it was. The checksum is not verified.
    bool parse(std::string_view sentence);

    /// At least 10 fields. Sets speed and course; date and time only from a 10-character time
    /// ("hhmmss.sss") and a 6-character date ("ddmmyy").
    bool parseGPRMC(SentenceFields fields);
    /// At least 9 fields. Empty position and HDOP fields leave the record's values in place.
    bool parseGPGGA(SentenceFields fields);
    /// At least 4 fields. One message of a numbered series; refused out of sequence, when only
    /// `SatelliteCount` has been updated. Channels that the series does not reach keep their contents.
    bool parseGPGSV(SentenceFields fields);
    /// At least 18 fields.
    bool parseGPGSA(SentenceFields fields);

private:
    void storeSatellites(SentenceFields fields);
};
