#pragma once

#include "telemetry/SentenceText.h"
#include "telemetry/ZVKGpsData.h"

#include <string_view>

/// Reads the camera's own two sentences into one record that keeps the latest value of every field.
///
///   "$GA,hhmmss,status,ddmm.mmmm,dddmm.mmmm,speed,N|S,E|W*hh"
///   "$GC,hhmmss,ddmmyy,-,-,satellites used,HDOP,speed,course*hh"
///
/// "$GA" has no date: it sets the date in `Now` to zeros, so a snapshot has a date only after "$GC".
class ZVKZAVIKNMEASentenceParser {
public:
    ZVKGpsData m_Current;

    void clear() { m_Current.clear(); }

    /// One sentence, from "$" up to, not including, its terminator. True when it was of a known kind and
    /// accepted. A sentence that is not UTF-8, has not exactly one "*", is of another kind or has too few
    /// fields is refused and leaves the record as it was. The checksum is not verified.
    bool parse(std::string_view sentence);

    /// At least 8 fields. Empty fields leave the record's values in place; status "V" (no valid fix)
    /// leaves `EW`.
    bool parseGA(SentenceFields fields);
    /// At least 9 fields. Empty fields count as 0.
    bool parseGC(SentenceFields fields);
};
