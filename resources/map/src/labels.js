const labelFont = '"Noto Sans", "Noto Sans CJK KR", "Noto Sans KR", system-ui, "Liberation Sans", sans-serif';
const labelStyles = {
    country: { font: `600 11px ${labelFont}`, colour: "#CFC6C0", spacing: "0.6px" },
    capital: { font: `600 12px ${labelFont}`, colour: "#FBF8F6", spacing: "0px" },
    city: { font: `12px ${labelFont}`, colour: "#E6E0DC", spacing: "0px" },
};
const lineHeight = 14;

/** The names of countries and cities where there is room; none covers another one, a dot or a control. */
const Labels = CanvasLayer.extend({
    options: { padding: 0.15 },

    initialize(names, options) {
        CanvasLayer.prototype.initialize.call(this, options);
        this.names = names;
        this.widths = new Map();
    },

    width(context, { kind, name }) {
        let width = this.widths.get(kind + name);
        if (width === undefined) {
            this.useStyle(context, kind);
            width = context.measureText(name).width;
            this.widths.set(kind + name, width);
        }
        return width;
    },

    useStyle(context, kind) {
        const style = labelStyles[kind];
        context.font = style.font;
        context.letterSpacing = style.spacing;
        context.fillStyle = style.colour;
    },

    /** Rectangles in layer points: [left, top, right, bottom]. */
    controls() {
        const map = this._map;
        const frame = map.getContainer().getBoundingClientRect();
        return [...document.querySelectorAll(".leaflet-control, #note:not([hidden])")].map(element => {
            const { left, top, right, bottom } = element.getBoundingClientRect();
            const from = map.containerPointToLayerPoint([left - frame.left - 3, top - frame.top - 3]);
            const to = map.containerPointToLayerPoint([right - frame.left + 3, bottom - frame.top + 3]);
            return [from.x, from.y, to.x, to.y];
        });
    },

    /** Whether the edge of the view cuts the box; a name that lies wholly outside comes into view whole. */
    cutter() {
        const map = this._map;
        const { x, y } = map.containerPointToLayerPoint([0, 0]);
        const size = map.getSize();
        const [left, top, right, bottom] = [x + 2, y + 2, x + size.x - 2, y + size.y - 2];
        return ([l, t, r, b]) => {
            const isInside = l >= left && r <= right && t >= top && b <= bottom;
            const isOutside = r < left || l > right || b < top || t > bottom;
            return !isInside && !isOutside;
        };
    },

    /** The places around a dot (or on a country) that the name may take, the best first. */
    boxes({ kind }, x, y, width) {
        const half = lineHeight / 2;
        if (kind === "country")
            return [[x - width / 2, y - half, x + width / 2, y + half]];
        return [
            [x + 7, y - half, x + 7 + width, y + half],
            [x - 7 - width, y - half, x - 7, y + half],
            [x - width / 2, y - lineHeight - 5, x + width / 2, y - 5],
            [x - width / 2, y + 5, x + width / 2, y + lineHeight + 5],
        ];
    },

    placed(context, view) {
        const taken = this.controls();
        const free = ([left, top, right, bottom]) =>
            taken.every(([l, t, r, b]) => right < l || left > r || bottom < t || top > b);
        const isCut = this.cutter();
        const labels = [];
        for (const name of named(this.names, view.zoom)) {
            const width = this.width(context, name);
            if (name.kind === "country" && name.room * view.scale < width * 0.85)
                continue;
            for (const shift of copies(name.x, name.x, view)) {
                const [x, y] = [view.x(name.x + shift), view.y(name.y)];
                if (y < view.min.y || y > view.max.y)
                    continue;
                const dot = name.kind === "country" ? null : [x - 4, y - 4, x + 4, y + 4];
                const box = dot && !free(dot) ? undefined : this.boxes(name, x, y, width).find(box => free(box) && !isCut(box));
                if (!box)
                    continue;
                taken.push([box[0] - 4, box[1] - 1, box[2] + 4, box[3] + 1]);
                if (dot)
                    taken.push(dot);
                labels.push({ ...name, box, dotX: x, dotY: y });
            }
        }
        return labels;
    },

    draw(context, view) {
        const labels = this.placed(context, view);
        this.shown = labels;
        context.textBaseline = "middle";
        context.lineJoin = "round";
        for (const { kind, name, box, dotX, dotY } of labels) {
            if (kind !== "country")
                this.drawDot(context, kind, dotX, dotY);
            this.useStyle(context, kind);
            context.strokeStyle = "rgba(47, 41, 38, 0.85)";
            context.lineWidth = 3;
            const middle = (box[1] + box[3]) / 2;
            context.strokeText(name, box[0], middle);
            context.fillText(name, box[0], middle);
        }
    },

    drawDot(context, kind, x, y) {
        context.beginPath();
        context.arc(x, y, kind === "capital" ? 3 : 2.2, 0, 2 * Math.PI);
        context.fillStyle = kind === "capital" ? "#2F2926" : "#E6E0DC";
        context.fill();
        context.strokeStyle = kind === "capital" ? "#FBF8F6" : "#2F2926";
        context.lineWidth = kind === "capital" ? 1.6 : 1;
        context.stroke();
    },
});
