/** The car: an arrow along its course, a pin while none is known, grey when the receiver has lost its place. */
class Marker {
    constructor(map, pictures, title) {
        this.map = map;
        this.icon = L.divIcon({
            className: "vehicle",
            iconSize: [0, 0],
            html: `<div class="vehicle-pin">${pictures.pin}</div><div class="vehicle-course">${pictures.course}</div>`,
        });
        this.marker = L.marker([0, 0], { icon: this.icon, interactive: false, keyboard: false, alt: title });
    }

    show({ lng, lat }, course, isLost) {
        this.marker.setLatLng([lat, lng]);
        if (!this.map.hasLayer(this.marker))
            this.marker.addTo(this.map);
        const element = this.marker.getElement();
        element.classList.toggle("has-course", course !== null);
        element.classList.toggle("is-lost", isLost);
        if (course !== null)
            element.querySelector(".vehicle-course").style.transform = `rotate(${course.toFixed(1)}deg)`;
    }

    hide() {
        this.marker.remove();
    }
}
