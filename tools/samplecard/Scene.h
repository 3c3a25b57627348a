#pragma once

#include "tools/samplecard/Backdrop.h"
#include "tools/samplecard/Ground.h"
#include "tools/samplecard/Roadside.h"
#include "tools/samplecard/Tunnel.h"

#include <functional>

namespace samplecard {

enum class Camera { front, rear };

/// What all pictures of one size share. Immutable after construction.
struct Scenery {
    Scenery(int pictureWidth, int pictureHeight);

    int width;
    int height;
    int margin; // rows drawn above the picture, for its movements
    Backdrop backdrop;
    Ground ground;
    Plants plants;
};

/// Draws the drive as one of the car's cameras sees it. One object per thread.
class Scene {
public:
    /// Both must outlive the scene.
    Scene(const Drive& drive, const Scenery& scenery, Camera camera);

    int width() const { return frame.width(); }
    int height() const { return frame.height(); }
    /// The picture at a moment of the drive; valid until the next call.
    const Canvas& render(double seconds);

private:
    /// Something to be drawn, the farthest first.
    struct Item {
        double depth;
        std::function<void()> draw;
    };

    bool looksBack() const { return which == Camera::rear; }
    View viewOf(const Motion& motion, double across) const;
    void collect(const View& view, const Motion& motion, double seconds);
    void collectRails(const View& view, const std::vector<TracePoint>& trace);
    void collectTunnel(const View& view, double along);
    float exposureGain(double seconds) const;
    void drawAll();

    const Drive& journey;
    const Scenery& setting;
    Camera which;
    Canvas drawn;
    Canvas frame;
    Roadside roadside;
    Tunnel tunnel;
    std::vector<Item> items;
};

} // namespace samplecard
