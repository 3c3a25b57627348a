#include "fuzz/Require.h"
#include "telemetry/Readouts.h"

/// Any two numbers: the call's quotes stay closed, and both are places that can be.
void fuzz(std::string_view input)
{
    double place[2];
    if (input.size() < sizeof place)
        return;
    std::memcpy(place, input.data(), sizeof place);
    const std::string script = setLatLagScript(place[0], place[1]);
    double longitude = 999;
    double latitude = 999;
    int end = 0;
    require(std::sscanf(script.c_str(), "setLatLag('%lf','%lf')%n", &longitude, &latitude, &end) == 2);
    require(static_cast<size_t>(end) == script.size());
    require(script.find_first_not_of("setLag('-0123456789.,)") == script.npos);
    require(longitude >= -180 && longitude <= 180 && latitude >= -90 && latitude <= 90);
}
