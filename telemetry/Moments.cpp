#include "telemetry/Moments.h"

#include "telemetry/GpsTrack.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

namespace {

using Direction = Moment::Direction;

constexpr int64_t clusterGap = 2000; // milliseconds
constexpr float strongestReading = 200; // g

bool isReading(const ZVKGSensor& sample)
{
    return std::abs(sample.x) <= strongestReading && std::abs(sample.y) <= strongestReading
        && std::abs(sample.z) <= strongestReading;
}

/// Of what sensors can tell; zeros without any.
ZVKGSensor restOf(const GSensorList& samples)
{
    std::array<std::vector<float>, 3> axes;
    for (std::vector<float>& axis : axes)
        axis.reserve(samples.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        const ZVKGSensor sample = samples[i];
        if (!isReading(sample))
            continue;
        axes[0].push_back(sample.x);
        axes[1].push_back(sample.y);
        axes[2].push_back(sample.z);
    }
    if (axes[0].empty())
        return {};
    for (std::vector<float>& axis : axes)
        std::ranges::nth_element(axis, axis.begin() + static_cast<std::ptrdiff_t>(axis.size() / 2));
    const size_t middle = axes[0].size() / 2;
    return {axes[0][middle], axes[1][middle], axes[2][middle]};
}

ZVKGSensor operator-(const ZVKGSensor& one, const ZVKGSensor& other)
{
    return {one.x - other.x, one.y - other.y, one.z - other.z};
}

double strengthOf(const ZVKGSensor& deviation)
{
    return double(std::hypot(deviation.x, deviation.y, deviation.z));
}

Direction directionOf(const ZVKGSensor& deviation)
{
    const float x = std::abs(deviation.x);
    const float y = std::abs(deviation.y);
    const float z = std::abs(deviation.z);
    if (y >= x && y >= z)
        return deviation.y < 0 ? Direction::front : Direction::rear;
    if (x >= z)
        return deviation.x < 0 ? Direction::right : Direction::left;
    return deviation.z < 0 ? Direction::above : Direction::below;
}

bool follows(int64_t before, int64_t after)
{
    return after >= before && static_cast<uint64_t>(after) - static_cast<uint64_t>(before) <= clusterGap;
}

/// Moments of one kind: what is close to the one before becomes one with it.
class Clusters {
public:
    void add(const Moment& moment)
    {
        if (found.empty() || !follows(latest, moment.stamp))
            found.push_back(moment);
        else if (moment.g > found.back().g)
            found.back() = moment;
        latest = moment.stamp;
    }

    std::vector<Moment> take() { return std::move(found); }

private:
    std::vector<Moment> found;
    int64_t latest = 0;
};

std::vector<Moment> impactsOf(const ZVKBlackBoxData& data)
{
    const GSensorList& samples = data.m_GSensors;
    const ZVKGSensor rest = restOf(samples);
    Clusters impacts;
    for (size_t i = 0; i < samples.size(); ++i) {
        const ZVKGSensor sample = samples[i];
        const ZVKGSensor deviation = sample - rest;
        const double strength = strengthOf(deviation);
        if (isReading(sample) && strength > impactBound)
            impacts.add({Moment::Kind::impact, directionOf(deviation), strength, i,
                samples.records()[i].data.nTimestamp});
    }
    return impacts.take();
}

/// How hard the car braked between two places, in g; nothing when they are no neighbours in time.
std::optional<double> brakingBetween(const TrackPoint& before, const TrackPoint& after)
{
    constexpr int64_t shortest = 200; // below, the rounding of speeds counts more than they do
    constexpr double kmhPerSecondInG = 1 / 3.6 / 9.80665;
    if (!follows(before.nTimestamp, after.nTimestamp) || after.nTimestamp - before.nTimestamp < shortest)
        return {};
    const double seconds = static_cast<double>(after.nTimestamp - before.nTimestamp) / 1000;
    const double braking = (before.speed - after.speed) / seconds * kmhPerSecondInG;
    return braking > brakingBound && braking <= impossibleBraking ? std::optional(braking) : std::nullopt;
}

std::vector<Moment> brakingsOf(const ZVKBlackBoxData& data)
{
    Clusters brakings;
    std::optional<TrackPoint> before;
    for (const ZVKGpsRecord& record : data.gpsRecords) {
        const std::optional<TrackPoint> here = trackPoint(record);
        const auto braking = before && here ? brakingBetween(*before, *here) : std::nullopt;
        if (braking) {
            const size_t last = std::max<size_t>(data.m_GSensors.size(), 1) - 1;
            brakings.add({Moment::Kind::braking, Direction::front, *braking,
                std::min(record.samplesBefore, last), here->nTimestamp});
        }
        before = here;
    }
    return brakings.take();
}

} // namespace

double Moment::seconds(double recordingLength, size_t sampleCount) const
{
    return sampleCount == 0
        ? 0
        : recordingLength * static_cast<double>(sample) / static_cast<double>(sampleCount);
}

std::string_view momentKindText(Moment::Kind kind)
{
    return kind == Moment::Kind::impact ? "impact" : "braking";
}

std::string_view momentDirectionText(Moment::Direction direction)
{
    constexpr std::array<std::string_view, 6> texts = {"front", "rear", "left", "right", "above", "below"};
    return texts[static_cast<size_t>(direction)];
}

std::vector<Moment> momentsOf(const ZVKBlackBoxData& data)
{
    std::vector<Moment> moments = impactsOf(data);
    const std::vector<Moment> brakings = brakingsOf(data);
    moments.insert(moments.end(), brakings.begin(), brakings.end());
    std::ranges::stable_sort(moments, {}, &Moment::sample);
    return moments;
}

double strongestDeviation(const ZVKBlackBoxData& data)
{
    const GSensorList& samples = data.m_GSensors;
    const ZVKGSensor rest = restOf(samples);
    double strongest = 0;
    for (size_t i = 0; i < samples.size(); ++i) {
        if (const ZVKGSensor sample = samples[i]; isReading(sample))
            strongest = std::max(strongest, strengthOf(sample - rest));
    }
    return strongest;
}
