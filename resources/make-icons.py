#!/usr/bin/env python3
"""Writes the roll-over (_f) and pressed (_p) pictures of every control from its normal one, and the disabled (_d)
picture of those that can be disabled.

The pictures icon_*_n.svg are drawn by hand; run this after changing one of them.
A state changes colours only and puts a plate behind a bare glyph, so all states keep one outline.
"""

import pathlib
import re

IMAGES = pathlib.Path(__file__).parent / "images"

TEXT, ACCENT = "#FBF8F6", "#FFD97D"

# Colours of the normal picture -> colours of the state.
STATES = {
    "_f": {"#857873": "#9C908A", "#5A504C": "#6F6560", "#A0948F": "#B8ADA8",
           "#F4EFEC": "#FFFFFF", "#CFC6C1": "#FFE7B0"},
    "_p": {TEXT: ACCENT, "#857873": "#403834", "#5A504C": "#2F2926", "#A0948F": "#403834",
           "#F4EFEC": "#FFD97D", "#CFC6C1": "#E5B94F"},
    "_d": {TEXT: "#7A6E69"},
}
CAN_BE_DISABLED = {"icon_camera_n.svg", "icon_capture_n.svg", "icon_print_n.svg"}
PLATES = {"_f": 'fill="#FFFFFF" fill-opacity="0.16"', "_p": 'fill="#2F2926" fill-opacity="0.6"'}


def picture_in_state(normal: str, state: str) -> str:
    colours = STATES[state]
    picture = re.sub(r"#[0-9A-F]{6}", lambda match: colours.get(match[0], match[0]), normal)
    if state in PLATES and "<defs>" not in normal:
        size = int(re.search(r'width="(\d+)"', normal)[1])
        plate = f'  <rect width="{size}" height="{size}" rx="{size // 5 + 1}" {PLATES[state]}/>\n'
        picture = re.sub(r"(<svg [^>]*>\n)", lambda match: match[0] + plate, picture, count=1)
    return picture


for source in sorted(IMAGES.glob("icon_*_n.svg")):
    normal = source.read_text()
    for state in STATES:
        if state == "_d" and source.name not in CAN_BE_DISABLED:
            continue
        source.with_name(source.name.replace("_n.svg", f"{state}.svg")).write_text(picture_in_state(normal, state))
