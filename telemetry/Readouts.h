#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// The entry of a list of n entries (n at least 1) that belongs to a play position: position x n, cut to a
/// whole number; whatever lies outside the list, a negative position too, gives the last entry.
size_t proportionalIndex(double position, size_t n);

// A damaged record can hold any number: an impossible value gives an empty text.

/// "X=+1.23", "X=-0.50", "X=0.00": a "+" before every value above zero. "X=" beyond 200 g.
std::string gsensorText(char axis, float value);

/// "62 Km/h" or "100 Mi/h": the record's speed by its `KM` marker ('1', '9' or any other), cut to a whole
/// number. Nothing below 0 and above 1000 km/h.
std::string speedText(double fSpeed, uint8_t KM, bool showMiles);

/// Decimal degrees, "37.5125"; nothing beyond the largest that there can be (90 or 180).
std::string degreesText(double degrees, double largest);

/// "0.9"; nothing below 0 and from 1000 on.
std::string hdopText(double hdop);

/// Nothing above 99: sentences have two digits for it.
std::string satelliteText(uint32_t count);

/// "setLatLag('%lf','%lf')" for the map page; decimal degrees. An impossible place counts as no fix: 0, 0.
std::string setLatLagScript(double longitude, double latitude);
