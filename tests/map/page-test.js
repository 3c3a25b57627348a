"use strict";
// Runs inside the page. The page's clock stands still unless a test moves it.

const lines = [];
let failures = 0;
function check(what, isTrue, detail = "") {
    lines.push(`${isTrue ? "ok  " : "FAIL"} ${what}${isTrue ? "" : " " + detail}`);
    failures += isTrue ? 0 : 1;
}
const same = (what, actual, expected) =>
    check(what, JSON.stringify(actual) === JSON.stringify(expected), `is ${JSON.stringify(actual)}, not ${JSON.stringify(expected)}`);
window.addEventListener("error", ({ message }) => check("no script error", false, message));

const isKorean = document.documentElement.lang === "ko";
let clock = 1000;
performance.now = () => clock * 1000;
const frames = () => new Promise(done => requestAnimationFrame(() => requestAnimationFrame(done)));
async function until(condition) {
    for (let i = 0; i < 600 && !condition(); ++i)
        await frames();
    return condition();
}
const settled = () => until(() => !document.querySelector(".leaflet-zoom-anim, .leaflet-pan-anim"));
const button = i => document.querySelectorAll(".bar button")[i];
const state = () => zavikMapState();
const metre = 1 / 111195;

const home = [126.978, 37.5665];
/** One call, `metres` north and east of the home, so many seconds after the one before. */
function at(north, east = 0, seconds = 1) {
    clock += seconds;
    setLatLag((home[0] + east * metre / Math.cos(home[1] * Math.PI / 180)).toFixed(6), (home[1] + north * metre).toFixed(6));
}
function fresh(...points) {
    zavikNewRecording();
    for (const point of points)
        at(...point);
}

const tests = {
    async "a page that was loaded without a size opens at home"() {
        const before = state();
        const page = document.body.style;
        for (const size of ["0", ""]) {
            page.display = size && "none";
            await frames();
        }
        same("zoom", state().zoom, before.zoom);
        same("centre", state().center, before.center);
        check("home is near", !isKorean || state().zoom >= 5, String(state().zoom));
        button(0).click();
        await until(() => state().zoom > before.zoom);
        await settled();
        page.display = "none";
        await frames();
        page.display = "";
        await frames();
        same("the user's zoom stays", state().zoom, before.zoom + 1);
    },
    async "a click on the way of the drive tells its place"() {
        if (location.hash)
            return;
        fresh([0, 0]);
        await frames();
        const [lng, lat] = home;
        zavikDriveRoute([[0, lng, lat, lng + 200 * metre, lat], [3, lng, lat + 300 * metre, lng, lat + 400 * metre]]);
        zavikDriveTake(3);
        same("parts", [state().drive, state().driveTake], [[[0, 2], [3, 2]], 3]);
        const size = document.getElementById("map").getBoundingClientRect();
        const clickAt = (x, y) => {
            for (const type of ["mousedown", "mouseup", "click"])
                document.elementFromPoint(x, y).dispatchEvent(new MouseEvent(type, { bubbles: true, clientX: x, clientY: y }));
        };
        const before = document.title;
        clickAt(size.width / 4, size.height / 4);
        same("far from it nothing is said", document.title, before);
        // The car is in the middle of the view, at the first point.
        clickAt(size.width / 2 + 2, size.height / 2 + 2);
        check("the place", /^zavik:\d+:route\/0\/0$/.test(document.title), document.title);
        zavikDriveRoute([]);
        same("it goes", state().drive, []);
        zavikNewRecording();
    },
    async "garbage is no point"() {
        for (const [lng, lat] of [["", ""], ["abc", "37"], ["NaN", "NaN"], ["126,5", "37"], ["1e2", "37"], ["0x10", "1"],
            ["181", "37"], ["126", "90.5"], ["inf", "nan"], [undefined, null]])
            setLatLag(lng, lat);
        same("no car", state().car, null);
        same("no note", state().noGps, false);
    },
    async "the first point is shown close by with a pin"() {
        fresh([0]);
        await frames();
        same("zoom", state().zoom, 15);
        check("centre", Math.abs(state().center.lat - home[1]) < 1e-3 && Math.abs(state().center.lng - home[0]) < 1e-3);
        same("course", state().car.course, null);
        check("pin", !document.querySelector(".vehicle").classList.contains("has-course"));
    },
    async "the arrow follows the movement"() {
        for (const [point, course] of [[[20, 0], 0], [[0, 20], 90], [[-20, 0], 180], [[0, -20], 270]]) {
            fresh([0], point);
            await frames();
            check(`towards ${course}`, Math.abs(state().car.course - course) < 0.5, String(state().car.course));
            check("turned", document.querySelector(".vehicle-course").style.transform.startsWith("rotate("));
        }
        fresh([0], [20], [20.5, 0.5]);
        check("noise turns nothing", state().car.course < 0.5);
    },
    async "a drive is one line, standing still costs no points"() {
        fresh(...Array.from({ length: 50 }, (_, i) => [i * 14]), [49 * 14], [49 * 14], [50 * 14]);
        same("parts", state().parts, [51]);
    },
    async "no line where no car has driven"() {
        const drive = Array.from({ length: 20 }, (_, i) => [i * 14]);
        const cases = [
            ["a jump of 3 km", [[3000 + 266]], [20, 1]],
            ["3 km after standing for a minute", [...Array(60).fill([266]), [3266]], [20, 1]],
            ["10 s back", [[126, 0, 0.3]], [20, 1]],
            ["30 s forward", [[266 + 420, 0, 0.3]], [20, 1]],
            ["a seek after a pause of ten minutes", [[266 + 600, 0, 600]], [20, 1]],
            ["harder acceleration at double speed", [[266 + 40, 0, 1]], [21]],
            ["calls in a bunch", [[280, 0, 0], [294, 0, 0]], [22]],
            ["a fix every five seconds", [[266], [266], [266], [266], [336]], [21]],
        ];
        for (const [what, then, parts] of cases) {
            fresh(...drive, ...then);
            same(what, state().parts, parts);
        }
    },
    async "no fix breaks the line and greys the car"() {
        fresh([0], [14]);
        setLatLag("0.000000", "-0.000000");
        await frames();
        check("grey", document.querySelector(".vehicle.is-lost") !== null);
        check("stays", Math.abs(state().car.lat - home[1] - 14 * metre) < 1e-5);
        at(28);
        await frames();
        same("parts", state().parts, [2, 1]);
        check("back", document.querySelector(".vehicle.is-lost") === null);
    },
    async "the date line is no jump"() {
        zavikNewRecording();
        for (const lng of ["179.999900", "-179.999900", "-179.999700"]) {
            clock += 1;
            setLatLag(lng, "-17.000000");
        }
        same("parts", state().parts, [3]);
        check("eastward", Math.abs(state().car.course - 90) < 0.5);
    },
    async "the note about missing GPS"() {
        fresh([0], [14]);
        ZVKDebug("something else");
        same("another text", state().noGps, false);
        ZVKDebug("GPS Data Count=Zero");
        await frames();
        check("names keep off the note", state().labels.every(({ box: [left, top, right, bottom] }) => {
            const pane = document.querySelector(".leaflet-map-pane").getBoundingClientRect();
            const r = document.getElementById("note").getBoundingClientRect();
            const [x, y] = [r.left - pane.left, r.top - pane.top];
            return right < x || left > x + r.width || bottom < y || top > y + r.height;
        }));
        same("note and nothing else", [state().noGps, state().car, state().parts], [true, null, []]);
        check("no marker", document.querySelector(".vehicle") === null);
        setLatLag("x", "y");
        same("stays for garbage", state().noGps, true);
        at(0);
        same("goes with a point", state().noGps, false);
    },
    async "the map follows unless the user has just moved it"() {
        fresh([0]);
        await frames();
        const far = [1500, 0, 1];
        document.getElementById("map").dispatchEvent(new KeyboardEvent("keydown", { key: "ArrowLeft", bubbles: true }));
        const before = state().center.lat;
        at(...far);
        await frames();
        same("quiet", state().center.lat, before);
        at(1510, 0, 20);
        check("follows again", await until(() => Math.abs(state().center.lat - home[1] - 1510 * metre) < 1e-3));
    },
    async "the button shows the whole route"() {
        zavikNewRecording();
        await frames();
        same("nothing to show", button(2).getAttribute("aria-disabled"), "true");
        fresh(...Array.from({ length: 500 }, (_, i) => [i * 20]));
        await frames();
        button(2).click();
        check("whole route", await until(() => {
            const { zoom, center } = state();
            return zoom > 9 && zoom < 14 && Math.abs(center.lat - home[1] - 5000 * metre) < 0.02;
        }));
    },
    async "names are in the page's language and keep apart"() {
        for (let zoom = state().zoom; zoom > 1; --zoom) {
            await settled();
            button(1).click();
            await until(() => state().zoom === zoom - 1);
            await settled();
            const { labels } = state();
            const apart = labels.every(({ box: [l, t, r, b] }, i) => labels.every(({ box: [l2, t2, r2, b2] }, j) =>
                i === j || r < l2 || l > r2 || b < t2 || t > b2));
            check(`apart at ${state().zoom}`, apart);
            if (state().zoom === 7) {
                check("language", labels.some(({ name }) => name === (isKorean ? "서울" : "Seoul")));
                same("detail", state().hasDetail, true);
            }
        }
        same("zoomed out", [state().zoom, button(1).getAttribute("aria-disabled")], [1, "true"]);
        check("titles", [...document.querySelectorAll("button")].every(b => b.title && b.title === b.getAttribute("aria-label")
            && /[가-힣]/.test(b.title) === isKorean));
    },
    async "streets only when asked, and gone without a network"() {
        const images = () => document.querySelectorAll(".leaflet-tile-pane img").length;
        same("off", [state().streets, images()], [false, 0]);
        button(3).click();
        document.querySelector("[value=streets]").click();
        same("on", [state().streets, images() > 0, localStorage.getItem("zavik.streets")], [true, true, "on"]);
        check("credit", document.querySelector(".leaflet-control-attribution").textContent.includes("OpenStreetMap"));
        check("given up", await until(() => !state().streets && images() === 0));
        check("said so", document.querySelector(".layers p").textContent.length > 0);
        document.querySelector("[value=plain]").click();
        same("off again", [localStorage.getItem("zavik.streets"), document.querySelector(".layers p").textContent], ["off", ""]);
        document.querySelector(".layers").dispatchEvent(new KeyboardEvent("keydown", { key: "Escape" }));
        same("panel closed", [document.querySelector(".layers").hidden, document.activeElement], [true, button(3)]);
    },
    async "streets whose tiles fail one by one are given up"() {
        const create = document.createElement;
        const tiles = [];
        document.createElement = name => {
            const element = create.call(document, name);
            if (name === "img" && tiles.push(element))
                Object.defineProperty(element, "src", { writable: true, value: "" });
            return element;
        };
        document.querySelector("[value=streets]").click();
        await until(() => tiles.length >= 4);
        for (const tile of tiles.slice(0, 4)) {
            check("patience", state().streets);
            tile.dispatchEvent(new Event("error"));
            tile.dispatchEvent(new Event("load")); // of the picture that stands in
        }
        same("given up", state().streets, false);
        document.querySelector("[value=plain]").click();
        document.createElement = create;
    },
    async "a long recording"() {
        fresh(...Array.from({ length: 100000 }, (_, i) => [Math.sin(i / 500) * 9000, i * 0.4]));
        await frames();
        same("parts", state().parts, [100000]);
    },
};

const placeTests = {
    async "one place at a time"() {
        for (const north of [0, 14, 50000]) {
            at(north);
            await frames();
            same("parts", state().parts, [1]);
            check("shown", await until(() => Math.abs(state().center.lat - home[1] - north * metre) < 1e-3));
            document.getElementById("map").dispatchEvent(new KeyboardEvent("keydown", { key: "ArrowLeft", bubbles: true }));
        }
        check("a pin", document.querySelector(".vehicle"));
        zavikNewRecording();
        await frames();
        check("no pin", !document.querySelector(".vehicle"));
    },
};

(async () => {
    for (const [name, test] of Object.entries(location.hash === "#place" ? placeTests : tests)) {
        lines.push(name);
        await test().catch(error => check("runs", false, error.stack));
    }
    return `${lines.join("\n")}\n${failures} failed`;
})();
