#!/usr/bin/env python3
"""Draws the layers and the includes between them that the sources really have: draw_layers.py [--check] [ROOT]

Writes docs/layers.svg; with --check only tells whether that is up to date, and fails where it is not.
"""

import argparse
import pathlib
import sys

import include_rules as rules
from source_tree import SourceTree

PICTURE = "docs/layers.svg"

# From top to bottom: what a layer is, and what it holds.
BOXES = {
    rules.EXAMPLES: ("Examples", "what a caller's programs look like"),
    rules.PROGRAMS: ("Programs", "helpers that ship with the library"),
    rules.EXPORTED: ("Exported headers", "what a caller sees of the library"),
    rules.LIBRARY: ("Library", "no call to the host, no third-party header"),
    rules.TYPES: ("Platform types", "exported: texts, lists, buffers, files, logging"),
    rules.PLATFORM: ("Platform libraries", "portable code over the contracts below"),
    rules.OS_CONTRACTS: ("Contracts for the host", "what the operating system does, in standard types"),
    rules.OS_LINUX: ("Linux", "what POSIX does not offer"),
    rules.OS_POSIX: ("POSIX", "system calls, through one replaceable table"),
    rules.OS_WINDOWS: ("Windows", "wide functions, behind one private wrapper"),
    rules.ADAPTERS: ("Adapters", "contracts for third-party libraries, one source each"),
}

WIDTH, LEFT, RIGHT, TOP, HEIGHT, STEP = 800, 130, 650, 56, 46, 64

STYLE = """
    text { font-family: system-ui, "Segoe UI", "Noto Sans", "DejaVu Sans", sans-serif; fill: #1f2429; }
    .page { fill: #ffffff; }
    .box { fill: #f5f7f9; stroke: #d8dee4; }
    .name { font-size: 15px; font-weight: 600; }
    .path { font-size: 12px; font-family: ui-monospace, "DejaVu Sans Mono", Consolas, monospace; fill: #0b6e6e; }
    .note { font-size: 12px; fill: #57606a; }
    .use, .make { fill: none; stroke-width: 1.5; marker-end: url(#head); }
    .use { stroke: #0b5fa5; }
    .make { stroke: #8a3a00; stroke-dasharray: 5 3; }
    @media (prefers-color-scheme: dark) {
      text { fill: #dde3e9; }
      .page { fill: #15191d; }
      .box { fill: #1b2025; stroke: #363e46; }
      .path { fill: #5cc4bd; }
      .note { fill: #9aa5b0; }
      .use { stroke: #79b8f0; }
      .make { stroke: #f0a868; }
    }"""


def include_edges(tree):
    """The pairs of layers of which a file of the first includes one of the second."""
    edges = set()
    for file in filter(lambda file: file.is_cpp(), tree.files):
        source = rules.layer_of(file.path)
        for match in filter(None, map(rules.INCLUDE.match, file.lines)):
            target = rules.resolve(tree, file, match.group(2)) if match.group(1) == '"' else None
            if source and target and target not in rules.ALWAYS_ALLOWED | {rules.WINDOWS_WRAPPER}:
                edges.add((source, rules.layer_of(target)))
    return sorted((source, target) for source, target in edges if target and source != target)


def box(index, layer):
    name, note = BOXES[layer]
    y = TOP + index * STEP
    return f"""  <g>
    <rect class="box" x="{LEFT}" y="{y}" width="{RIGHT - LEFT}" height="{HEIGHT}" rx="6"/>
    <text class="name" x="{LEFT + 14}" y="{y + 20}">{name}</text>
    <text class="path" x="{RIGHT - 14}" y="{y + 20}" text-anchor="end">{layer}</text>
    <text class="note" x="{LEFT + 14}" y="{y + 37}">{note}</text>
  </g>
"""


def arrow(order, source, target):
    """An arc: on the right from a user down to what it uses, on the left up to what a layer implements."""
    start, end = order.index(source), order.index(target)
    is_use = start < end
    x, direction = (RIGHT, 1) if is_use else (LEFT, -1)
    reach = direction * (26 + 24 * abs(end - start))
    from_y = TOP + start * STEP + HEIGHT / 2 + (8 if is_use else -8)
    to_y = TOP + end * STEP + HEIGHT / 2 - (8 if is_use else -8)
    return (f'  <path class="{"use" if is_use else "make"}" d="M {x} {from_y:g} C {x + reach} {from_y:g} '
            f'{x + reach} {to_y:g} {x + direction * 4} {to_y:g}"/>\n')


def picture_of(tree):
    order = list(BOXES)
    height = TOP + len(order) * STEP
    boxes = "".join(box(index, layer) for index, layer in enumerate(order))
    arrows = "".join(arrow(order, source, target) for source, target in include_edges(tree))
    return f"""<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" viewBox="0 0 {WIDTH} {height}">
  <title>The layers, and what includes what</title>
  <!-- Drawn by tests/architecture/draw_layers.py; do not edit. -->
  <style>{STYLE}
  </style>
  <defs>
    <marker id="head" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="7" markerHeight="7" orient="auto">
      <path d="M 0 0 L 8 4 L 0 8 z" fill="#7f8a94"/>
    </marker>
  </defs>
  <rect class="page" width="{WIDTH}" height="{height}"/>
  <text class="note" x="{RIGHT}" y="34">uses, downwards</text>
  <text class="note" x="{LEFT}" y="34" text-anchor="end">implements</text>
{boxes}{arrows}</svg>
"""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--check", action="store_true")
    parser.add_argument("root", nargs="?", default=pathlib.Path(__file__).resolve().parents[2], type=pathlib.Path)
    given = parser.parse_args()
    picture = picture_of(SourceTree(given.root))
    path = given.root / PICTURE
    if not given.check:
        path.write_text(picture, encoding="utf-8")
        return 0
    if path.is_file() and path.read_text(encoding="utf-8") == picture:
        return 0
    print(f"{PICTURE} does not show the includes of the sources: run tests/architecture/draw_layers.py")
    return 1


if __name__ == "__main__":
    sys.exit(main())
