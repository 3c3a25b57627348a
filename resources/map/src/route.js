const earthRadius = 6371008.8;
const turn = Math.PI / 180;

function metres(a, b) {
    const [lat1, lat2] = [a.lat * turn, b.lat * turn];
    const h = Math.sin((lat2 - lat1) / 2) ** 2
        + Math.cos(lat1) * Math.cos(lat2) * Math.sin((b.lng - a.lng) * turn / 2) ** 2;
    return 2 * earthRadius * Math.asin(Math.min(1, Math.sqrt(h)));
}

/** Degrees clockwise from north. */
function bearing(a, b) {
    const [lat1, lat2, lng] = [a.lat * turn, b.lat * turn, (b.lng - a.lng) * turn];
    const east = Math.sin(lng) * Math.cos(lat2);
    const north = Math.cos(lat1) * Math.sin(lat2) - Math.sin(lat1) * Math.cos(lat2) * Math.cos(lng);
    return (Math.atan2(east, north) / turn + 360) % 360;
}

const limits = {
    step: 2000, // metres; nothing farther apart is one drive
    noise: 25, // metres that a receiver may err
    acceleration: 15, // metres per second squared: harder than a car can, because playing may be sped up
    speedUp: 2.5, // times the last speed, for the same reason
    firstSpeed: 40, // metres per second, while none is known
    topSpeed: 160, // metres per second: the fastest car at double speed
    pause: 1.5, // seconds that one silence between two calls counts at most
    patience: 5, // seconds that the way from one place to the next counts at most
    tick: 0.2, // seconds that it counts at least: calls can come in bunches
    courseStep: 4, // metres of movement that give a course
};

/**
 * Where the recording has been. The points carry no times, so a jump (a seek, a gap, another recording) shows
 * itself only by being farther than a car could have driven since the last call: there the line breaks.
 * `now` is in seconds and never goes back.
 */
class Route {
    constructor() {
        this.clear();
    }

    clear() {
        this.xs = [];
        this.ys = [];
        this.starts = []; // indices of the points at which a part of the line begins
        this.bounds = null; // [west, south, east, north]
        this.last = null; // the point where the car is, or was seen last
        this.course = null;
        this.lift();
    }

    /** The next point begins a new part. */
    lift() {
        this.penDown = false;
        this.speed = null;
        this.anchor = null;
        this.elapsed = 0;
        this.heard = null;
    }

    get length() {
        return this.xs.length;
    }

    /** Notices that the car is still where it was. */
    wait(now) {
        if (this.heard !== null)
            this.elapsed = Math.min(limits.patience, this.elapsed + Math.min(limits.pause, now - this.heard));
        this.heard = now;
    }

    add(lng, lat, now) {
        this.wait(now);
        const point = { lng, lat };
        if (this.penDown) {
            point.lng += 360 * Math.round((this.last.lng - lng) / 360);
            if (!this.follows(point))
                this.lift();
        }
        if (!this.penDown)
            this.begin(point, now);
        this.append(point);
    }

    /** Whether a car can have come to the point from the last one. Takes note of the speed if so. */
    follows(point) {
        const way = metres(this.last, point);
        const time = Math.max(limits.tick, this.elapsed);
        const speed = this.speed ?? limits.firstSpeed / limits.speedUp;
        if (way > Math.min(limits.step, limits.noise + (limits.speedUp * speed + limits.acceleration * time) * time))
            return false;
        this.speed = Math.min(limits.topSpeed, way / time);
        this.elapsed = 0;
        if (metres(this.anchor, point) >= limits.courseStep) {
            this.course = bearing(this.anchor, point);
            this.anchor = point;
        }
        return true;
    }

    begin(point, now) {
        this.starts.push(this.length);
        this.penDown = true;
        this.anchor = point;
        this.course = null;
        this.heard = now;
    }

    append(point) {
        this.last = point;
        this.xs.push(worldX(point.lng));
        this.ys.push(worldY(point.lat));
        const { lng, lat } = point;
        const [west, south, east, north] = this.bounds ?? [lng, lat, lng, lat];
        this.bounds = [Math.min(west, lng), Math.min(south, lat), Math.max(east, lng), Math.max(north, lat)];
    }
}
