/**
 * A canvas over the view and some room around it, drawn anew after every move. Subclasses have
 * draw(context, view): the context is in the map's layer points.
 */
const CanvasLayer = L.Renderer.extend({
    options: { padding: 0.3 },

    _initContainer() {
        this._container = L.DomUtil.create("canvas", this.options.className ?? "");
        this._context = this._container.getContext("2d");
    },

    _destroyContainer() {
        this._container.remove();
    },

    _updatePaths() {},

    _update() {
        if (this._map._animatingZoom && this._bounds)
            return;
        L.Renderer.prototype._update.call(this);
        this.redraw();
    },

    redraw() {
        if (!this._map || this._map._animatingZoom)
            return;
        const { min, max } = this._bounds;
        const size = this._bounds.getSize();
        const ratio = window.devicePixelRatio || 1;
        const canvas = this._container;
        L.DomUtil.setPosition(canvas, min);
        const [width, height] = [Math.round(size.x * ratio), Math.round(size.y * ratio)];
        if (canvas.width !== width || canvas.height !== height) {
            canvas.width = width;
            canvas.height = height;
            canvas.style.width = `${size.x}px`;
            canvas.style.height = `${size.y}px`;
        }
        const context = this._context;
        context.setTransform(1, 0, 0, 1, 0, 0);
        context.clearRect(0, 0, width, height);
        context.setTransform(ratio, 0, 0, ratio, -min.x * ratio, -min.y * ratio);
        const scale = this._map.options.crs.scale(this._zoom);
        const origin = this._map.getPixelOrigin();
        this.draw(context, {
            min, max, scale, zoom: this._zoom,
            // The part of the world that is drawn, in world units.
            left: (min.x + origin.x) / scale, right: (max.x + origin.x) / scale,
            top: (min.y + origin.y) / scale, bottom: (max.y + origin.y) / scale,
            x: world => world * scale - origin.x,
            y: world => world * scale - origin.y,
        });
    },
});

/** The copies of the world, as whole numbers to add to x, that a stretch from left to right shows in the view. */
function copies(left, right, view) {
    const shifts = [];
    for (let shift = Math.ceil(view.left - right); left + shift <= view.right; ++shift)
        shifts.push(shift);
    return shifts;
}
