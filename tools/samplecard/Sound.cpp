#include "tools/samplecard/Sound.h"

#include <numbers>

namespace samplecard {

namespace {

constexpr int block = 441; // samples for which the drive is asked once
constexpr float fullTurn = 2 * std::numbers::pi_v<float>;

/// A low-pass of one pole.
struct Smooth {
    float share;
    float value = 0;
    float operator()(float in) { return value += share * (in - value); }
};

// Revolutions per second in the gear that suits the speed; idling when standing.
float engineTurns(double speed)
{
    constexpr double gearTop[]{6, 11, 16, 22, 40};
    constexpr double ratio[]{6.2, 3.9, 2.75, 2.05, 1.6};
    size_t gear = 0;
    while (gear < 4 && speed > gearTop[gear])
        ++gear;
    return float(std::max(12.5, speed * ratio[gear]));
}

class Microphone {
public:
    explicit Microphone(const Drive& drive)
        : journey(drive)
    {
    }

    void record(double seconds, std::vector<int16_t>& sound)
    {
        const Motion motion = journey.motionAt(seconds);
        const auto speed = float(motion.speed);
        const bool tunnel = Road::inTunnel(motion.along);
        const float load = std::clamp(0.35F + float(motion.acceleration) * 0.25F, 0.12F, 1.0F);
        const float tyres = speed / 20 * (tunnel ? 0.17F : 0.10F);
        const float wind = speed * speed / 400 * 0.10F;
        const float target = engineTurns(motion.speed);
        const float crash = float(Drive::impactShake(seconds));
        const auto thud = float(std::min(0.05, std::abs(motion.heave)) * 14) * (crash > 0.1F ? 0 : 1);
        for (int i = 0; i < block; ++i) {
            turns += (target - turns) * 0.0004F;
            phase = std::fmod(phase + turns / soundRate, 1000.0F);
            const float angle = fullTurn * phase;
            const float engine = 0.5F * std::sin(2 * angle) + 0.3F * std::sin(4 * angle + 0.4F)
                + 0.22F * std::sin(angle * 1.5F) + 0.14F * std::sin(6 * angle);
            const float noise = hash01(sampleCount++) * 2 - 1;
            const float low = tyreNoise(noise);
            float out = engine * load * 0.10F + low * tyres * 3 + (noise - hiss(noise)) * wind * 0.10F;
            out += rumble(noise) * (thud * 6 + crash * 9) + (noise * crash * crash * 0.6F);
            if (tunnel)
                out += 0.22F * echo[sampleCount % echo.size()];
            echo[sampleCount % echo.size()] = out;
            const float limited = out / (1 + std::abs(out) * 0.4F);
            sound.push_back(int16_t(std::clamp(limited, -1.0F, 1.0F) * 32000));
        }
    }

private:
    const Drive& journey;
    float turns = 12.5F;
    float phase = 0;
    uint32_t sampleCount = 0;
    Smooth tyreNoise{0.07F};
    Smooth hiss{0.35F};
    Smooth rumble{0.02F};
    std::vector<float> echo = std::vector<float>(size_t(soundRate * 0.09));
};

} // namespace

std::vector<int16_t> soundOf(const Drive& drive, int start, int seconds)
{
    Microphone microphone(drive);
    std::vector<int16_t> sound;
    const int blocks = seconds * soundRate / block;
    for (int n = 0; n < blocks; ++n)
        microphone.record(start + double(n) * block / soundRate, sound);
    return sound;
}

} // namespace samplecard
