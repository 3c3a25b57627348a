// Measures the built map page in a headless browser.
// usage: node run-bench.mjs PAGE-FOLDER

import { readFileSync } from "node:fs";
import { dirname, join, resolve } from "node:path";
import { fileURLToPath } from "node:url";
import { Browser, installedBrowser } from "../../tests/map/browser.mjs";

const name = installedBrowser();
if (!name) {
    console.log("map page: no chromium here, nothing was measured");
    process.exit(0);
}
const here = dirname(fileURLToPath(import.meta.url));
const browser = new Browser(name, "334,400");
await browser.open(`file://${join(resolve(process.argv[2]), "map2_eng.htm")}`);
const ready = await browser.evaluate("performance.timing.loadEventEnd - performance.timing.navigationStart");
const { moving, waiting } = JSON.parse(await browser.evaluate(readFileSync(join(here, "calls.js"), "utf8")));
const frame = await browser.evaluate(`(async () => {
    const frames = () => new Promise(done => requestAnimationFrame(() => setTimeout(done)));
    document.querySelectorAll(".bar button")[2].click();
    for (let i = 0; i < 60; ++i)
        await frames();
    const times = [];
    for (let i = 0; i < 30; ++i) {
        let start;
        requestAnimationFrame(() => start = performance.now());
        setLatLag((127.5 + i * 0.0001).toFixed(6), "37.500000");
        await new Promise(done => requestAnimationFrame(() => done(times.push(performance.now() - start))));
    }
    return times.sort((a, b) => a - b)[15];
})()`);
await browser.close();
console.log(`page ready after ${ready} ms; setLatLag ${moving.toFixed(2)} us while moving, ${waiting.toFixed(2)} us while standing; `
    + `a frame with the whole route of 100,000 points ${frame.toFixed(2)} ms`);
