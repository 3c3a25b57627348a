const nearbyZoom = 11;
const nearbyReach = 300e3; // metres

/** Where the nearest city lies while the view is too close to show one. */
class Nearby {
    constructor(map, cities) {
        this.map = map;
        this.cities = cities;
        const control = L.control({ position: "topright" });
        control.onAdd = () => this.element = L.DomUtil.create("div", "nearby");
        control.addTo(map);
        this.element.innerHTML = `${glyph("M10 3.5v13M10 3.5L5.5 8.5M10 3.5l4.5 5")}<span></span>`;
        map.on("moveend", () => this.update());
    }

    nearest(center) {
        let best = { away: nearbyReach };
        for (const city of this.cities) {
            const away = metres(center, city);
            if (away < best.away)
                best = { city, away };
        }
        return best;
    }

    update() {
        const center = this.map.getCenter().wrap();
        const { city, away } = this.nearest(center);
        this.element.hidden = this.map.getZoom() < nearbyZoom || !city
            || this.map.getBounds().contains([city.lat, city.lng]);
        if (this.element.hidden)
            return;
        const kilometres = away / 1000;
        this.element.querySelector("span").textContent = `${city.name} ${kilometres.toFixed(kilometres < 10 ? 1 : 0)} km`;
        this.element.querySelector("svg").style.transform = `rotate(${bearing(center, city).toFixed(0)}deg)`;
    }
}
