#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Fills new databases with generated instructions, writes them out as Jet files and compares every value with what mdb-export reads there.
By hand, since two million rows take a minute:

    tests/tools/LargeExport.py build/release/farmdata FOLDER [INSTRUCTIONS]

An instruction has one block, five pests and twenty points: a hundred rows of tblPMData. FOLDER is created.
"""
import csv
import datetime
import pathlib
import sqlite3
import subprocess
import sys

NUMBERS = "with recursive n(i) as (select 1 union all select i + 1 from n where i < ?) "
FILLS = [
    (1, "insert into tblPMTrans (PMTransID, PMMethodID, PMTransDate, PMTransDateCom, PMTransWeek, PMNotes, PMPerson, PMTransCom, PMRepeat) "
        "select i, 1, 43000 + i / 7, case when i % 4 then 43002 + i / 7 end, 1, 'Môreson 東 ' || i, 'Anna', case when i % 4 then -1 else 0 end, -1 "
        "from n"),
    (1, "insert into tblPMBlockTrans (PMTransID, BlockID, NoofMpoints) select i, 1 + i % 500, 20 from n"),
    (5, "insert into tblPMTarTrans (PMTransID, CTargetID) select 1 + (i - 1) / 5, 1 + i % 5 from n"),
    (100, "insert into tblPMData (PMTransID, BlockID, CTargetID, PMBPunt, PMCount, PMCountUnder, PMCountUpper, PMYes, PMYesUnder, PMYesUpper) "
          "select 1 + (i - 1) / 100, 1 + (1 + (i - 1) / 100) % 500, 1 + i % 5, 1 + ((i - 1) / 5) % 20, i % 9, -i % 32768, 32767, "
          "case when i % 2 then -1 else 0 end, 0, -1 from n"),
]


def database(folder):
    connection = sqlite3.connect(folder / "PestMon.mdb")
    connection.create_collation("FARM", lambda a, b: (a > b) - (a < b))
    return connection


def displayed(value, declared):
    """The value as mdb-export writes it."""
    if value is None:
        return ""
    if "BOOL" in declared or "BIT" in declared or "YES" in declared:
        return "1" if value else "0"
    if "DATE" in declared:
        return (datetime.date(1899, 12, 30) + datetime.timedelta(days=int(value))).strftime("%Y-%m-%d")
    return str(value)


def compare(source, target, table):
    columns = source.execute(f"pragma table_info({table})").fetchall()
    names = [column[1] for column in columns]
    export = subprocess.Popen(["mdb-export", "-T", "%Y-%m-%d", str(target / "PestMon.mdb"), table], stdout=subprocess.PIPE, text=True)
    reader = csv.reader(export.stdout)
    header = next(reader)
    positions = [header.index(name) for name in names]
    rows = sorted(tuple(row[position] for position in positions) for row in reader)
    wanted = sorted(
        tuple(displayed(value, column[2].upper()) for value, column in zip(row, columns))
        for row in source.execute(f"select {', '.join(names)} from {table}")
    )
    print(f"{table}: {len(rows)} rows, {'equal' if rows == wanted else 'DIFFERENT'}")
    return rows == wanted


def main():
    farmdata, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    instructions = int(sys.argv[3]) if len(sys.argv) > 3 else 20000
    folder.mkdir()
    source, target = folder / "Databases", folder / "Jet"
    subprocess.run([farmdata, "create", source], check=True)
    connection = database(source)
    for factor, fill in FILLS:
        connection.execute(fill.replace("select ", NUMBERS + "select ", 1), (factor * instructions,))
    connection.commit()
    subprocess.run([farmdata, "export", "--jet", source, target], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    results = [compare(connection, target, fill.split()[2]) for _, fill in FILLS]
    sys.exit(0 if all(results) else 1)


main()
