/** From which zoom a city of each rank is named. */
const cityZooms = [0, 3, 4, 5, 6, 8, 9];
const lastCountryZoom = 7;

/** The names of the world in one language, the most important first. */
function places({ countries, cities }, language) {
    const names = countries.map(({ lng, lat, room, [language]: name }) =>
        ({ kind: "country", name, x: worldX(lng), y: worldY(lat), room: room / 360 }));
    names.sort((a, b) => b.room - a.room);
    const towns = cities.map(({ lng, lat, rank, capital, [language]: name }) =>
        ({ kind: capital ? "capital" : "city", name, x: worldX(lng), y: worldY(lat), lng, lat, rank }));
    towns.sort((a, b) => a.rank - b.rank);
    return { countries: names, cities: towns };
}

/** Those that may be named at this zoom, in the order in which they get their place. */
function named({ countries, cities }, zoom) {
    const lands = zoom <= lastCountryZoom ? countries : [];
    const towns = cities.filter(({ rank }) => zoom >= cityZooms[rank]);
    return zoom < 6 ? [...lands, ...towns] : [...towns, ...lands];
}
