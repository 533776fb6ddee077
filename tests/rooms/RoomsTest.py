#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads the include lines of src/ and tools/ and fails when a room includes a room on the same floor or above, or one that does not exist.

Usage: RoomsTest.py SOURCE_FOLDER
"""
import pathlib
import re
import sys

# Floors from the ground up. Rooms of one floor do not know each other; "shell" and what stands below may be used by all screens.
FLOORS = [
    ["platform/basic"],
    ["platform/dao", "platform/controls", "platform/excel", "platform/chart"],
    ["common"],
    ["common/grid", "store"],
    ["shell"],
    ["reports"],
    ["pestmon", "analysis", "graphs"],
    ["menu"],
]
# Rooms that a widget must not reach, since the tools link them.
WITHOUT_WIDGETS = {"platform/basic", "platform/dao", "platform/excel", "common", "store"}
WIDGET_HEADERS = re.compile(r"#include <Q(Widget|Application|Dialog|MessageBox|Icon|Painter|Pixmap|MainWindow|GuiApplication)>")
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


def main():
    source = pathlib.Path(sys.argv[1])
    files = sorted(path for ending in ("h", "cpp") for path in source.rglob(f"*.{ending}"))
    if not files:
        sys.exit(f"no sources below {source}")
    # The rule itself is tried first: a test that cannot fail proves nothing.
    assert faults_of("store/A.cpp", '#include "shell/B.h"\n')
    assert faults_of("common/A.h", '#include "common/grid/B.h"\n')
    assert faults_of("store/A.cpp", "#include <QWidget>\n")
    assert not faults_of("pestmon/A.cpp", '#include "shell/B.h"\n')
    faults = [fault for path in files for fault in faults_of(path.relative_to(source).as_posix(), path.read_text(encoding="utf-8"))]
    print("\n".join(faults) if faults else f"{len(files)} files keep to their floors")
    sys.exit(1 if faults else 0)


main()
