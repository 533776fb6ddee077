#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes the sheet of the records report with xlwt: TABLES tables of LINES lines and POINTS points.

Usage: RecordsByXlwt.py FILE TABLES LINES POINTS. Prints the seconds from the first cell to the saved file and the megabytes held
at most; the start of the interpreter and the loading of xlwt are left out.
"""
import resource
import sys
import time

import xlwt


def style(size, bold, framed):
    style = xlwt.XFStyle()
    style.font.name, style.font.height, style.font.bold = "Calibri", size * 20, bold
    if framed:
        style.borders.left = style.borders.right = style.borders.top = style.borders.bottom = xlwt.Borders.THIN
    return style


def main():
    path, tables, lines, points = sys.argv[1], *map(int, sys.argv[2:])
    start = time.perf_counter()
    book = xlwt.Workbook(encoding="utf-8")
    sheet = book.add_sheet("Sheet1")
    title, small, bold, plain = style(10, True, False), style(8, True, False), style(8, True, True), style(8, False, True)
    widest = [0] * (points + 3)

    def write(row, column, value, style):
        sheet.write(row, column, value, style)
        widest[column] = max(widest[column], len(str(value)))

    write(0, 0, "PEST MONITORING", title)
    sheet.write_merge(1, 1, 0, 2, "Farm :  Farm", small)
    sheet.write_merge(1, 1, 3, 5, "Date :  01/01/2020", small)
    sheet.write_merge(1, 1, 6, 8, "31/12/2022", small)
    row = 3
    sheet.write_merge(row, row, 0, points + 2, "Pest", style(10, True, True))
    row += 1
    for table in range(tables):
        row += 1
        for column, heading in enumerate(["Date", "Block"] + [f"Point {k}" for k in range(1, points + 1)] + ["Total"]):
            write(row, column, heading, bold)
        sums = [0] * (points + 2)
        for line in range(lines):
            row += 1
            write(row, 0, f"{2020 + line // 336}/{1 + line // 28 % 12:02}/{1 + line % 28:02}", plain)
            write(row, 1, f"Block {table}", plain)
            total = 0
            for point in range(1, points + 1):
                value = (line + point) % 9
                write(row, point + 1, value, plain)
                sums[point] += value
                total += value
            write(row, points + 2, total, plain)
            sums[points + 1] += total
        row += 1
        sheet.write(row, 0, "", plain)
        write(row, 1, "Total", bold)
        for point in range(1, points + 2):
            write(row, point + 1, sums[point], bold)
        row += 1
        for column in range(points + 3):
            sheet.write(row, column, "", plain)
    for column, letters in enumerate(widest):
        sheet.col(column).width = (letters + 1) * 256
    book.save(path)
    print(time.perf_counter() - start, resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024)


main()
