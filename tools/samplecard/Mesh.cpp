#include "tools/samplecard/Mesh.h"

#include "tools/samplecard/Palette.h"

namespace samplecard {

void Mesh::add(std::vector<Vec3> corners, Rgb colour, bool shines)
{
    faces.push_back({std::move(corners), colour, shines});
}

void Mesh::addFrustum(const Frustum& f, Rgb sides, Rgb roof)
{
    const auto bottom = [&](int x, double y) { return Vec3{x * f.halfBottom, y, f.bottom}; };
    const auto top = [&](int x, double y) { return Vec3{x * f.halfTop, y, f.top}; };
    add({bottom(-1, f.rearBottom), bottom(1, f.rearBottom), top(1, f.rearTop), top(-1, f.rearTop)}, sides);
    add({bottom(1, f.frontBottom), bottom(-1, f.frontBottom), top(-1, f.frontTop), top(1, f.frontTop)},
        sides);
    add({bottom(-1, f.frontBottom), bottom(-1, f.rearBottom), top(-1, f.rearTop), top(-1, f.frontTop)},
        sides);
    add({bottom(1, f.rearBottom), bottom(1, f.frontBottom), top(1, f.frontTop), top(1, f.rearTop)}, sides);
    add({top(-1, f.rearTop), top(1, f.rearTop), top(1, f.frontTop), top(-1, f.frontTop)}, roof);
}

void drawMesh(Canvas& canvas, const View& view, const Mesh& mesh, const Stand& stand, const Air& air)
{
    const Vec3 ahead{std::sin(stand.heading), std::cos(stand.heading), 0};
    const Vec3 right{ahead.y, -ahead.x, 0};
    std::vector<Vec3> world;
    std::vector<Vec3> camera;
    std::vector<Point> outline;
    for (const Mesh::Face& face : mesh.faces) {
        world.clear();
        camera.clear();
        for (const Vec3& corner : face.corners) {
            world.push_back(stand.place + right * corner.x + ahead * corner.y + Vec3{0, 0, corner.z});
            camera.push_back(view.toCamera(world.back()));
        }
        const Vec3 normal = normalized(cross(world[1] - world[0], world[2] - world[1]));
        if (dot(normal, world[0] - view.eye) >= 0)
            continue;
        view.project(camera, outline);
        if (outline.size() < 3)
            continue;
        const Rgb lit = face.shines ? face.colour : face.colour * palette::lightOn(normal) * air.light;
        // A face is a touch lighter at its top, as things under an open sky are.
        canvas.fill(outline,
            {mix(lit * 1.06F, palette::haze, air.haze), mix(lit * 0.92F, palette::haze, air.haze), 1});
    }
}

void drawFace(Canvas& canvas, const View& view, std::span<const Vec3> corners, const Paint& paint)
{
    std::vector<Vec3> camera;
    std::vector<Point> outline;
    for (const Vec3& corner : corners)
        camera.push_back(view.toCamera(corner));
    view.project(camera, outline);
    if (outline.size() >= 3)
        canvas.fill(outline, paint);
}

} // namespace samplecard
