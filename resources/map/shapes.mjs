// Turns a topology of the world's countries into what the page draws and labels.

const alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/** One whole number: groups of five bits, the lowest first, each with a flag for "more"; the sign in the first bit. */
function digits(value) {
    let rest = value < 0 ? (-value << 1) | 1 : value << 1;
    let text = "";
    for (; rest > 31; rest >>>= 5)
        text += alphabet[(rest & 31) | 32];
    return text + alphabet[rest];
}

/** Degrees of every point, longitudes continued beyond 180 where a line crosses the date line. */
export function degrees({ arcs, transform: { scale, translate } }) {
    return arcs.map(arc => {
        let x = 0, y = 0, previous;
        return arc.map(([dx, dy]) => {
            x += dx;
            y += dy;
            let lng = x * scale[0] + translate[0];
            if (previous !== undefined)
                lng += 360 * Math.round((previous - lng) / 360);
            previous = lng;
            return [lng, y * scale[1] + translate[1]];
        });
    });
}

/** The ring's points, continued across the date line; one that runs around a pole is closed over it. */
function ringPoints(ring, lines) {
    const points = [];
    for (const index of ring) {
        const line = index < 0 ? [...lines[~index]].reverse() : lines[index];
        const last = points.at(-1);
        const shift = last ? 360 * Math.round((last[0] - line[0][0]) / 360) : 0;
        points.push(...line.slice(last ? 1 : 0).map(([lng, lat]) => [lng + shift, lat]));
    }
    const [first, last] = [points[0], points.at(-1)];
    if (Math.abs(last[0] - first[0]) > 180)
        points.push([last[0], -90], [first[0], -90], first);
    return points;
}

function box(points) {
    const bounds = [Infinity, Infinity, -Infinity, -Infinity];
    for (const [lng, lat] of points) {
        bounds[0] = Math.min(bounds[0], lng);
        bounds[1] = Math.min(bounds[1], lat);
        bounds[2] = Math.max(bounds[2], lng);
        bounds[3] = Math.max(bounds[3], lat);
    }
    return bounds.map(value => +value.toFixed(4));
}

const polygonsOf = geometry => geometry.type === "Polygon" ? [geometry.arcs] : geometry.arcs ?? [];

/**
 * What the page draws: every line once (as the differences of its points), whether it is a border between
 * two countries ("1") or a coast ("0"), and the polygons with their boxes (west, south, east, north).
 */
export function shapes(topology) {
    const lines = degrees(topology);
    const uses = new Array(topology.arcs.length).fill(0);
    const polygons = [];
    for (const geometry of topology.objects.countries.geometries)
        for (const rings of polygonsOf(geometry)) {
            for (const index of rings.flat())
                ++uses[index < 0 ? ~index : index];
            polygons.push({ box: box(ringPoints(rings[0], lines)), rings });
        }
    return {
        ...topology.transform,
        lines: topology.arcs.map(arc => arc.map(([x, y]) => digits(x) + digits(y)).join("")),
        borders: uses.map(count => count > 1 ? "1" : "0").join(""),
        polygons,
    };
}

const radians = Math.PI / 180;
const mercator = ([lng, lat]) =>
    [lng, Math.asinh(Math.tan(Math.max(-85, Math.min(85, lat)) * radians)) / radians];
const latitude = y => Math.atan(Math.sinh(y * radians)) / radians;

function area(points) {
    let sum = 0;
    for (let i = 1; i < points.length; ++i)
        sum += points[i - 1][0] * points[i][1] - points[i][0] * points[i - 1][1];
    return Math.abs(sum) / 2;
}

/** The free stretch of the ring's inside on the horizontal line at y that is the widest: [from, to]. */
function widest(points, y) {
    const cuts = [];
    for (let i = 1; i < points.length; ++i) {
        const [[ax, ay], [bx, by]] = [points[i - 1], points[i]];
        if ((ay > y) !== (by > y))
            cuts.push(ax + (y - ay) / (by - ay) * (bx - ax));
    }
    cuts.sort((a, b) => a - b);
    let best = [0, 0];
    for (let i = 1; i < cuts.length; i += 2)
        if (cuts[i] - cuts[i - 1] > best[1] - best[0])
            best = [cuts[i - 1], cuts[i]];
    return best;
}

/**
 * Where a country's name stands: in the middle of the widest level stretch through its largest part, kept away
 * from the ends. `room` is the stretch's length in degrees of longitude.
 */
export function country(lines, geometry) {
    const rings = polygonsOf(geometry).map(polygon => ringPoints(polygon[0], lines).map(mercator));
    const largest = rings.reduce((a, b) => area(a) > area(b) ? a : b);
    const ys = largest.map(([, y]) => y);
    const [low, high] = [Math.min(...ys), Math.max(...ys)];
    let best = { room: -1 };
    for (let i = 4; i <= 16; ++i) {
        const y = low + (high - low) * i / 20;
        const [from, to] = widest(largest, y);
        // The middle of the land is the better place where two stretches are about as long.
        const worth = (to - from) * (1 - Math.abs(i - 10) / 20);
        if (worth > (best.worth ?? -1))
            best = { worth, room: to - from, lng: (from + to) / 2, lat: latitude(y) };
    }
    const lng = best.lng - 360 * Math.round(best.lng / 360);
    return { lat: +best.lat.toFixed(2), lng: +lng.toFixed(2), room: +best.room.toFixed(2) };
}
