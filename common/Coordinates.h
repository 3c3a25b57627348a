#pragma once

/// Converts NMEA ddmm.mmmm values (degrees and minutes in one number) to decimal degrees: the first value
/// into the first slot, the second into the second. A null slot is left out. Any finite value is
/// converted, sensible or not; the sign is kept.
void nmeaCoordinateToDegrees(double* first, double* second, double firstValue, double secondValue);
