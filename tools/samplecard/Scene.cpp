#include "tools/samplecard/Scene.h"

#include "tools/samplecard/Cockpit.h"
#include "tools/samplecard/Lens.h"
#include "tools/samplecard/Palette.h"

#include <numbers>

namespace samplecard {

namespace {

constexpr double kEyeHeight = 1.32;
constexpr float kFocalPerWidth = 0.74F;
constexpr float kHorizonShare = 0.47F;
constexpr double kFarthestProp = 340;
constexpr double kSunnyShadows = 130;

} // namespace

Scenery::Scenery(int pictureWidth, int pictureHeight)
    : width(pictureWidth),
      height(pictureHeight),
      margin(pictureWidth * 7 / 100),
      backdrop(kFocalPerWidth * float(width), margin + int(kHorizonShare * float(height)) + height / 12)
{
}

Scene::Scene(const Drive& drive, const Scenery& scenery, Camera camera)
    : m_drive(drive),
      m_scenery(scenery),
      m_camera(camera),
      m_scene(scenery.width, scenery.height + scenery.margin),
      m_frame(scenery.width, scenery.height),
      m_roadside(drive.road(), scenery.plants),
      m_tunnel(drive.road(), scenery.plants)
{
}

View Scene::viewOf(const Motion& motion, double across) const
{
    const RoadPoint here = m_drive.road().at(motion.along);
    View view;
    view.eye = m_drive.road().place(motion.along, across, kEyeHeight);
    view.heading = here.heading + (looksBack() ? std::numbers::pi : 0);
    view.slope = looksBack() ? -here.slope : here.slope;
    view.focal = kFocalPerWidth * float(m_frame.width());
    view.centreX = float(m_frame.width()) / 2;
    view.horizonY = float(m_scenery.margin) + kHorizonShare * float(m_frame.height());
    return view;
}

float Scene::exposureGain(double seconds) const
{
    // The camera needs a second to get used to the dark and to the light again.
    const auto adapted = [](double since) { return float(1 - std::exp(-std::max(0.0, since) / 0.6)); };
    const double entry = m_drive.tunnelEntry();
    const double exit = m_drive.timeAt(Road::kTunnelEnd);
    return 1 + 0.55F * (adapted(seconds - entry) - adapted(seconds - exit));
}

const Canvas& Scene::render(double seconds)
{
    const Motion motion = m_drive.motionAt(seconds);
    const View view = viewOf(motion, motion.across);
    const int direction = looksBack() ? -1 : 1;
    const std::vector<TracePoint> trace = traceRoad(m_drive.road(), view, motion.along, direction);
    for (int y = m_scenery.backdrop.draw(m_scene, view); y < m_scene.height(); ++y)
        m_scene.blendSpan(y, 0, float(m_scene.width()), palette::kGrassDark, 1);
    m_scenery.ground.draw(m_scene, view, trace);
    m_items.clear();
    collect(view, motion, seconds);
    collectRails(view, trace);
    collectTunnel(view, motion.along);
    drawAll();
    const auto focal = double(view.focal);
    const float gain = exposureGain(seconds);
    const double nod = 0.37 * motion.heave - motion.pitch;
    expose(m_scene, m_frame,
        {float(focal * nod) * (looksBack() ? -1.0F : 1.0F), float(motion.roll) * (looksBack() ? -1.0F : 1.0F),
            gain, m_scenery.margin});
    const Rgb light = roadLight(motion.along);
    const float brightness = std::min(1.0F, light.g * gain);
    looksBack() ? drawRearWindow(m_frame, brightness) : drawBonnet(m_frame, brightness);
    drawCaption(m_frame, m_drive.fixAt(int(std::floor(seconds + 1e-6))), looksBack());
    return m_frame;
}

void Scene::collect(const View& view, const Motion& motion, double seconds)
{
    const double nearest = looksBack() ? motion.along - kFarthestProp : motion.along - 12;
    const double farthest = looksBack() ? motion.along + 12 : motion.along + kFarthestProp;
    const auto props = m_drive.road().props();
    const auto first = std::lower_bound(props.begin(), props.end(), nearest,
        [](const Prop& prop, double along) { return prop.along < along; });
    for (auto prop = first; prop != props.end() && prop->along < farthest; ++prop) {
        const Vec3 camera = view.toCamera(m_drive.road().place(prop->along, prop->across, 0));
        const double aside = std::abs(camera.x) - 14;
        if (camera.z < -14 || aside > (camera.z + 14) * 0.72)
            continue;
        if (camera.z < kSunnyShadows)
            m_items.push_back(
                {1000 + camera.z, [this, &view, prop] { m_roadside.drawShadow(m_scene, view, *prop); }});
        m_items.push_back({camera.z, [this, &view, prop] { m_roadside.drawProp(m_scene, view, *prop); }});
    }
    for (const Vehicle& vehicle : trafficAt(m_drive, seconds)) {
        const double middle = vehicle.along + (vehicle.oncoming ? -2.2 : 2.2);
        const Vec3 camera = view.toCamera(m_drive.road().place(middle, vehicle.across, 0));
        if (camera.z > -1 && camera.z < kFarthestProp)
            m_items.push_back(
                {camera.z, [this, &view, vehicle] { m_roadside.drawVehicle(m_scene, view, vehicle); }});
    }
}

void Scene::collectRails(const View& view, const std::vector<TracePoint>& trace)
{
    // A piece of rail just beside the camera, then one between every two places of the trace.
    const double step = looksBack() ? -3 : 3;
    for (size_t i = 0; i < trace.size(); ++i) {
        const double from = i == 0 ? trace[0].along - step : trace[i - 1].along;
        const double to = trace[i].along;
        const double depth = i == 0 ? 0.7 : trace[i - 1].camera.z;
        if (depth > 200)
            break;
        for (const int side : {-1, 1}) {
            if (m_drive.road().hasRail((from + to) / 2, side))
                m_items.push_back({depth,
                    [this, &view, from, to, side] { m_roadside.drawRail(m_scene, view, from, to, side); }});
        }
    }
}

void Scene::collectTunnel(const View& view, double along)
{
    const double start = Road::kTunnelStart;
    const double end = Road::kTunnelEnd;
    const double reach = 320;
    if (looksBack() ? (along < start || along > end + reach) : (along > end || along < start - reach))
        return;
    for (double slice = start; slice < end; slice += Tunnel::kSlice) {
        const double nearEdge = looksBack() ? slice + Tunnel::kSlice : slice;
        const double depth = view.toCamera(m_drive.road().place(nearEdge, 0, 0)).z;
        if (depth > -Tunnel::kSlice - 1)
            m_items.push_back({depth, [this, &view, slice] { m_tunnel.drawSlice(m_scene, view, slice); }});
    }
    const bool fromStart = !looksBack();
    const double portal = fromStart ? start : end;
    const double depth = view.toCamera(m_drive.road().place(portal, 0, 0)).z;
    if (depth > 1)
        m_items.push_back(
            {depth - 0.5, [this, &view, fromStart] { m_tunnel.drawPortal(m_scene, view, fromStart); }});
}

void Scene::drawAll()
{
    std::stable_sort(
        m_items.begin(), m_items.end(), [](const Item& a, const Item& b) { return a.depth > b.depth; });
    for (const Item& item : m_items)
        item.draw();
}

} // namespace samplecard
