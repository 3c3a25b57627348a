// A headless browser with one page, spoken to over a pipe.

import { spawn, spawnSync } from "node:child_process";
import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";

/** The name of an installed browser, or undefined. */
export function installedBrowser() {
    return ["chromium", "chromium-browser", "google-chrome"].find(name =>
        spawnSync(name, ["--version"], { stdio: "ignore" }).status === 0);
}

export class Browser {
    constructor(name, size) {
        this.profile = mkdtempSync(join(tmpdir(), "map-page-"));
        this.process = spawn(name, ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync", "--remote-debugging-pipe",
            `--user-data-dir=${this.profile}`, `--window-size=${size}`],
            { stdio: ["ignore", "ignore", "ignore", "pipe", "pipe"] });
        this.ended = new Promise(done => this.process.once("exit", done));
        this.waiting = new Map();
        this.calls = 0;
        let received = "";
        this.process.stdio[4].setEncoding("utf8").on("data", text => {
            const messages = (received + text).split("\0");
            received = messages.pop();
            messages.forEach(message => this.receive(JSON.parse(message)));
        });
    }

    receive({ id, method, result, error }) {
        const key = id ?? method;
        this.waiting.get(key)?.(error ? { error } : result);
        this.waiting.delete(key);
    }

    send(method, params = {}) {
        const id = ++this.calls;
        this.process.stdio[3].write(JSON.stringify({ id, method, params, sessionId: this.session }) + "\0");
        return new Promise(done => this.waiting.set(id, done));
    }

    event(method) {
        return new Promise(done => this.waiting.set(method, done));
    }

    async open(address) {
        const { targetId } = await this.send("Target.createTarget", { url: "about:blank" });
        this.session = (await this.send("Target.attachToTarget", { targetId, flatten: true })).sessionId;
        await this.send("Page.enable");
        const loaded = this.event("Page.loadEventFired");
        await this.send("Page.navigate", { url: address });
        await loaded;
    }

    /** The value of an expression, awaited when it is a promise. */
    async evaluate(expression) {
        const { result, exceptionDetails } =
            await this.send("Runtime.evaluate", { expression, awaitPromise: true, returnByValue: true });
        if (exceptionDetails)
            throw new Error(exceptionDetails.exception?.description ?? exceptionDetails.text);
        return result.value;
    }

    async close() {
        this.session = undefined;
        this.send("Browser.close");
        await this.ended;
        rmSync(this.profile, { recursive: true, force: true, maxRetries: 5 });
    }
}
