const noPicture = "data:image/gif;base64,R0lGODlhAQABAAAAACH5BAEKAAEALAAAAAABAAEAAAICTAEAOw==";
const plainZoom = 17;
const streetZoom = 19;
const failuresAllowed = 4;
const retrySeconds = 60;

/**
 * Street tiles over the built-in map. Nothing is asked of the network before the user turns them on; the choice is
 * remembered. Without a network they go away and are tried again later, and the built-in map stays.
 */
class Streets {
    constructor(map, url, texts) {
        this.map = map;
        this.texts = texts;
        this.isOn = false;
        this.changed = () => {};
        this.credit = `<a href="https://www.openstreetmap.org/copyright">${texts.credit_streets}</a>`;
        this.tiles = L.tileLayer(url, {
            maxZoom: streetZoom, errorTileUrl: noPicture, attribution: this.credit, keepBuffer: 1, updateWhenIdle: true,
        });
        // The picture that stands in for a missing tile "loads" as well.
        this.tiles.on("tileload", ({ tile }) => tile.src === noPicture || this.received());
        this.tiles.on("tileerror", () => this.failed());
        window.addEventListener("online", () => this.start());
    }

    static remembered() {
        try {
            return localStorage.getItem("zavik.streets") === "on";
        } catch {
            return false;
        }
    }

    turn(isOn) {
        this.isOn = isOn;
        try {
            localStorage.setItem("zavik.streets", isOn ? "on" : "off");
        } catch {
            // A page without storage asks again next time.
        }
        clearTimeout(this.retry);
        if (isOn)
            this.start();
        else
            this.tiles.remove();
        this.map.setMaxZoom(isOn ? streetZoom : plainZoom);
        this.tell("");
    }

    start() {
        this.failures = 0;
        if (this.isOn)
            this.tiles.addTo(this.map);
    }

    received() {
        this.failures = 0;
        this.tell("");
    }

    failed() {
        if (++this.failures < failuresAllowed || !this.map.hasLayer(this.tiles))
            return;
        this.tiles.remove();
        this.tell(this.texts.streets_missing);
        clearTimeout(this.retry);
        this.retry = setTimeout(() => this.start(), retrySeconds * 1000);
    }

    tell(status) {
        this.changed(this.isOn, status);
    }
}
