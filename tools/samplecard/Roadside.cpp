#include "tools/samplecard/Roadside.h"

#include "tools/samplecard/Ground.h"
#include "tools/samplecard/Palette.h"

#include <numbers>

namespace samplecard {

Roadside::Roadside(const Road& road, const Plants& plants)
    : way(road),
      vegetation(plants)
{
}

float Roadside::hazeAt(const View& view, Vec3 world) const
{
    return palette::hazeShare(std::max(0.0, view.toCamera(world).z));
}

void Roadside::drawUpright(
    Canvas& canvas, const View& view, Vec3 foot, double width, double height, Rgb colour) const
{
    const Vec3 camera = view.toCamera(foot);
    if (camera.z < View::nearest)
        return;
    const Point low = view.toScreen(camera);
    const Point high = view.toScreen({camera.x, camera.y + height, camera.z});
    const float half = float(width / 2 * view.focal / camera.z);
    const std::array outline{Point{low.x - half, low.y}, Point{low.x + half, low.y},
        Point{low.x + half, high.y}, Point{low.x - half, high.y}};
    const Rgb seen = mix(colour, palette::haze, hazeAt(view, foot));
    canvas.fill(outline, {seen * 1.1F, seen * 0.85F, 1});
}

void Roadside::drawProp(Canvas& canvas, const View& view, const Prop& prop) const
{
    switch (prop.kind) {
    case PropKind::broadleaf:
    case PropKind::pine:
    case PropKind::bush:
        drawPlant(canvas, view, prop);
        break;
    case PropKind::lampPost:
        drawLampPost(canvas, view, prop);
        break;
    case PropKind::house: {
        const Vec3 place = way.place(prop.along, prop.across, 0);
        drawMesh(canvas, view, houseMesh(prop.variant), {place, way.at(prop.along).heading},
            {{1.1F, 1.1F, 1.1F}, hazeAt(view, place)});
        break;
    }
    case PropKind::marker:
        drawMarker(canvas, view, prop);
        break;
    case PropKind::chevronSign:
        drawChevron(canvas, view, prop);
        break;
    }
}

void Roadside::drawPlant(Canvas& canvas, const View& view, const Prop& prop) const
{
    const Vec3 foot = view.toCamera(way.place(prop.along, prop.across, -0.1));
    if (foot.z < 2.2)
        return;
    const Plants::Plant plant = vegetation.plant(prop.kind, prop.variant);
    const Point low = view.toScreen(foot);
    const Point high = view.toScreen({foot.x, foot.y + prop.size, foot.z});
    const float half = (low.y - high.y) * plant.widthPerHeight / 2;
    const float bright = 0.82F + 0.18F * hash01(prop.variant, 3);
    canvas.draw(*plant.sprite, {low.x - half, high.y}, {low.x + half, low.y}, bright, palette::haze,
        palette::hazeShare(foot.z));
}

void Roadside::drawLampPost(Canvas& canvas, const View& view, const Prop& prop) const
{
    const Vec3 foot = way.place(prop.along, prop.across, 0);
    drawUpright(canvas, view, foot, 0.16, prop.size, palette::steel * 0.7F);
    const double side = prop.across > 0 ? -1 : 1;
    const auto at = [&](double out, double up) {
        return way.place(prop.along, prop.across + side * out, up);
    };
    const Rgb steel = mix(palette::steel * 0.7F, palette::haze, hazeAt(view, foot));
    const double top = prop.size;
    drawFace(canvas, view,
        std::array{at(0, top - 0.1), at(1.9, top + 0.35), at(1.9, top + 0.47), at(0, top + 0.08)}, steel);
    drawFace(canvas, view,
        std::array{at(1.7, top + 0.28), at(2.6, top + 0.34), at(2.6, top + 0.46), at(1.7, top + 0.5)},
        steel * 0.8F);
}

void Roadside::drawMarker(Canvas& canvas, const View& view, const Prop& prop) const
{
    const Vec3 foot = way.place(prop.along, prop.across, 0);
    drawUpright(canvas, view, foot, 0.13, 0.95, {238, 234, 224});
    const Vec3 band = way.place(prop.along, prop.across, 0.66);
    drawUpright(canvas, view, band, 0.13, 0.16, {230, 120, 40});
}

void Roadside::drawChevron(Canvas& canvas, const View& view, const Prop& prop) const
{
    const Vec3 foot = way.place(prop.along, prop.across, 0);
    const Vec3 camera = view.toCamera(foot);
    const double towards = std::cos(way.at(prop.along).heading - view.heading);
    if (camera.z < View::nearest)
        return;
    drawUpright(canvas, view, foot, 0.08, 1.3, palette::steel * 0.6F);
    const float haze = palette::hazeShare(camera.z);
    const auto board = [&](double x, double up) {
        return view.toScreen({camera.x + x, camera.y + 1.1 + up, camera.z});
    };
    // Seen from behind a sign is bare metal.
    const Rgb face = towards > 0 ? Rgb{246, 206, 48} : palette::steel * 0.7F;
    canvas.fill(std::array{board(-0.35, 0), board(0.35, 0), board(0.35, 0.9), board(-0.35, 0.9)},
        mix(face, palette::haze, haze));
    if (towards <= 0)
        return;
    const double tip = prop.variant ? 0.2 : -0.2;
    canvas.fill(std::array{board(-tip, 0.1), board(tip * 0.2, 0.1), board(tip * 1.3, 0.45),
                    board(tip * 0.2, 0.8), board(-tip, 0.8), board(tip * 0.2, 0.45)},
        mix({28, 26, 24}, palette::haze, haze));
}

void Roadside::drawVehicle(Canvas& canvas, const View& view, const Vehicle& vehicle) const
{
    const double heading = way.at(vehicle.along).heading;
    const Vec3 place = way.place(vehicle.along, vehicle.across, 0.02);
    const double turn = vehicle.oncoming ? std::numbers::pi : 0;
    const Rgb light = roadLight(vehicle.along);
    const int ahead = vehicle.oncoming ? -1 : 1;
    const auto shadow = [&](double rear, double front, double half) {
        return std::array{way.place(vehicle.along + ahead * rear, vehicle.across - half, 0.01),
            way.place(vehicle.along + ahead * rear, vehicle.across + half, 0.01),
            way.place(vehicle.along + ahead * front, vehicle.across + half, 0.01),
            way.place(vehicle.along + ahead * front, vehicle.across - half, 0.01)};
    };
    drawFace(canvas, view, shadow(-0.3, 4.7, 1.05), {palette::shadow, 0.35F});
    drawFace(canvas, view, shadow(-0.1, 4.5, 0.85), {palette::shadow, 0.55F});
    const float haze = hazeAt(view, place);
    drawMesh(canvas, view, carMesh(vehicle.colour, vehicle.braking), {place, heading + turn}, {light, haze});
    const bool showsLamps = vehicle.oncoming == (std::cos(heading - view.heading) > 0);
    const Vec3 nose = view.toCamera(way.place(vehicle.along + ahead * 4.4, vehicle.across, 0.65));
    if (!showsLamps || nose.z < 4)
        return;
    const auto radius = std::min(60.0F, 1.5F + float(view.focal * 0.5 / nose.z));
    for (const double side : {-0.66, 0.66})
        canvas.glow(
            view.toScreen({nose.x + side, nose.y, nose.z}), radius, {255, 236, 190}, 0.7F * (1 - haze));
}

void Roadside::drawRail(Canvas& canvas, const View& view, double from, double to, int side) const
{
    const double across = side * Road::rail;
    const Vec3 start = way.place(from, across, 0);
    const float haze = hazeAt(view, start);
    const auto strip = [&](double low, double high, Rgb colour) {
        drawFace(canvas, view,
            std::array{way.place(from, across, low), way.place(to, across, low), way.place(to, across, high),
                way.place(from, across, high)},
            mix(colour, palette::haze, haze));
    };
    // Posts stand every four metres of road.
    for (double post = std::ceil(std::min(from, to) / 4) * 4; post < std::max(from, to); post += 4)
        drawUpright(
            canvas, view, way.place(post, across + side * 0.08, 0), 0.12, 0.72, palette::steel * 0.55F);
    strip(0.44, 0.56, {142, 142, 146});
    strip(0.56, 0.64, {104, 104, 110});
    strip(0.64, 0.78, {206, 200, 192});
}

void Roadside::drawShadow(Canvas& canvas, const View& view, const Prop& prop) const
{
    const bool tree = prop.kind == PropKind::broadleaf || prop.kind == PropKind::pine;
    if (!tree)
        return;
    const double heading = way.at(prop.along).heading;
    const Vec3 away = palette::toSun * (-1.0 / palette::toSun.z);
    // Along and across the road, per metre of the tree's height.
    const double ahead = away.x * std::sin(heading) + away.y * std::cos(heading);
    const double right = away.x * std::cos(heading) - away.y * std::sin(heading);
    const double half = prop.size * (prop.kind == PropKind::pine ? 0.16 : 0.30);
    std::array<Vec3, 10> outline;
    for (size_t i = 0; i < outline.size(); ++i) {
        const double angle = 2 * std::numbers::pi * double(i) / double(outline.size());
        const double reach = prop.size * (0.58 + 0.42 * std::cos(angle));
        const double wide = half * std::sin(angle) * (0.8 + 0.4 * hash01(prop.variant, uint32_t(i)));
        outline[i] = way.place(
            prop.along + ahead * reach + wide, std::clamp(prop.across + right * reach, -40.0, 40.0), 0);
    }
    const Vec3 foot = way.place(prop.along, prop.across, 0);
    drawFace(canvas, view, outline, {palette::shadow, 0.34F * (1 - hazeAt(view, foot))});
}

} // namespace samplecard
