// World units: x and y run from 0 to 1 over the square of the Mercator projection, y downwards.
const worldX = lng => lng / 360 + 0.5;
const worldY = lat => 0.5 - Math.asinh(Math.tan(Math.max(-86, Math.min(86, lat)) * Math.PI / 180)) / (2 * Math.PI);

const digitOf = new Map([..."ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"]
    .map((letter, value) => [letter.charCodeAt(0), value]));

/** The whole numbers of a text: groups of five bits, the lowest first, the sign in a number's first bit. */
function wholeNumbers(text) {
    const numbers = [];
    let value = 0, shift = 0;
    for (let i = 0; i < text.length; ++i) {
        const digit = digitOf.get(text.charCodeAt(i));
        value |= (digit & 31) << shift;
        shift += 5;
        if (digit < 32) {
            numbers.push(value & 1 ? -(value >> 1) : value >> 1);
            value = shift = 0;
        }
    }
    return numbers;
}

/** The world's coasts, borders and land. Lines are unpacked when they are first drawn. */
class Shapes {
    constructor({ scale, translate, lines, borders, polygons }) {
        this.packed = { scale, translate, lines };
        this.borders = borders;
        this.unpacked = new Array(lines.length);
        this.thinned = new Array(lines.length);
        this.polygons = polygons.map(({ box: [west, south, east, north], rings }) =>
            ({ rings, left: worldX(west), top: worldY(north), right: worldX(east), bottom: worldY(south) }));
    }

    /** The line's points, x and y in turn; continued beyond 0 and 1 where it crosses the date line. */
    line(index) {
        return this.unpacked[index] ??= this.unpack(this.packed.lines[index]);
    }

    unpack(text) {
        const { scale, translate } = this.packed;
        const points = wholeNumbers(text);
        const world = new Float64Array(points.length);
        let x = 0, y = 0;
        for (let i = 0; i < points.length; i += 2) {
            x += points[i];
            y += points[i + 1];
            const here = worldX(x * scale[0] + translate[0]);
            world[i] = i ? here + Math.round(world[i - 2] - here) : here;
            world[i + 1] = worldY(y * scale[1] + translate[1]);
        }
        return world;
    }

    /** The line without the points that lie closer than `step` to the one before; its ends stay. */
    thin(index, step) {
        const known = this.thinned[index];
        if (known?.step === step)
            return known.points;
        const all = this.line(index);
        const kept = [all[0], all[1]];
        for (let i = 2; i < all.length - 2; i += 2)
            if (Math.abs(all[i] - kept.at(-2)) + Math.abs(all[i + 1] - kept.at(-1)) > step)
                kept.push(all[i], all[i + 1]);
        kept.push(all[all.length - 2], all[all.length - 1]);
        this.thinned[index] = { step, points: kept };
        return kept;
    }

    /** The closed ring of the given lines; one that runs around the pole is closed below the map's lower edge. */
    ring(indices, step) {
        const points = [];
        for (const index of indices) {
            const line = this.thin(index < 0 ? ~index : index, step);
            const count = line.length / 2;
            let shift;
            for (let i = 0; i < count; ++i) {
                const from = 2 * (index < 0 ? count - 1 - i : i);
                shift ??= points.length ? Math.round(points.at(-2) - line[from]) : 0;
                points.push(line[from] + shift, line[from + 1]);
            }
        }
        const last = points.at(-2);
        if (Math.abs(last - points[0]) > 0.5)
            points.push(last, 1.1, points[0], 1.1);
        return points;
    }
}
