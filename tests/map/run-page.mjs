// Runs a script inside the built map page in a headless browser and reports what it checked.
// usage: node run-page.mjs PAGE-FOLDER SCRIPT     Exit code 77: there is no browser to run it in.

import { cpSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { Browser, installedBrowser } from "./browser.mjs";

const [pageFolder, script] = process.argv.slice(2);
const name = installedBrowser();
if (!name) {
    console.log("map page: no chromium here, nothing was tested");
    process.exit(77);
}

async function verdict(page) {
    const browser = new Browser(name, "600,500");
    try {
        await browser.open(`file://${page}`);
        return await browser.evaluate(readFileSync(script, "utf8"));
    } catch (error) {
        return `${error.stack}\n1 failed`;
    } finally {
        await browser.close();
    }
}

const work = mkdtempSync(join(tmpdir(), "map-page-"));
let failed = false;
try {
    cpSync(pageFolder, work, { recursive: true });
    for (const file of ["map2.htm", "map2_eng.htm"]) {
        // No test asks a server: tiles come from beside the page, where there are none.
        const page = join(work, file);
        writeFileSync(page, readFileSync(page, "utf8").replace(/data-tiles="[^"]*"/, 'data-tiles="none/{z}-{x}-{y}.png"'));
        for (const word of ["", "#place"]) {
            const text = await verdict(page + word);
            console.log(`${file}${word}\n${text}`);
            failed ||= !text.endsWith("\n0 failed");
        }
    }
} finally {
    rmSync(work, { recursive: true, force: true });
}
process.exitCode = failed ? 1 : 0;
