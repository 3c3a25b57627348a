const texts = JSON.parse(document.getElementById("texts").textContent);
const isPlace = location.hash === "#place"; // one place at a time, no route
const { lang: language, dataset: settings } = document.documentElement;
const home = language === "ko" ? [[33, 124.5], [39.5, 131]] : [[-38, -30], [66, 150]];

const map = L.map("map", {
    zoomControl: false, attributionControl: false, minZoom: 1, maxZoom: plainZoom, worldCopyJump: true,
    maxBounds: [[-85, -Infinity], [85, Infinity]], maxBoundsViscosity: 1, wheelPxPerZoomLevel: 90,
});
let isAtHome;
map.on("movestart", () => isAtHome = false);

/** Shows the home country, whole at any size, until anybody moves the map. */
function goHome() {
    map.fitBounds(home, { animate: false });
    isAtHome = true;
}

goHome();
map.getContainer().setAttribute("aria-label", texts.window_title);
map.createPane("names").style.zIndex = 150;
map.createPane("land").style.zIndex = 140;

const route = new Route();
const baseMap = new BaseMap(zavikData.coarse, { pane: "land" });
const names = places(zavikData, language);
const labels = new Labels(names, { pane: "names", className: "names" });
const routeLayer = new RouteLayer(route);
let words = 0;
/** The program reads the title; a number makes the same word a new one. */
const driveRoute = new DriveRoute(word => document.title = `zavik:${++words}:${word}`);
const marker = new Marker(map, zavikData.pictures, texts.vehicle);
const follower = new Follower(map);
const note = document.getElementById("note");

const bar = new ButtonBar(map, "topleft");
const nearby = new Nearby(map, names.cities);
const streets = new Streets(map, settings.tiles, texts);
const credits = L.control.attribution({ prefix: false }).addTo(map)
    .addAttribution(`<a href="https://www.naturalearthdata.com/">${texts.credit_shapes}</a>`);
L.control.scale({ imperial: false, maxWidth: 90 }).addTo(map);
addZoomButtons(map, bar, texts);
const routeButton = bar.add(glyphs.route, texts.zoom_route, () => follower.showAll(route.bounds));
const layerSwitch = new LayerSwitch(map, bar, texts, isStreets => streets.turn(isStreets));
streets.changed = (isOn, status) => layerSwitch.show(isOn, status);
for (const layer of [baseMap, labels, driveRoute, routeLayer])
    layer.addTo(map);
nearby.update();
streets.turn(Streets.remembered());
const state = { lng: "", lat: "", isLost: false, isFirst: true, isScheduled: false, isNoteChanged: false };

/** Draws what has changed at the next frame; a page that is not seen draws nothing. */
function schedule() {
    if (!state.isScheduled)
        requestAnimationFrame(drawFrame);
    state.isScheduled = true;
}

function drawFrame() {
    state.isScheduled = false;
    enable(routeButton, route.length > 0);
    if (!route.last) {
        marker.hide();
    } else {
        marker.show(route.last, route.course, state.isLost);
        if ((state.isFirst || !state.isLost) && follower.show([route.last.lat, route.last.lng], state.isFirst))
            state.isFirst = false;
    }
    routeLayer.redraw();
    if (state.isNoteChanged)
        labels.redraw();
    state.isNoteChanged = false;
}

function degreesOf(text, limit) {
    const value = /^\s*-?\d+(\.\d+)?\s*$/.test(text) ? Number(text) : NaN;
    return Math.abs(value) <= limit ? value : NaN;
}

function forget() {
    route.clear();
    Object.assign(state, { lng: "", lat: "", isLost: false, isFirst: true });
    schedule();
}

/** The names make room for the note. */
function showNote(isShown) {
    if (note.hidden === !isShown)
        return;
    note.hidden = !isShown;
    state.isNoteChanged = true;
    schedule();
}

/** Moves the car: longitude and latitude in decimal degrees. A point at 0, 0 means that there is no fix. */
window.setLatLag = (lngText, latText) => {
    const now = performance.now() / 1000;
    if (!isPlace && lngText === state.lng && latText === state.lat) {
        route.wait(now);
        return;
    }
    const [lng, lat] = [degreesOf(lngText, 180), degreesOf(latText, 90)];
    if (Number.isNaN(lng) || Number.isNaN(lat))
        return;
    if (isPlace)
        forget();
    state.lng = lngText;
    state.lat = latText;
    showNote(false);
    state.isLost = lng === 0 && lat === 0;
    if (state.isLost)
        route.lift();
    else
        route.add(lng, lat, now);
    schedule();
};

/** The program's word about the recording; any other text than the one of a recording without GPS is ignored. */
window.ZVKDebug = text => {
    if (text !== "GPS Data Count=Zero" || !note.hidden)
        return;
    forget();
    showNote(true);
};

/** Forgets the route and the car of the recording before. */
window.zavikNewRecording = () => {
    showNote(false);
    forget();
};

/** The way of the drive that is played: lists of a take, then longitudes and latitudes in turn; none: no drive. */
window.zavikDriveRoute = parts => {
    if (!isPlace)
        driveRoute.setParts(parts);
};

/** Which take of the drive plays. */
window.zavikDriveTake = take => driveRoute.setTake(take);

/** What the page shows, for tests. */
window.zavikMapState = () => ({
    zoom: map.getZoom(),
    center: map.getCenter(),
    car: route.last && { ...route.last, course: route.course, isLost: state.isLost },
    parts: route.starts.map((start, i) => (route.starts[i + 1] ?? route.length) - start),
    noGps: !note.hidden,
    labels: labels.shown.map(({ name, box }) => ({ name, box })),
    hasDetail: baseMap.fine !== null,
    streets: map.hasLayer(streets.tiles),
    drive: driveRoute.parts.map(({ take, xs }) => [take, xs.length]),
    driveTake: driveRoute.take,
});
// A view that had no size, or another one, could show neither the car nor the home country.
new ResizeObserver(() => {
    const wasAtHome = isAtHome;
    map.invalidateSize({ pan: false });
    isAtHome = wasAtHome;
    if (isAtHome && map.getSize().x && map.getSize().y)
        goHome();
    schedule();
}).observe(map.getContainer());
schedule();
