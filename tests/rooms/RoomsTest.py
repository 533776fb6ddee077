#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads the include lines of all sources. Fails when a room includes a room on the same floor or above, when farmdata includes
one with widgets, when an include leads nowhere (not every build compiles bench/ and the fuzzers), and when files include each
other in a circle.

Usage: RoomsTest.py PROJECT_FOLDER
"""
import pathlib
import re
import sys

# Floors from the ground up. Rooms of one floor do not know each other; "shell" and what stands below may be used by all screens.
FLOORS = [
    ["platform/basic"],
    ["platform/jet", "platform/controls", "platform/excel", "platform/chart"],
    ["platform/dao"],
    ["common"],
    ["common/grid", "store"],
    ["shell"],
    ["reports"],
    ["pestmon", "analysis", "graphs"],
    ["menu"],
]
# Rooms that a widget must not reach, since the tools link them.
WITHOUT_WIDGETS = {"platform/basic", "platform/jet", "platform/dao", "platform/excel", "common", "store"}
WIDGET_HEADERS = re.compile(r"#include <Q(Widget|Application|Dialog|MessageBox|Icon|Painter|Pixmap|MainWindow|GuiApplication)>")
FOLDERS = ("src", "tools", "tests", "bench")
INCLUDE = re.compile(r'^\s*#include "([^"]+)"', re.MULTILINE)


def floor_of(room):
    for number, rooms in enumerate(FLOORS):
        if room in rooms:
            return number
    return None


def room_of(path):
    """The longest room name that the path begins with."""
    names = [room for rooms in FLOORS for room in rooms if path.startswith(room + "/")]
    return max(names, key=len, default=None)


def faults_of(name, text):
    room = room_of(name)
    if room is None:
        return [] if name == "main.cpp" else [f"{name}: lies in no known room"]
    faults = []
    for included in INCLUDE.findall(text):
        if "/" not in included:
            if not included.startswith("ui_") and not included.endswith(".moc"):
                faults.append(f'{name}: includes "{included}" without its room')
            continue
        other = room_of(included)
        if other is None:
            faults.append(f'{name}: includes "{included}", which lies in no known room')
        elif other != room and floor_of(other) >= floor_of(room):
            faults.append(f"{name}: {room} must not include {included}")
    if room in WITHOUT_WIDGETS and WIDGET_HEADERS.search(text):
        faults.append(f"{name}: {room} must do without widgets")
    return faults


def faults_of_tool(name, text):
    """farmdata runs where there is no display."""
    rooms = {included: room_of(included) for included in INCLUDE.findall(text)} if name.startswith("tools/farmdata/") else {}
    return [f"{name}: must do without {included}" for included, room in rooms.items() if room and room not in WITHOUT_WIDGETS]


def included_files(path, files):
    """What a file includes, as paths: rooted at src/, beside it, or by a name that only one file has."""
    for included in INCLUDE.findall(files[path]):
        if included.startswith("ui_") or included.endswith(".moc"):
            continue
        beside = (pathlib.PurePosixPath(path).parent / included).as_posix()
        named = [other for other in files if other.endswith("/" + included) and not other.startswith("src/")]
        found = next((place for place in ("src/" + included, beside) if place in files), named[0] if len(named) == 1 else None)
        yield included, found


def circle_from(path, graph, way, done):
    """The first circle met on the way down, as the names along it; a guard in each header would hide it from the compiler."""
    if path in way:
        return [*way[way.index(path) :], path]
    if path in done:
        return None
    circle = next((found for other in graph[path] if (found := circle_from(other, graph, [*way, path], done))), None)
    done.add(path)
    return circle


def faults_of_includes(files):
    edges = {path: list(included_files(path, files)) for path in files}
    faults = [f'{path}: includes "{told}", which does not exist' for path in files for told, found in edges[path] if not found]
    graph = {path: [found for _, found in edges[path] if found] for path in files}
    done = set()
    circles = [circle for path in files if (circle := circle_from(path, graph, [], done))]
    return faults + ["a circle: " + " > ".join(circle) for circle in circles]


def main():
    project = pathlib.Path(sys.argv[1])
    paths = [path for folder in FOLDERS for ending in ("h", "cpp") for path in sorted((project / folder).rglob(f"*.{ending}"))]
    files = {path.relative_to(project).as_posix(): path.read_text(encoding="utf-8") for path in paths}
    rooms = {name.removeprefix("src/"): text for name, text in files.items() if name.startswith("src/")}
    if not rooms:
        sys.exit(f"no sources below {project}")
    # The rules themselves are tried first: a test that cannot fail proves nothing.
    assert faults_of("store/A.cpp", '#include "shell/B.h"\n')
    assert faults_of("common/A.h", '#include "common/grid/B.h"\n')
    assert faults_of("store/A.cpp", "#include <QWidget>\n")
    assert not faults_of("pestmon/A.cpp", '#include "shell/B.h"\n')
    assert faults_of_tool("tools/farmdata/A.cpp", '#include "shell/B.h"\n')
    assert faults_of_includes({"bench/A.cpp": '#include "B.h"\n'})
    assert faults_of_includes({"src/store/A.h": '#include "store/B.h"\n', "src/store/B.h": '#include "store/A.h"\n'})
    assert not faults_of_includes({"tests/a/A.cpp": '#include "B.h"\n', "tests/b/B.h": ""})
    faults = [fault for name, text in rooms.items() for fault in faults_of(name, text)]
    faults += [fault for name, text in files.items() for fault in faults_of_tool(name, text)]
    faults += faults_of_includes(files)
    print("\n".join(faults) if faults else f"{len(files)} files keep to their floors")
    sys.exit(1 if faults else 0)


main()
