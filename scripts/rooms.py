#!/usr/bin/env python3
"""The rooms of the house: which folder includes which, drawn and checked.

    scripts/rooms.py --check    includes run one way, no room is too large, no name repeats its folder, the picture is current
    scripts/rooms.py --draw     draws docs/pictures/rooms.svg anew
    scripts/rooms.py --list     every room with the rooms that it includes

A room is a folder with source files; the public headers of a stand-in are a room of their own ("tolmar/include").
"""
import argparse
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PICTURE = ROOT / "docs/pictures/rooms.svg"
LAYERS = ["apps", "readers", "src", "standins"]
MOST_FILES = 28  # "about twenty-five"

# Where an include may be written from, in the order in which it is looked up.
BASES = ["standins/tolmar/include", "standins/plant/include", "standins/forms/include", "standins/nwcreate/include",
         "standins/gltf/include", "standins/obmsdk/include", "standins/generator/include", "standins/sources/include",
         "src", "standins", "apps", ""]

# What a part of the house may include besides itself: the longest prefix of a room counts. A part that is not named here
# may include nothing but itself.
ALLOWED = {
    "apps/tessaro": ["standins/*/include", "src/platform", "readers", "standins/generator", "standins/sources"],
    "apps/qt": ["standins/*/include", "src/platform"],
    "readers": [],
    "src": ["standins/*/include"],
    "standins/tolmar": ["src/platform"],
    "standins/forms": ["standins/tolmar/include", "src/platform"],
    "standins/gltf": [],
    "standins/nwcreate": ["standins/tolmar/include", "standins/gltf"],
    "standins/obmsdk": ["standins/tolmar/include", "standins/gltf"],
    "standins/plant": ["standins/tolmar", "standins/forms/include", "src/platform"],
    "standins/sources": ["standins/tolmar/include", "standins/tolmar/mesh", "standins/plant", "src/platform"],
    "standins/generator": ["standins/tolmar/include", "standins/plant", "standins/sources", "src/platform"],
}


def source_files():
    for layer in LAYERS:
        for path in sorted((ROOT / layer).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                yield path.relative_to(ROOT)


def room_of(path):
    parts = path.parts
    return "/".join(parts[:3]) if "include" in parts else str(path.parent)


def resolve(path, include, files):
    for base in [str(path.parent), *BASES]:
        candidate = pathlib.Path(base) / include
        if candidate in files:
            return candidate
    return None


def read_house():
    """Includes of files and of rooms, as sets by name, and the files of each room."""
    files = set(source_files())
    includes = {}
    for path in sorted(files):
        text = (ROOT / path).read_text(encoding="utf-8")
        found = (resolve(path, name, files) for name in re.findall(r'^#include "([^"]+)"', text, re.M))
        includes[path] = sorted({target for target in found if target and target != path})
    rooms = {}
    for path in sorted(files):
        rooms.setdefault(room_of(path), []).append(path)
    uses = {room: set() for room in rooms}
    for path, targets in includes.items():
        uses[room_of(path)] |= {room_of(target) for target in targets} - {room_of(path)}
    return includes, rooms, uses


def circles(graph):
    """Groups of nodes that reach each other (Tarjan, without recursion)."""
    number, low, stack, on_stack, found = {}, {}, [], set(), []
    for root in sorted(graph):
        work = [(root, iter(sorted(graph[root])))] if root not in number else []
        while work:
            node, targets = work[-1]
            if node not in number:
                number[node] = low[node] = len(number)
                stack.append(node)
                on_stack.add(node)
            for target in targets:
                if target not in number:
                    work.append((target, iter(sorted(graph[target]))))
                    break
                if target in on_stack:
                    low[node] = min(low[node], number[target])
            else:
                work.pop()
                if work:
                    parent = work[-1][0]
                    low[parent] = min(low[parent], low[node])
                if low[node] == number[node]:
                    group = []
                    while not group or group[-1] != node:
                        group.append(stack.pop())
                        on_stack.discard(group[-1])
                    if len(group) > 1:
                        found.append(sorted(map(str, group)))
    return found


def matches(room, pattern):
    if "*" in pattern:
        return pathlib.PurePath(room).match(pattern)
    return room == pattern or room.startswith(pattern + "/")


def part_of(room):
    return max((part for part in ALLOWED if matches(room, part)), key=len, default=None)


def forbidden(uses):
    for room, targets in sorted(uses.items()):
        part = part_of(room)
        for target in sorted(targets):
            if part is None or not (matches(target, part) or any(matches(target, p) for p in ALLOWED[part])):
                yield f"{room} includes {target}, which it may not (scripts/rooms.py, ALLOWED)"


def badly_named(rooms):
    for room, paths in sorted(rooms.items()):
        folder = pathlib.PurePath(room).name
        if folder != "include" and len(paths) > MOST_FILES:
            yield f"{room} has {len(paths)} files; split it by topic"
        for path in paths:
            if path.parent.name != "include" and path.stem.startswith(path.parent.name + "_"):
                yield f"{path} repeats its folder's name"


def floors(uses):
    """The height of each room: one above the highest room that it includes."""
    height = {}

    def climb(room, above):
        if room not in height:
            height[room] = 1 + max((climb(t, above | {room}) for t in uses[room] if t not in above), default=-1)
        return height[room]

    for room in sorted(uses):
        climb(room, frozenset())
    return height


COLOURS = {"apps": "#f3c17a", "readers": "#b9d98b", "src": "#9ec6ee", "standins": "#d9d4ca"}


def draw(rooms, uses):
    height = floors(uses)
    rows = {}
    for room in sorted(rooms, key=lambda r: (LAYERS.index(r.split("/")[0]), r)):
        rows.setdefault(height[room], []).append(room)
    per_row, width, step, box = 7, 190, 92, (172, 40)
    place, y = {}, 60
    for level in sorted(rows, reverse=True):
        for start in range(0, len(rows[level]), per_row):
            for column, room in enumerate(rows[level][start:start + per_row]):
                place[room] = (20 + column * width, y)
            y += step
        y += 10
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {per_row * width + 30} {y}" font-family="sans-serif">',
           "<title>Rooms of the house and what they include; arrows point down</title>",
           '<rect width="100%" height="100%" fill="white"/>']
    for index, (layer, colour) in enumerate(COLOURS.items()):
        out.append(f'<rect x="{20 + index * 130}" y="16" width="14" height="14" fill="{colour}"/>'
                   f'<text x="{40 + index * 130}" y="28" font-size="13">{layer}/</text>')
    for room in sorted(rooms):
        x1, y1 = place[room]
        for target in sorted(uses[room]):
            x2, y2 = place[target]
            out.append(f'<path d="M{x1 + box[0] // 2} {y1 + box[1]} C{x1 + box[0] // 2} {y1 + 70} {x2 + box[0] // 2} '
                       f'{y2 - 30} {x2 + box[0] // 2} {y2}" fill="none" stroke="#777" stroke-width="0.6" opacity="0.45"/>')
    for room, paths in sorted(rooms.items()):
        x, top = place[room]
        layer, _, name = room.partition("/")
        out.append(f'<rect x="{x}" y="{top}" width="{box[0]}" height="{box[1]}" rx="5" fill="{COLOURS[layer]}" stroke="#555"/>'
                   f'<text x="{x + box[0] // 2}" y="{top + 17}" font-size="11" text-anchor="middle">'
                   f'{name.replace("hextinterface/", "hext…/").replace("ornatohextprocess", "ornato…") or layer}</text>'
                   f'<text x="{x + box[0] // 2}" y="{top + 32}" font-size="10" fill="#444" text-anchor="middle">'
                   f"{len(paths)} files</text>")
    return "\n".join([*out, "</svg>"]) + "\n"


def faults(includes, rooms, uses):
    for circle in circles(uses):
        yield "rooms in a circle: " + ", ".join(circle)
    for circle in circles(includes):
        yield "files in a circle: " + ", ".join(circle)
    yield from forbidden(uses)
    yield from badly_named(rooms)
    if not PICTURE.exists() or PICTURE.read_text(encoding="utf-8") != draw(rooms, uses):
        yield "docs/pictures/rooms.svg is not what the folders are; run scripts/rooms.py --draw"


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    what = arguments.add_mutually_exclusive_group(required=True)
    for option in ("--check", "--draw", "--list"):
        what.add_argument(option, action="store_true")
    options = arguments.parse_args()
    includes, rooms, uses = read_house()
    if options.draw:
        PICTURE.write_text(draw(rooms, uses), encoding="utf-8")
    elif options.list:
        for room in sorted(rooms):
            print(f"{room} ({len(rooms[room])}): {', '.join(sorted(uses[room])) or '-'}")
    else:
        found = list(faults(includes, rooms, uses))
        print("\n".join(found) or f"{len(rooms)} rooms, {len(includes)} files: in order")
        return 1 if found else 0
    return 0


if __name__ == "__main__":
    sys.exit(main())
