const closeZoom = 15;
const nearZoom = 12; // from here on a new route needs no zooming in
const quietSeconds = 15; // after the user's own move

/** Keeps the car in the inner part of the view, unless the user has just moved the map. */
class Follower {
    constructor(map) {
        this.map = map;
        this.movedAt = -Infinity;
        const moved = () => this.movedAt = performance.now();
        map.on("dragstart drag dragend dblclick boxzoomend", moved);
        map.getContainer().addEventListener("wheel", moved, { passive: true });
        map.getContainer().addEventListener("keydown", ({ key }) => key.startsWith("Arrow") && moved());
    }

    get isQuiet() {
        return performance.now() - this.movedAt < quietSeconds * 1000;
    }

    show(point, isFirst) {
        const { map } = this;
        const size = map.getSize();
        if (!size.x || !size.y)
            return false;
        if (isFirst && map.getZoom() < nearZoom) {
            map.setView(point, closeZoom, { animate: false });
            return true;
        }
        if (!isFirst && this.isQuiet)
            return true;
        const inner = size.multiplyBy(0.22);
        const at = map.latLngToContainerPoint(point);
        if (!L.bounds(inner, size.subtract(inner)).contains(at))
            map.panTo(point, { animate: !isFirst && at.distanceTo(size.divideBy(2)) < Math.max(size.x, size.y), duration: 0.4 });
        return true;
    }

    showAll([west, south, east, north]) {
        this.movedAt = performance.now();
        this.map.fitBounds([[south, west], [north, east]],
            { maxZoom: closeZoom + 1, paddingTopLeft: [56, 28], paddingBottomRight: [28, 36] });
    }
}
