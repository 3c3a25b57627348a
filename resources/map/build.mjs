// Builds the map page from this folder, the string tables and the packages of package-lock.json.
// usage: node build.mjs PACKAGES OUTPUT     (PACKAGES is the folder that holds node_modules)
//
// OUTPUT gets map2.htm (Korean), map2_eng.htm (English), map.css, map.js and detail.js. The pages refer to the
// others by their bare names, so that they work beside each other anywhere: as resources and as files.

import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { dirname, join } from "node:path";
import { fileURLToPath } from "node:url";
import { country, degrees, shapes } from "./shapes.mjs";

const here = dirname(fileURLToPath(import.meta.url));
const [packages, output] = process.argv.slice(2);
if (!packages || !output)
    throw new Error("usage: node build.mjs PACKAGES OUTPUT");
const text = (...path) => readFileSync(join(...path), "utf8");
const fromPackage = (...path) => text(packages, "node_modules", ...path);

const pages = [
    { file: "map2.htm", language: "ko" },
    { file: "map2_eng.htm", language: "en" },
];

// Order matters: a later piece uses the earlier ones.
const pieces = ["topology", "canvas-layer", "base-map", "places", "labels", "route", "route-layer", "drive-route", "marker",
    "controls", "nearby", "streets", "view", "main"];

function rows(file) {
    return text(here, file).split("\n").filter(line => line && !line.startsWith("#")).map(line => line.split("\t"));
}

/** The texts of the page: the entries "map.*" of the language's string table, without that prefix. */
function texts(language) {
    const table = JSON.parse(text(here, "..", "texts", `InfoPlist.${language}.json`));
    const own = Object.entries(table).filter(([key]) => key.startsWith("map."));
    return Object.fromEntries(own.map(([key, value]) => [key.slice("map.".length), value]));
}

function picture(name) {
    return text(here, "..", "images", `${name}.svg`).replace(/\s*\n\s*/g, "").replace(/ ?xmlns="[^"]*"/, "").replaceAll("#C8402C", "currentColor");
}

function countries(atlas) {
    const lines = degrees(atlas);
    const names = new Map(rows("countries.tsv").map(([id, en, ko]) => [id, { en, ko }]));
    return atlas.objects.countries.geometries
        .filter(geometry => names.has(geometry.id ?? geometry.properties.name))
        .map(geometry => ({ ...names.get(geometry.id ?? geometry.properties.name), ...country(lines, geometry) }));
}

const cities = rows("places.tsv").map(([en, ko, lat, lng, rank, capital]) =>
    ({ en, ko, lat: +lat, lng: +lng, rank: +rank, capital: capital === "c" }));

const coarse = JSON.parse(fromPackage("world-atlas", "countries-50m.json"));
const fine = JSON.parse(fromPackage("world-atlas", "countries-10m.json"));
// A text in single quotes; JSON.parse of a text is quicker than the same object as script.
const quoted = value => `'${JSON.stringify(value).replaceAll("\\", "\\\\").replaceAll("'", "\\'")}'`;
const data = {
    coarse: shapes(coarse),
    countries: countries(coarse),
    cities,
    pictures: { pin: picture("map_marker"), course: picture("map_marker_course") },
};

const notice = (...path) => `/*!\n${fromPackage(...path).replaceAll("*/", "* /").trim()}\n*/\n`;
const leaflet = fromPackage("leaflet", "dist", "leaflet.js").replace(/\n\/\/# sourceMappingURL.*/, "");

mkdirSync(output, { recursive: true });
const write = (name, content) => writeFileSync(join(output, name), content);
write("map.js", `${notice("leaflet", "LICENSE")}${leaflet}\n${notice("world-atlas", "LICENSE")}`
    + `"use strict";\n(() => {\nconst zavikData = JSON.parse(${quoted(data)});\n`
    + pieces.map(piece => text(here, "src", `${piece}.js`)).join("\n") + "\n})();\n");
write("detail.js", `${notice("world-atlas", "LICENSE")}zavikDetail(${quoted(shapes(fine))});\n`);
write("map.css", fromPackage("leaflet", "dist", "leaflet.css").replace(/url\([^)]*\)/g, "none") + text(here, "src", "page.css"));
for (const { file, language } of pages) {
    const words = texts(language);
    write(file, text(here, "src", "page.html").replaceAll("{language}", language)
        .replaceAll("{title}", words.window_title).replaceAll("{no_gps}", words.no_gps)
        .replaceAll("{texts}", JSON.stringify(words).replaceAll("<", "\\u003c")));
}
