#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads the include lines of all sources. Fails when a module includes one of the same layer or of a layer above, when farmdata
includes one with widgets, when an include has no file (not every build compiles bench/ and the fuzzers), and when files include
each other in a circle.

Usage: ModulesTest.py PROJECT_FOLDER
"""
import pathlib
import re
import sys

# Layers from the bottom up. Modules of one layer do not include each other.
LAYERS = [
    ["platform/basic"],
    ["platform/jet", "platform/controls", "platform/excel", "platform/sheets", "platform/chart"],
    ["platform/dao"],
    ["common"],
    ["common/grid", "store"],
    ["screens", "store/lists"],
    ["reports"],
    ["shell", "pestmon", "analysis", "graphs"],
    ["menu", "mainmodule"],
]
# Modules without widgets, since the command-line tools link them.
WITHOUT_WIDGETS = {"platform/basic", "platform/jet", "platform/dao", "platform/excel", "platform/sheets", "common", "store", "store/lists"}
WIDGET_HEADERS = re.compile(r"#include <Q(Widget|Application|Dialog|MessageBox|Icon|Painter|Pixmap|MainWindow|GuiApplication)>")
FOLDERS = ("src", "tools", "tests", "bench")
INCLUDE = re.compile(r'^\s*#include "([^"]+)"', re.MULTILINE)


def layer_of(module):
    for number, modules in enumerate(LAYERS):
        if module in modules:
            return number
    return None


def module_of(path):
    """The longest module name that is a prefix of the path."""
    names = [module for modules in LAYERS for module in modules if path.startswith(module + "/")]
    return max(names, key=len, default=None)


def faults_of(name, text):
    module = module_of(name)
    if module is None:
        return [] if name == "main.cpp" else [f"{name}: is in no known module"]
    faults = []
    for included in INCLUDE.findall(text):
        if "/" not in included:
            if not included.startswith("ui_") and not included.endswith(".moc"):
                faults.append(f'{name}: includes "{included}" without its module')
            continue
        other = module_of(included)
        if other is None:
            faults.append(f'{name}: includes "{included}", which is in no known module')
        elif other != module and layer_of(other) >= layer_of(module):
            faults.append(f"{name}: {module} must not include {included}")
    if module in WITHOUT_WIDGETS and WIDGET_HEADERS.search(text):
        faults.append(f"{name}: {module} must do without widgets")
    return faults


def faults_of_tool(name, text):
    """farmdata runs where there is no display."""
    modules = {included: module_of(included) for included in INCLUDE.findall(text)} if name.startswith("tools/farmdata/") else {}
    return [f"{name}: must do without {included}" for included, module in modules.items() if module and module not in WITHOUT_WIDGETS]


def included_files(path, files):
    """What a file includes, as paths: rooted at src/, relative to the file, or by a name that only one file has."""
    for included in INCLUDE.findall(files[path]):
        if included.startswith("ui_") or included.endswith(".moc"):
            continue
        sibling = (pathlib.PurePosixPath(path).parent / included).as_posix()
        named = [other for other in files if other.endswith("/" + included) and not other.startswith("src/")]
        found = next((candidate for candidate in ("src/" + included, sibling) if candidate in files), named[0] if len(named) == 1 else None)
        yield included, found


def circle_from(path, graph, trail, done):
    """The first circle found from here, as the names along it; a guard in each header would hide it from the compiler."""
    if path in trail:
        return [*trail[trail.index(path) :], path]
    if path in done:
        return None
    circle = next((found for other in graph[path] if (found := circle_from(other, graph, [*trail, path], done))), None)
    done.add(path)
    return circle


def faults_of_includes(files):
    edges = {path: list(included_files(path, files)) for path in files}
    faults = [f'{path}: includes "{included}", which does not exist' for path in files for included, found in edges[path] if not found]
    graph = {path: [found for _, found in edges[path] if found] for path in files}
    done = set()
    circles = [circle for path in files if (circle := circle_from(path, graph, [], done))]
    return faults + ["a circle: " + " > ".join(circle) for circle in circles]


def main():
    project = pathlib.Path(sys.argv[1])
    paths = [path for folder in FOLDERS for ending in ("h", "cpp") for path in sorted((project / folder).rglob(f"*.{ending}"))]
    files = {path.relative_to(project).as_posix(): path.read_text(encoding="utf-8") for path in paths}
    modules = {name.removeprefix("src/"): text for name, text in files.items() if name.startswith("src/")}
    if not modules:
        sys.exit(f"no sources below {project}")
    # The rules themselves are tried first: a test that cannot fail proves nothing.
    assert faults_of("store/A.cpp", '#include "screens/B.h"\n')
    assert faults_of("common/A.h", '#include "common/grid/B.h"\n')
    assert faults_of("store/A.cpp", "#include <QWidget>\n")
    assert not faults_of("pestmon/A.cpp", '#include "screens/B.h"\n')
    assert faults_of_tool("tools/farmdata/A.cpp", '#include "screens/B.h"\n')
    assert faults_of_includes({"bench/A.cpp": '#include "B.h"\n'})
    assert faults_of_includes({"src/store/A.h": '#include "store/B.h"\n', "src/store/B.h": '#include "store/A.h"\n'})
    assert not faults_of_includes({"tests/a/A.cpp": '#include "B.h"\n', "tests/b/B.h": ""})
    faults = [fault for name, text in modules.items() for fault in faults_of(name, text)]
    faults += [fault for name, text in files.items() for fault in faults_of_tool(name, text)]
    faults += faults_of_includes(files)
    print("\n".join(faults) if faults else f"{len(files)} files respect the layers")
    sys.exit(1 if faults else 0)


main()
