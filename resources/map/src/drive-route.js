const reach = 14; // points on screen that a click may miss the line by

/**
 * The way of the whole drive, of which the recordings are parts: dim, the part that plays brighter. A click tells
 * the program the nearest place.
 */
const DriveRoute = RouteLayer.extend({
    initialize(told, options) {
        RouteLayer.prototype.initialize.call(this, null, options);
        this.told = told;
        this.parts = []; // { take, xs, ys }
        this.take = null;
    },

    /** Each part as a list of its take, then longitude and latitude in turn. */
    setParts(parts) {
        this.parts = parts.map(([take, ...degrees]) => {
            const [xs, ys] = [[], []];
            for (let i = 0; i + 1 < degrees.length; i += 2) {
                let lng = degrees[i];
                if (i)
                    lng += 360 * Math.round((degrees[i - 2] - lng) / 360);
                degrees[i] = lng;
                xs.push(worldX(lng));
                ys.push(worldY(degrees[i + 1]));
            }
            return { take, xs, ys };
        });
        this.redraw();
    },

    setTake(take) {
        this.take = take;
        this.redraw();
    },

    draw(context, view) {
        context.lineJoin = context.lineCap = "round";
        for (const isPlaying of [false, true]) {
            const line = new Path2D();
            for (const { take, xs, ys } of this.parts) {
                if ((take === this.take) === isPlaying)
                    this.addPart(line, xs, ys, 0, xs.length, view);
            }
            context.strokeStyle = "rgba(27, 21, 19, 0.7)";
            context.lineWidth = 6;
            context.stroke(line);
            context.strokeStyle = isPlaying ? "#E6E0DC" : "#A89C96";
            context.lineWidth = 3;
            context.stroke(line);
        }
    },

    /** The place next to a point of the screen: its part and index in it; null where none is near. */
    nearest({ x, y }) {
        const map = this._map;
        const scale = map.options.crs.scale(map.getZoom());
        const origin = map.getPixelBounds().min;
        let found = null;
        let least = reach * reach;
        this.parts.forEach(({ xs, ys }, part) => {
            for (let index = 0; index < xs.length; ++index) {
                // The world repeats itself sideways.
                const turns = Math.round(((x + origin.x) / scale) - xs[index]);
                const dx = (xs[index] + turns) * scale - origin.x - x;
                const dy = ys[index] * scale - origin.y - y;
                if (dx * dx + dy * dy <= least) {
                    least = dx * dx + dy * dy;
                    found = { part, index };
                }
            }
        });
        return found;
    },

    onAdd(map) {
        RouteLayer.prototype.onAdd.call(this, map);
        map.on("click", ({ containerPoint }) => {
            const place = this.nearest(containerPoint);
            if (place)
                this.told(`route/${place.part}/${place.index}`);
        });
        map.on("mousemove", ({ containerPoint }) =>
            map.getContainer().classList.toggle("over-route", this.nearest(containerPoint) !== null));
    },
});
