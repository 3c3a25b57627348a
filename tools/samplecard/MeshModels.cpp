#include "tools/samplecard/Mesh.h"

#include <array>

namespace samplecard {

namespace {

// A rectangle on a surface that faces along the road: x from left to right as the mesh sees it, z from low to
// high; `toRear` says which way it looks.
void addPanel(Mesh& mesh, double left, double right, double low, double high, double y, bool toRear,
    Rgb colour, bool shines = false)
{
    if (toRear)
        mesh.add({{left, y, low}, {right, y, low}, {right, y, high}, {left, y, high}}, colour, shines);
    else
        mesh.add({{right, y, low}, {left, y, low}, {left, y, high}, {right, y, high}}, colour, shines);
}

void addWheel(Mesh& mesh, double x, double y)
{
    std::vector<Vec3> rim;
    for (int i = 0; i < 10; ++i) {
        const double angle = 2 * 3.14159265 * i / 10 * (x > 0 ? 1 : -1);
        rim.push_back({x, y + 0.32 * std::cos(angle), 0.32 + 0.32 * std::sin(angle)});
    }
    mesh.add(rim, {22, 22, 24});
    addPanel(mesh, x - (x > 0 ? 0.22 : 0), x + (x > 0 ? 0 : 0.22), 0, 0.5, y - 0.3, true, {18, 18, 20});
    addPanel(mesh, x - (x > 0 ? 0.22 : 0), x + (x > 0 ? 0 : 0.22), 0, 0.5, y + 0.3, false, {18, 18, 20});
}

// The glass of the cabin: its four sides, drawn in by a little from the edges of the frustum.
void addGlass(Mesh& mesh, const Mesh::Frustum& f)
{
    constexpr Rgb glass{62, 76, 92};
    const auto at = [&](double x, double y, double k) {
        const double half = f.halfBottom + (f.halfTop - f.halfBottom) * k;
        const double rear = f.rearBottom + (f.rearTop - f.rearBottom) * k;
        const double front = f.frontBottom + (f.frontTop - f.frontBottom) * k;
        return Vec3{x * half, rear + (front - rear) * y, f.bottom + (f.top - f.bottom) * k};
    };
    constexpr double lo = 0.10, hi = 0.88, in = 0.86;
    mesh.add({at(-in, 0, lo), at(in, 0, lo), at(in, 0, hi), at(-in, 0, hi)}, glass);
    mesh.add({at(in, 1, lo), at(-in, 1, lo), at(-in, 1, hi), at(in, 1, hi)}, glass);
    for (const auto& [from, to] : {std::pair{0.10, 0.50}, std::pair{0.54, 0.90}}) {
        mesh.add({at(-1, to, lo), at(-1, from, lo), at(-1, from, hi), at(-1, to, hi)}, glass);
        mesh.add({at(1, from, lo), at(1, to, lo), at(1, to, hi), at(1, from, hi)}, glass);
    }
}

} // namespace

Mesh carMesh(Rgb colour, bool braking)
{
    Mesh mesh;
    for (const double x : {-0.84, 0.84}) {
        for (const double y : {0.85, 3.55})
            addWheel(mesh, x, y);
    }
    const Mesh::Frustum body{0.88, 0.05, 4.45, 0.24, 0.86, 0.0, 4.35, 0.66};
    const Mesh::Frustum shoulder{0.86, 0.0, 4.35, 0.66, 0.80, 0.12, 4.10, 0.98};
    const Mesh::Frustum cabin{0.80, 0.35, 3.25, 0.96, 0.60, 1.00, 2.45, 1.46};
    mesh.addFrustum(body, colour * 0.86F, colour);
    mesh.addFrustum(shoulder, colour, colour);
    addPanel(mesh, -0.86, 0.86, 0.24, 0.36, 0.03, true, {44, 44, 48});
    const Rgb tail = braking ? Rgb{255, 58, 40} : Rgb{168, 22, 22};
    for (const int side : {-1, 1}) {
        const double a = side * 0.84, b = side * 0.50;
        addPanel(mesh, std::min(a, b), std::max(a, b), 0.64, 0.84, 0.0, true, tail, true);
        addPanel(mesh, std::min(a, b), std::max(a, b), 0.58, 0.74, 4.36, false, {255, 244, 214}, true);
    }
    addPanel(mesh, -0.27, 0.27, 0.46, 0.60, -0.01, true, {226, 226, 220});
    addPanel(mesh, -0.45, 0.45, 0.40, 0.56, 4.46, false, {40, 42, 46});
    mesh.addFrustum(cabin, colour, colour);
    addGlass(mesh, cabin);
    if (braking)
        addPanel(mesh, -0.2, 0.2, 1.36, 1.41, 0.9, true, {255, 58, 40}, true);
    return mesh;
}

Mesh houseMesh(uint32_t variant)
{
    static constexpr std::array walls{
        Rgb{232, 220, 196}, Rgb{214, 196, 168}, Rgb{226, 226, 220}, Rgb{206, 172, 140}};
    static constexpr std::array roofs{
        Rgb{74, 108, 150}, Rgb{158, 84, 62}, Rgb{112, 106, 104}, Rgb{70, 116, 108}};
    const auto random = [variant](uint32_t n) { return hash01(variant, n); };
    const Rgb wall = walls[size_t(random(1) * 4)];
    const Rgb roof = roofs[size_t(random(2) * 4)];
    const double half = 3.6 + 1.6 * random(3);
    const double length = 8 + 5.0 * random(4);
    const int storeys = random(5) < 0.45F ? 2 : 1;
    const double eaves = 2.9 * storeys;
    const double ridge = eaves + 1.5 + random(6);
    Mesh mesh;
    mesh.addFrustum({half, 0, length, 0, half, 0, length, eaves}, wall, roof);
    constexpr Rgb pane{74, 88, 104};
    const auto window = [&](double across, double y, double low) {
        const double x = half + 0.02;
        mesh.add(
            {{-x, y + across, low}, {-x, y, low}, {-x, y, low + 1.2}, {-x, y + across, low + 1.2}}, pane);
        mesh.add({{x, y, low}, {x, y + across, low}, {x, y + across, low + 1.2}, {x, y, low + 1.2}}, pane);
    };
    for (int storey = 0; storey < storeys; ++storey) {
        const double low = 0.95 + 2.8 * storey;
        for (double y = 1.1; y + 1.4 < length; y += 2.6)
            window(1.3, y, low);
        addPanel(mesh, -1.9, -0.6, low, low + 1.2, -0.02, true, pane);
        addPanel(mesh, 0.7, 2.0, low, low + 1.2, -0.02, true, pane);
        addPanel(mesh, -1.6, 1.6, low, low + 1.2, length + 0.02, false, pane);
    }
    const double over = half + 0.5;
    mesh.add({{-half, 0, eaves}, {half, 0, eaves}, {0, 0, ridge}}, wall);
    mesh.add({{half, length, eaves}, {-half, length, eaves}, {0, length, ridge}}, wall);
    const double drip = eaves - 0.25;
    mesh.add(
        {{-over, length + .4, drip}, {-over, -.4, drip}, {0, -.4, ridge}, {0, length + .4, ridge}}, roof);
    mesh.add({{over, -.4, drip}, {over, length + .4, drip}, {0, length + .4, ridge}, {0, -.4, ridge}}, roof);
    return mesh;
}

} // namespace samplecard
