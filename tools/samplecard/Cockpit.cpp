#include "tools/samplecard/Cockpit.h"

#include "common/Log.h"
#include "tools/samplecard/Font.h"

#include <ctime>
#include <numbers>

namespace samplecard {

namespace {

// A curve across the picture, closed along its lower edge. Shares of the picture's width and height.
template <typename Height>
std::vector<Point> lowerEdge(const Canvas& frame, double from, double to, Height height)
{
    constexpr int steps = 48;
    std::vector<Point> outline;
    for (int i = 0; i <= steps; ++i) {
        const double x = from + (to - from) * i / steps;
        outline.push_back({float(x * frame.width()), float(height(x) * frame.height())});
    }
    outline.push_back({float(to * frame.width()), float(frame.height() + 2)});
    outline.push_back({float(from * frame.width()), float(frame.height() + 2)});
    return outline;
}

} // namespace

void drawBonnet(Canvas& frame, float brightness)
{
    const auto crest = [](double x) {
        const double side = (x - 0.5) / 0.5;
        return 0.868 + 0.030 * side * side + 0.075 * std::pow(std::abs(side), 6);
    };
    frame.fill(lowerEdge(frame, -0.02, 1.02, crest),
        {Rgb{96, 104, 118} * brightness, Rgb{26, 30, 38} * brightness, 1});
    // The sky's reflection, and the two creases of the bonnet.
    frame.fill(lowerEdge(frame, -0.02, 1.02, [&](double x) { return crest(x) + 0.012; }),
        {Rgb{70, 80, 98} * brightness, Rgb{20, 24, 32} * brightness, 0.85F});
    for (const double side : {-1.0, 1.0}) {
        const auto at = [&](double k, double wide) {
            const double x = 0.5 + side * (0.155 + 0.10 * k + wide);
            return Point{
                float(x * frame.width()), float((crest(x) + 0.005 + (1.0 - crest(x)) * k) * frame.height())};
        };
        frame.fill(std::array{at(0, 0), at(0, 0.004), at(1, 0.018), at(1, 0)},
            {Rgb{130, 140, 156} * brightness, Rgb{60, 66, 78} * brightness, 0.55F});
    }
    // The dark upper side of the dashboard.
    frame.fill(lowerEdge(frame, -0.02, 1.02,
                   [](double x) { return 0.972 - 0.012 * std::cos((x - 0.5) * 2.4) + 0.01; }),
        {Rgb{20, 21, 24} * brightness, Rgb{10, 10, 12} * brightness, 1});
}

void drawRearWindow(Canvas& frame, float brightness)
{
    const auto width = float(frame.width());
    const auto height = float(frame.height());
    // A rounded opening in a dark frame.
    std::vector<Point> opening;
    constexpr int steps = 64;
    for (int i = 0; i < steps; ++i) {
        const double angle = 2 * std::numbers::pi * i / steps;
        const auto round = [](double v) { return std::copysign(std::pow(std::abs(v), 0.30), v); };
        opening.push_back({float(width * (0.5 + 0.530 * round(std::cos(angle)))),
            float(height * (0.440 + 0.475 * round(std::sin(angle))))});
    }
    const std::array border{
        Point{-2, -2}, Point{width + 2, -2}, Point{width + 2, height + 2}, Point{-2, height + 2}};
    for (int wire = 0; wire < 7; ++wire) {
        const int y = int(height * (0.17F + 0.105F * float(wire)));
        frame.blendSpan(y, 0, width, Rgb{60, 48, 40} * brightness, 0.16F);
        frame.blendSpan(y + 1, 0, width, Rgb{60, 48, 40} * brightness, 0.08F);
    }
    frame.fill(border, {Rgb{30, 31, 35} * brightness, Rgb{16, 16, 19} * brightness, 1}, opening);
    frame.fill(lowerEdge(frame, 0.40, 0.60, [](double x) { return 0.905 + 1.8 * (x - 0.5) * (x - 0.5); }),
        {Rgb{44, 44, 48} * brightness, Rgb{20, 20, 22} * brightness, 1});
}

void drawCaption(Canvas& frame, const Fix& fix, bool rear)
{
    const int scale = std::max(1, int(std::lround(frame.width() / 430.0)));
    const auto local = std::time_t(fix.utcMilliseconds / 1000 + Drive::localHoursAhead * 3600);
    std::tm when{};
    gmtime_r(&local, &when);
    const std::string clock = formatted("%04d-%02d-%02d %02d:%02d:%02d", when.tm_year + 1900, when.tm_mon + 1,
        when.tm_mday, when.tm_hour, when.tm_min, when.tm_sec);
    const std::string speed =
        fix.valid ? formatted("%3d km/h", int(fix.kilometresPerHour)) : std::string("NO GPS");
    const std::string side = rear ? "REAR" : "FRONT";
    const int y = frame.height() - 11 * scale;
    const int inset = 8 * scale;
    constexpr Rgb ink{255, 250, 236};
    drawText(frame, clock, inset, y, scale, ink);
    drawText(frame, speed, (frame.width() - textWidth(speed, scale)) / 2 + 20 * scale, y, scale, ink);
    drawText(frame, side, frame.width() - inset - textWidth(side, scale), y, scale, {255, 206, 96});
}

} // namespace samplecard
