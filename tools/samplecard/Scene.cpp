#include "tools/samplecard/Scene.h"

#include "tools/samplecard/Cockpit.h"
#include "tools/samplecard/Lens.h"
#include "tools/samplecard/Palette.h"

#include <numbers>

namespace samplecard {

namespace {

constexpr double eyeHeight = 1.32;
constexpr float focalPerWidth = 0.74F;
constexpr float horizonShare = 0.47F;
constexpr double farthestProp = 340;
constexpr double sunnyShadows = 130;

} // namespace

Scenery::Scenery(int pictureWidth, int pictureHeight)
    : width(pictureWidth),
      height(pictureHeight),
      margin(pictureWidth * 7 / 100),
      backdrop(focalPerWidth * float(width), margin + int(horizonShare * float(height)) + height / 12)
{
}

Scene::Scene(const Drive& drive, const Scenery& scenery, Camera camera)
    : journey(drive),
      setting(scenery),
      which(camera),
      drawn(scenery.width, scenery.height + scenery.margin),
      frame(scenery.width, scenery.height),
      roadside(drive.road(), scenery.plants),
      tunnel(drive.road(), scenery.plants)
{
}

View Scene::viewOf(const Motion& motion, double across) const
{
    const RoadPoint here = journey.road().at(motion.along);
    View view;
    view.eye = journey.road().place(motion.along, across, eyeHeight);
    view.heading = here.heading + (looksBack() ? std::numbers::pi : 0);
    view.slope = looksBack() ? -here.slope : here.slope;
    view.focal = focalPerWidth * float(frame.width());
    view.centreX = float(frame.width()) / 2;
    view.horizonY = float(setting.margin) + horizonShare * float(frame.height());
    return view;
}

float Scene::exposureGain(double seconds) const
{
    // The camera needs a second to get used to the dark and to the light again.
    const auto adapted = [](double since) { return float(1 - std::exp(-std::max(0.0, since) / 0.6)); };
    const double entry = journey.tunnelEntry();
    const double exit = journey.timeAt(Road::tunnelEnd);
    return 1 + 0.55F * (adapted(seconds - entry) - adapted(seconds - exit));
}

const Canvas& Scene::render(double seconds)
{
    const Motion motion = journey.motionAt(seconds);
    const View view = viewOf(motion, motion.across);
    const int direction = looksBack() ? -1 : 1;
    const std::vector<TracePoint> trace = traceRoad(journey.road(), view, motion.along, direction);
    for (int y = setting.backdrop.draw(drawn, view); y < drawn.height(); ++y)
        drawn.blendSpan(y, 0, float(drawn.width()), palette::grassDark, 1);
    setting.ground.draw(drawn, view, trace);
    items.clear();
    collect(view, motion, seconds);
    collectRails(view, trace);
    collectTunnel(view, motion.along);
    drawAll();
    const auto focal = double(view.focal);
    const float gain = exposureGain(seconds);
    const double nod = 0.37 * motion.heave - motion.pitch;
    expose(drawn, frame,
        {float(focal * nod) * (looksBack() ? -1.0F : 1.0F), float(motion.roll) * (looksBack() ? -1.0F : 1.0F),
            gain, setting.margin});
    const Rgb light = roadLight(motion.along);
    const float brightness = std::min(1.0F, light.g * gain);
    looksBack() ? drawRearWindow(frame, brightness) : drawBonnet(frame, brightness);
    drawCaption(frame, journey.fixAt(int(std::floor(seconds + 1e-6))), looksBack());
    return frame;
}

void Scene::collect(const View& view, const Motion& motion, double seconds)
{
    const double nearest = looksBack() ? motion.along - farthestProp : motion.along - 12;
    const double farthest = looksBack() ? motion.along + 12 : motion.along + farthestProp;
    const auto props = journey.road().props();
    const auto first = std::lower_bound(props.begin(), props.end(), nearest,
        [](const Prop& prop, double along) { return prop.along < along; });
    for (auto prop = first; prop != props.end() && prop->along < farthest; ++prop) {
        const Vec3 camera = view.toCamera(journey.road().place(prop->along, prop->across, 0));
        const double aside = std::abs(camera.x) - 14;
        if (camera.z < -14 || aside > (camera.z + 14) * 0.72)
            continue;
        if (camera.z < sunnyShadows)
            items.push_back(
                {1000 + camera.z, [this, &view, prop] { roadside.drawShadow(drawn, view, *prop); }});
        items.push_back({camera.z, [this, &view, prop] { roadside.drawProp(drawn, view, *prop); }});
    }
    for (const Vehicle& vehicle : trafficAt(journey, seconds)) {
        const double middle = vehicle.along + (vehicle.oncoming ? -2.2 : 2.2);
        const Vec3 camera = view.toCamera(journey.road().place(middle, vehicle.across, 0));
        if (camera.z > -1 && camera.z < farthestProp)
            items.push_back(
                {camera.z, [this, &view, vehicle] { roadside.drawVehicle(drawn, view, vehicle); }});
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
            if (journey.road().hasRail((from + to) / 2, side))
                items.push_back({depth,
                    [this, &view, from, to, side] { roadside.drawRail(drawn, view, from, to, side); }});
        }
    }
}

void Scene::collectTunnel(const View& view, double along)
{
    const double start = Road::tunnelStart;
    const double end = Road::tunnelEnd;
    const double reach = 320;
    if (looksBack() ? (along < start || along > end + reach) : (along > end || along < start - reach))
        return;
    for (double slice = start; slice < end; slice += Tunnel::slice) {
        const double nearEdge = looksBack() ? slice + Tunnel::slice : slice;
        const double depth = view.toCamera(journey.road().place(nearEdge, 0, 0)).z;
        if (depth > -Tunnel::slice - 1)
            items.push_back({depth, [this, &view, slice] { tunnel.drawSlice(drawn, view, slice); }});
    }
    const bool fromStart = !looksBack();
    const double portal = fromStart ? start : end;
    const double depth = view.toCamera(journey.road().place(portal, 0, 0)).z;
    if (depth > 1)
        items.push_back(
            {depth - 0.5, [this, &view, fromStart] { tunnel.drawPortal(drawn, view, fromStart); }});
}

void Scene::drawAll()
{
    std::stable_sort(
        items.begin(), items.end(), [](const Item& a, const Item& b) { return a.depth > b.depth; });
    for (const Item& item : items)
        item.draw();
}

} // namespace samplecard
