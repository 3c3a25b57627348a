#include "tools/samplecard/View.h"

namespace samplecard {

void View::project(std::span<const Vec3> camera, std::vector<Point>& outline) const
{
    outline.clear();
    for (size_t i = 0; i < camera.size(); ++i) {
        const Vec3 a = camera[i];
        const Vec3 b = camera[(i + 1) % camera.size()];
        if (a.z >= nearest)
            outline.push_back(toScreen(a));
        if ((a.z >= nearest) != (b.z >= nearest))
            outline.push_back(toScreen(a + (b - a) * ((nearest - a.z) / (b.z - a.z))));
    }
}

} // namespace samplecard
