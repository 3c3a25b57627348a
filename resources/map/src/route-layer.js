/** The way driven so far. */
const RouteLayer = CanvasLayer.extend({
    options: { padding: 0.2 },

    initialize(route, options) {
        CanvasLayer.prototype.initialize.call(this, options);
        this.route = route;
    },

    draw(context, view) {
        const line = new Path2D();
        const { xs, ys, starts } = this.route;
        for (let part = 0; part < starts.length; ++part)
            this.addPart(line, xs, ys, starts[part], starts[part + 1] ?? xs.length, view);
        context.lineJoin = context.lineCap = "round";
        const width = view.zoom >= 13 ? 4 : 3;
        context.strokeStyle = "rgba(27, 21, 19, 0.9)";
        context.lineWidth = width + 3;
        context.stroke(line);
        context.strokeStyle = "#FFD97D";
        context.lineWidth = width;
        context.stroke(line);
    },

    /** Points that fall on the same spot of the screen, and stretches far outside, are left out. */
    addPart(line, xs, ys, from, to, view) {
        const step = 1 / view.scale;
        const margin = 8 / view.scale;
        const [left, right, top, bottom] =
            [view.left - margin, view.right + margin, view.top - margin, view.bottom + margin];
        let [x, y] = [xs[from], ys[from]];
        let pen = false;
        for (let i = from + 1; i < to; ++i) {
            const [nextX, nextY] = [xs[i], ys[i]];
            if (Math.abs(nextX - x) + Math.abs(nextY - y) < step && i + 1 < to)
                continue;
            const isOut = Math.max(x, nextX) < left || Math.min(x, nextX) > right
                || Math.max(y, nextY) < top || Math.min(y, nextY) > bottom;
            if (!isOut) {
                if (!pen)
                    line.moveTo(view.x(x), view.y(y));
                line.lineTo(view.x(nextX), view.y(nextY));
            }
            pen = !isOut;
            [x, y] = [nextX, nextY];
        }
    },
});
