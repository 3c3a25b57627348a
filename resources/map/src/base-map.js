/** Cuts a ring (x and y in turn) down to the rectangle; what is far outside would cost time and precision. */
function clipped(ring, { left, top, right, bottom }) {
    const edges = [[0, left, 1], [0, right, -1], [1, top, 1], [1, bottom, -1]];
    for (const [axis, limit, sign] of edges) {
        const kept = [];
        for (let i = 0, before = ring.length - 2; i < ring.length; before = i, i += 2) {
            const isIn = (ring[i + axis] - limit) * sign >= 0;
            if (isIn !== ((ring[before + axis] - limit) * sign >= 0)) {
                const share = (limit - ring[before + axis]) / (ring[i + axis] - ring[before + axis]);
                kept.push(ring[before] + share * (ring[i] - ring[before]),
                    ring[before + 1] + share * (ring[i + 1] - ring[before + 1]));
            }
            if (isIn)
                kept.push(ring[i], ring[i + 1]);
        }
        ring = kept;
    }
    return ring;
}

function addPath(context, points, shift, view) {
    for (let i = 0; i < points.length; i += 2) {
        const [x, y] = [view.x(points[i] + shift), view.y(points[i + 1])];
        if (i)
            context.lineTo(x, y);
        else
            context.moveTo(x, y);
    }
}

/** Only the stretches of an open line that can be seen. */
function addVisible(context, points, shift, view) {
    let pen = false;
    for (let i = 2; i < points.length; i += 2) {
        const [ax, ay, bx, by] = [points[i - 2] + shift, points[i - 1], points[i] + shift, points[i + 1]];
        if (Math.max(ax, bx) < view.left || Math.min(ax, bx) > view.right
            || Math.max(ay, by) < view.top || Math.min(ay, by) > view.bottom) {
            pen = false;
            continue;
        }
        if (!pen)
            context.moveTo(view.x(ax), view.y(ay));
        context.lineTo(view.x(bx), view.y(by));
        pen = true;
    }
}

const gridSteps = [45, 30, 15, 10, 5, 2, 1, 0.5, 0.2, 0.1, 0.05, 0.02, 0.01, 0.005, 0.002];

/** Land, coasts, borders and a grid of degrees. The fine shapes are fetched when the view is first close enough. */
const BaseMap = CanvasLayer.extend({
    initialize(coarse, options) {
        CanvasLayer.prototype.initialize.call(this, options);
        this.coarse = new Shapes(coarse);
        this.fine = null;
    },

    colours: { land: "#504743", coast: "#8C807B", border: "#7A6E69", grid: "rgba(230, 224, 220, 0.07)" },

    shapes(zoom) {
        const isClose = zoom >= 6;
        if (isClose && !this.fine)
            this.fetchFine();
        return isClose && this.fine ? this.fine : this.coarse;
    },

    fetchFine() {
        if (this.isFetching)
            return;
        this.isFetching = true;
        window.zavikDetail = text => {
            delete window.zavikDetail;
            this.fine = new Shapes(JSON.parse(text));
            this.redraw();
        };
        const script = document.createElement("script");
        script.src = "detail.js";
        document.head.append(script);
    },

    draw(context, view) {
        const shapes = this.shapes(view.zoom);
        const step = 0.8 / view.scale;
        const seen = new Set();
        const margin = 8 / view.scale;
        const room = { left: view.left - margin, right: view.right + margin, top: view.top - margin, bottom: view.bottom + margin };
        const land = new Path2D();
        const coasts = new Path2D();
        const borders = new Path2D();
        for (const polygon of shapes.polygons) {
            if (polygon.bottom < view.top || polygon.top > view.bottom)
                continue;
            for (const shift of copies(polygon.left, polygon.right, view)) {
                const window = { ...room, left: room.left - shift, right: room.right - shift };
                for (const indices of polygon.rings) {
                    addPath(land, clipped(shapes.ring(indices, step), window), shift, view);
                    land.closePath();
                    for (const index of indices) {
                        const line = index < 0 ? ~index : index;
                        if (seen.has(line + "/" + shift))
                            continue;
                        seen.add(line + "/" + shift);
                        addVisible(shapes.borders[line] === "1" ? borders : coasts, shapes.thin(line, step), shift, view);
                    }
                }
            }
        }
        context.lineJoin = "round";
        context.fillStyle = this.colours.land;
        context.fill(land, "evenodd");
        this.drawGrid(context, view);
        context.strokeStyle = this.colours.border;
        context.lineWidth = view.zoom < 4 ? 0.5 : 0.9;
        context.stroke(borders);
        context.strokeStyle = this.colours.coast;
        context.stroke(coasts);
    },

    drawGrid(context, view) {
        const degrees = gridSteps.filter(size => size / 360 * view.scale > 70).at(-1) ?? gridSteps[0];
        context.strokeStyle = this.colours.grid;
        context.lineWidth = 1;
        context.beginPath();
        const firstLng = Math.ceil((view.left - 0.5) * 360 / degrees);
        const lastLng = Math.floor((view.right - 0.5) * 360 / degrees);
        for (let i = firstLng; i <= lastLng; ++i) {
            const x = view.x(worldX(i * degrees));
            context.moveTo(x, view.min.y);
            context.lineTo(x, view.max.y);
        }
        const latitude = y => Math.atan(Math.sinh((0.5 - y) * 2 * Math.PI)) * 180 / Math.PI;
        const firstLat = Math.ceil(latitude(view.bottom) / degrees);
        const lastLat = Math.floor(latitude(view.top) / degrees);
        for (let i = firstLat; i <= lastLat; ++i) {
            const y = view.y(worldY(i * degrees));
            context.moveTo(view.min.x, y);
            context.lineTo(view.max.x, y);
        }
        context.stroke();
    },
});
