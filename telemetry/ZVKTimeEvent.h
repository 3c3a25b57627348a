#pragma once

#include "telemetry/SystemTime.h"

#include <cstdint>

/// A change of the event type found in a time record.
struct ZVKTimeEvent {
    uint32_t e = 0; ///< 0 for event type 1, 1 for any other non-zero type
    _SYSTEMTIME t; ///< when the change happened, UTC
    uint32_t f = 0; ///< index in `m_Times` of the time record that carried the change

    bool operator==(const ZVKTimeEvent&) const = default;
};
