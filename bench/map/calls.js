// What one call costs inside the page: a drive of 100,000 points, then as many calls without movement. In microseconds.
(() => {
    const count = 100000;
    const time = work => {
        const start = performance.now();
        work();
        return (performance.now() - start) * 1000 / count;
    };
    const points = Array.from({ length: count }, (_, i) =>
        [(126.5 + i * 0.00001).toFixed(6), (37.5 + Math.sin(i / 3000) * 0.05).toFixed(6)]);
    zavikNewRecording();
    const moving = time(() => points.forEach(([lng, lat]) => setLatLag(lng, lat)));
    const [lng, lat] = points.at(-1);
    const waiting = time(() => points.forEach(() => setLatLag(lng, lat)));
    return JSON.stringify({ moving, waiting });
})()
