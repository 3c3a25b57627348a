const glyph = path => `<svg viewBox="0 0 20 20" aria-hidden="true"><path d="${path}"/></svg>`;
const glyphs = {
    zoomIn: glyph("M10 4v12M4 10h12"),
    zoomOut: glyph("M4 10h12"),
    route: glyph("M3 7V3h4M13 3h4v4M17 13v4h-4M7 17H3v-4M6.5 12.5l2.5-4 2.5 2.5 2.5-4"),
    layers: glyph("M10 3l7.5 4L10 11 2.5 7zM3 10.5l7 3.8 7-3.8M3 13.8l7 3.8 7-3.8"),
};

/** A column of buttons; `add` returns the button. Disabled ones keep the focus, so that the keyboard stays where it is. */
class ButtonBar {
    constructor(map, position) {
        const control = L.control({ position });
        control.onAdd = () => this.element = L.DomUtil.create("div", "bar");
        control.addTo(map);
        L.DomEvent.disableClickPropagation(this.element);
        L.DomEvent.disableScrollPropagation(this.element);
    }

    add(picture, title, pressed) {
        const button = L.DomUtil.create("button", "", this.element);
        button.type = "button";
        button.innerHTML = picture;
        button.title = title;
        button.setAttribute("aria-label", title);
        button.addEventListener("click", () => {
            if (button.getAttribute("aria-disabled") !== "true")
                pressed(button);
        });
        return button;
    }
}

const enable = (button, isEnabled) => button.setAttribute("aria-disabled", String(!isEnabled));

function addZoomButtons(map, bar, texts) {
    const zoomIn = bar.add(glyphs.zoomIn, texts.zoom_in, () => map.zoomIn());
    const zoomOut = bar.add(glyphs.zoomOut, texts.zoom_out, () => map.zoomOut());
    const update = () => {
        enable(zoomIn, map.getZoom() < map.getMaxZoom());
        enable(zoomOut, map.getZoom() > map.getMinZoom());
    };
    map.on("zoomend zoomlevelschange", update);
    update();
}

/** The choice between the built-in map and street tiles: a button and the panel that it opens. */
class LayerSwitch {
    constructor(map, bar, texts, chosen) {
        this.panel = L.DomUtil.create("fieldset", "layers", map.getContainer());
        this.panel.hidden = true;
        this.panel.innerHTML = `<legend>${texts.layers}</legend>`
            + `<label><input type="radio" name="layer" value="plain"><span>${texts.layer_plain}</span></label>`
            + `<label><input type="radio" name="layer" value="streets"><span>${texts.layer_streets}`
            + `<small>${texts.layer_streets_hint}</small></span></label>`;
        this.status = L.DomUtil.create("p", "", this.panel);
        this.status.setAttribute("role", "status");
        L.DomEvent.disableClickPropagation(this.panel);
        L.DomEvent.disableScrollPropagation(this.panel);
        this.button = bar.add(glyphs.layers, texts.layers, () => this.open(this.panel.hidden));
        this.button.setAttribute("aria-expanded", "false");
        this.panel.addEventListener("change", event => chosen(event.target.value === "streets"));
        this.panel.addEventListener("keydown", event => {
            event.stopPropagation();
            if (event.key === "Escape") {
                this.open(false);
                this.button.focus();
            }
        });
        map.on("click dragstart", () => this.open(false));
    }

    open(isOpen) {
        this.panel.hidden = !isOpen;
        this.button.setAttribute("aria-expanded", String(isOpen));
        if (isOpen)
            this.panel.querySelector("input:checked").focus();
    }

    show(isStreets, status) {
        this.panel.querySelector(`[value=${isStreets ? "streets" : "plain"}]`).checked = true;
        this.status.textContent = status;
    }
}
