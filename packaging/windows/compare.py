#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares what a round has made on Linux with what it has made on Windows: databases row for row, workbooks part for part.

Usage: compare.py FARMDATA LINUX_FOLDER WINDOWS_FOLDER
"""
import collections
import pathlib
import re
import subprocess
import sys
import tempfile
import zipfile

import olefile

# The round takes seconds, so its names and its saves have other times of day. Dates are compared.
TIME_IN_NAME = re.compile(r"[ _]+\d\d[-_]\d\d[-_]\d\d(?=\.)")
TIME_IN_PART = re.compile(rb"T\d\d:\d\d:\d\dZ|\b\d\d:\d\d:\d\d\b")


def exported(farmdata, databases):
    """Every table as a list of lines."""
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([farmdata, "export", databases, folder], check=True, capture_output=True)
        return {path.name: TIME_IN_PART.sub(b"", path.read_bytes()).splitlines() for path in pathlib.Path(folder).rglob("*.csv")}


def streams(path):
    """The streams of a compound file, by path."""
    with olefile.OleFileIO(path.read_bytes()) as document:
        return {"/".join(name): document.openstream(name).read() for name in document.listdir()}


def parts(path):
    """The content of a workbook, part by part."""
    if path.suffix == ".xls":
        return streams(path)
    with zipfile.ZipFile(path) as archive:
        return {name: TIME_IN_PART.sub(b"", archive.read(name)) for name in archive.namelist()}


def workbooks(folder):
    """All workbooks; those whose names differ in the time of day alone are numbered in the order of that time."""
    found = {}
    count = collections.Counter()
    for path in sorted(folder.glob("Reports/**/*.xls*")) + sorted(folder.glob("Templates/*.xls")):
        name = TIME_IN_NAME.sub("", str(path.relative_to(folder)))
        count[name] += 1
        found[f"{name} {count[name]}"] = path
    return found


def differences(linux, windows, what):
    """Sentences about the keys that are in one only, or whose values differ."""
    for key in sorted(linux.keys() | windows.keys()):
        if key not in linux or key not in windows:
            yield f"{what}{key}: only on {'Windows' if key not in linux else 'Linux'}"
        elif linux[key] != windows[key]:
            yield f"{what}{key}: differs"


def main(farmdata, linux, windows):
    tables = [exported(farmdata, folder / "Databases") for folder in (linux, windows)]
    faults = list(differences(*tables, "table "))
    books = [workbooks(folder) for folder in (linux, windows)]
    faults += differences(*[dict.fromkeys(names) for names in books], "workbook ")
    count = 0
    for name in books[0].keys() & books[1].keys():
        content = [parts(found[name]) for found in books]
        count += len(content[0])
        faults += differences(*content, f"workbook {name}, part ")
    rows = sum(len(lines) for lines in tables[0].values())
    print(f"{len(tables[0])} tables with {rows} rows, {len(books[0])} workbooks with {count} parts compared, {len(faults)} differences")
    if not (tables[0] and books[0]):
        faults.append("nothing was there to compare")
    print("\n".join(faults), end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])))
