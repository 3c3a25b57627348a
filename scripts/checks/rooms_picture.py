"""Draws rooms in layers, arrows downwards, as SVG. The same rooms and arrows always give the same picture."""

from xml.sax.saxutils import escape

BOX_HEIGHT, LAYER_GAP, BOX_GAP, BEND_WIDTH, MARGIN, TOP = 34, 76, 22, 14, 30, 96
# Fill of a box by its uppermost folder.
FILLS = {"common": "#F3EFEA", "platform": "#DCE9F5", "lib": "#E3F1DD", "media": "#FBF0CF", "telemetry": "#FBF0CF",
         "cardtools": "#F8E1D6", "settings": "#F2DDEB", "app": "#E4DFF5", "cli": "#E4DFF5", "tools": "#E7E7E7"}


def reduced(arrows):
    """Without the arrows that follow from others."""
    targets = {}
    for room, target in arrows:
        targets.setdefault(room, set()).add(target)

    def reaches(start, goal):
        waiting, seen = list(targets.get(start, ())), set()
        while waiting:
            room = waiting.pop()
            if room == goal:
                return True
            if room not in seen:
                seen.add(room)
                waiting.extend(targets.get(room, ()))
        return False

    return {(room, target) for room, target in arrows
            if not any(other != target and reaches(other, target) for other in targets[room])}


def layers_of(rooms, arrows):
    """How high each room stands: one above the highest room that it includes."""
    height = {}
    for room in rooms:  # lowest first, so what a room includes is known already
        height[room] = max((height[target] + 1 for start, target in arrows if start == room), default=0)
    return height


def with_bends(arrows, height):
    """Arrows over several layers as chains of points, one a layer: (chains, the layers' entries)."""
    layers = [[] for _ in range(max(height.values()) + 1)]
    for room in height:
        layers[height[room]].append(room)
    chains = []
    for room, target in sorted(arrows):
        bends = [(room, target, layer) for layer in range(height[room] - 1, height[target], -1)]
        for bend in bends:
            layers[bend[2]].append(bend)
        chains.append([room, *bends, target])
    return chains, layers


def width_of(entry):
    return BEND_WIDTH if isinstance(entry, tuple) else 18 + 8.1 * len(entry)


def neighbours_of(chains):
    near = {}
    for chain in chains:
        for upper, lower in zip(chain, chain[1:]):
            near.setdefault(upper, ([], []))[1].append(lower)
            near.setdefault(lower, ([], []))[0].append(upper)
    return near


def crossings(layers, near):
    count = 0
    for index in range(1, len(layers)):
        below = {entry: place for place, entry in enumerate(layers[index - 1])}
        ends = [(place, below[lower]) for place, entry in enumerate(layers[index])
                for lower in near.get(entry, ([], []))[1]]
        count += sum((a[0] - b[0]) * (a[1] - b[1]) < 0 for i, a in enumerate(ends) for b in ends[:i])
    return count


def order(layers, near):
    """Sorts each layer by the middle of its neighbours until fewer arrows cross no more."""
    best, fewest = [list(layer) for layer in layers], crossings(layers, near)
    for sweep in range(24):
        side = sweep % 2
        indices = range(len(layers)) if side else range(len(layers) - 1, -1, -1)
        for index in indices:
            other = index - 1 if side else index + 1
            if not 0 <= other < len(layers):
                continue
            place = {entry: (i + 0.5) / len(layers[other]) for i, entry in enumerate(layers[other])}
            own = {entry: (i + 0.5) / len(layers[index]) for i, entry in enumerate(layers[index])}

            def middle(entry):
                found = [place[one] for one in near.get(entry, ([], []))[1 if side else 0]]
                return sum(found) / len(found) if found else own[entry]

            layers[index].sort(key=middle)
        count = crossings(layers, near)
        if count < fewest:
            best, fewest = [list(layer) for layer in layers], count
    return best


def spread(layer, wished):
    """Centres as near to the wished ones as the widths allow, in the layer's order."""
    offsets, total = [], 0.0
    for i, entry in enumerate(layer):
        if i:
            total += (width_of(layer[i - 1]) + width_of(entry)) / 2 + BOX_GAP
        offsets.append(total)
    blocks = []  # runs of entries that touch: [sum of wishes, count]
    for i, entry in enumerate(layer):
        blocks.append([wished[entry] - offsets[i], 1])
        while len(blocks) > 1 and blocks[-2][0] / blocks[-2][1] > blocks[-1][0] / blocks[-1][1]:
            last = blocks.pop()
            blocks[-1][0] += last[0]
            blocks[-1][1] += last[1]
    shifts = [block[0] / block[1] for block in blocks for _ in range(block[1])]
    return {entry: offsets[i] + shifts[i] for i, entry in enumerate(layer)}


def place(layers, near):
    centre = {}
    for layer in layers:
        centre.update(spread(layer, {entry: 140.0 * i for i, entry in enumerate(layer)}))
    for sweep in range(60):
        for layer in layers if sweep % 2 else reversed(layers):
            wished = {}
            for entry in layer:
                found = [centre[one] for side in near.get(entry, ([], [])) for one in side]
                wished[entry] = sum(found) / len(found) if found else centre[entry]
            centre.update(spread(layer, wished))
    left = min(centre[entry] - width_of(entry) / 2 for layer in layers for entry in layer)
    return {entry: x - left + MARGIN for entry, x in centre.items()}


def arrow(points):
    """A smooth way from the first box's lower edge through the bends to the last box's upper edge."""
    way = f"M{points[0][0]:.0f} {points[0][1]:.0f}"
    for (x0, y0), (x1, y1) in zip(points, points[1:]):
        half = (y1 - y0) / 2
        way += f" C{x0:.0f} {y0 + half:.0f} {x1:.0f} {y1 - half:.0f} {x1:.0f} {y1:.0f}"
    return f'<path d="{way}" marker-end="url(#tip)"/>'


def draw(rooms, arrows):
    arrows = reduced(arrows)
    height = layers_of(rooms, arrows)
    chains, layers = with_bends(arrows, height)
    near = neighbours_of(chains)
    layers = order(layers, near)
    centre = place(layers, near)

    def upper_edge(layer):
        return TOP + (len(layers) - 1 - layer) * (BOX_HEIGHT + LAYER_GAP)

    ways = []
    for chain in chains:
        points = [(centre[chain[0]], upper_edge(height[chain[0]]) + BOX_HEIGHT)]
        for bend in chain[1:-1]:
            y = upper_edge(bend[2])
            points += [(centre[bend], y), (centre[bend], y + BOX_HEIGHT)]
        points.append((centre[chain[-1]], upper_edge(height[chain[-1]]) - 2))
        ways.append(arrow(points))
    boxes = []
    for room in rooms:
        x, y, width = centre[room], upper_edge(height[room]), width_of(room)
        fill = FILLS.get(room.split("/")[0], "#FFFFFF")
        boxes.append(f'<rect x="{x - width / 2:.0f}" y="{y}" width="{width:.0f}" height="{BOX_HEIGHT}" rx="6" fill="{fill}"/>')
        boxes.append(f'<text x="{x:.0f}" y="{y + 22}" text-anchor="middle" stroke="none" fill="#222222">{escape(room)}</text>')
    width = max(centre[entry] + width_of(entry) / 2 for layer in layers for entry in layer) + MARGIN
    bottom = upper_edge(0) + BOX_HEIGHT + MARGIN
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{width:.0f}" height="{bottom}" viewBox="0 0 {width:.0f} {bottom}" role="img" font-family="DejaVu Sans Mono, monospace" font-size="13">
<title>The rooms and what they include</title>
<defs><marker id="tip" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" markerHeight="7" orient="auto"><path d="M0 0 L8 4 L0 8 z" fill="#555555"/></marker></defs>
<rect width="100%" height="100%" fill="#FFFFFF"/>
<g fill="#222222" font-family="DejaVu Sans, sans-serif">
<text x="{MARGIN}" y="36" font-size="20" font-weight="bold">The rooms and what they include</text>
<text x="{MARGIN}" y="60">Arrows point down: a room knows only what lies below it. Arrows that follow from others are left out.</text>
</g>
<g fill="none" stroke="#555555" stroke-width="1.2">
{chr(10).join(ways)}
</g>
<g stroke="#444444">
{chr(10).join(boxes)}
</g>
</svg>
"""
