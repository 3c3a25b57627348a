#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// The entry of a list of n entries (n at least 1) that belongs to a play position: position x n, cut to a
/// whole number; whatever lies outside the list, a negative position too, gives the last entry.
size_t proportionalIndex(double position, size_t n);

/// "X=+1.23", "X=-0.50", "X=0.00": a "+" before every value above zero.
std::string gsensorText(char axis, float value);

/// "62 Km/h" or "100 Mi/h": the record's speed by its `KM` marker ('1', '9' or any other), cut to a whole
/// number.
std::string speedText(double fSpeed, uint8_t KM, bool showMiles);

/// "setLatLag('%lf','%lf')" for the map page; decimal degrees.
std::string setLatLagScript(double longitude, double latitude);
