#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Tells what a workbook holds, line by line, in one form for both formats: xlrd reads .xls, openpyxl reads .xlsx.

Usage: ReadWorkbook.py FILE           cells, looks, sizes, page set-up that the reader knows
       ReadWorkbook.py --page FILE     whole page set-up of each sheet of a .xlsx
       ReadWorkbook.py --records FILE  records of a .xls by number and digest, those that a save may not change
"""
import hashlib
import struct
import sys

import openpyxl
import xlrd
from openpyxl.utils import get_column_letter

LINES = {0: None, 1: "thin", 2: "medium", 5: "thick", 7: "hair"}
ACROSS = {0: "general", 1: "left", 2: "center", 3: "right"}
DOWN = {0: "top", 1: "center", 2: "bottom"}


def place(row, column):
    return f"{get_column_letter(column + 1)}{row + 1}"


def plain(number):
    return f"{number:.15g}"


def tell(where, kind, value, font, size, bold, underline, across, down, wrap, turn, edges, shade, number_format):
    lines = "/".join(edge or "-" for edge in edges)
    return (f"{where} {kind} [{value}] {font} {plain(size)}{' bold' if bold else ''}{' underlined' if underline else ''} {across} {down}"
            f"{' wrap' if wrap else ''} {turn} {lines} {shade or '-'} {number_format}")


def turn_of(code):
    return code if code <= 90 else 90 - code


def read_xls(path):
    book = xlrd.open_workbook(path, formatting_info=True)
    kinds = {xlrd.XL_CELL_TEXT: "text", xlrd.XL_CELL_NUMBER: "number", xlrd.XL_CELL_BLANK: "blank"}
    for number, sheet in enumerate(book.sheets()):
        yield f"sheet {sheet.name}{' shown' if sheet.sheet_selected else ''}"
        for row in range(sheet.nrows):
            for column in range(sheet.ncols):
                cell = sheet.cell(row, column)
                if cell.ctype == xlrd.XL_CELL_EMPTY:
                    continue
                look = book.xf_list[cell.xf_index]
                font = book.font_list[look.font_index]
                fill = book.colour_map.get(look.background.pattern_colour_index) if look.background.fill_pattern == 1 else None
                border = look.border
                value = plain(cell.value) if cell.ctype == xlrd.XL_CELL_NUMBER else cell.value
                yield tell(place(row, column), kinds.get(cell.ctype, "other"), value, font.name, font.height / 20,
                           font.weight == 700 and font.bold, font.underline_type, ACROSS.get(look.alignment.hor_align),
                           DOWN.get(look.alignment.vert_align), look.alignment.text_wrapped, turn_of(look.alignment.rotation),
                           [LINES.get(line, "other") for line in (border.left_line_style, border.right_line_style,
                                                                  border.top_line_style, border.bottom_line_style)],
                           "%02X%02X%02X" % fill if fill else None, book.format_map[look.format_key].format_str)
        for top, bottom, left, right in sorted(sheet.merged_cells):
            yield f"merged {place(top, left)}:{place(bottom - 1, right - 1)}"
        for row, info in sorted(sheet.rowinfo_map.items()):
            if info.height_mismatch:
                yield f"height {row + 1} {plain(info.height / 20)}"
        for column, info in sorted(sheet.colinfo_map.items()):
            yield f"width {get_column_letter(column + 1)} {plain(round(info.width / 256, 1))}"
        for name in book.name_obj_list:
            if name.scope == number and name.builtin and name.name == "Print_Titles":
                yield f"titles {name.result.text}"


def read_xlsx(path):
    book = openpyxl.load_workbook(path)
    for sheet in book.worksheets:
        yield f"sheet {sheet.title}{' shown' if book.active is sheet else ''}"
        for row in sheet.iter_rows():
            for cell in row:
                if not (cell.has_style or cell.value is not None):
                    continue
                kind = "blank" if cell.value is None else {"n": "number", "s": "text"}.get(cell.data_type, "other")
                value = "" if cell.value is None else plain(cell.value) if kind == "number" else cell.value
                align, border, font = cell.alignment, cell.border, cell.font
                shade = cell.fill.fgColor.rgb[2:] if cell.fill.fill_type == "solid" else None
                yield tell(cell.coordinate, kind, value, font.name, font.size, font.bold, font.underline, align.horizontal or "general",
                           align.vertical or "bottom", align.wrap_text, turn_of(align.text_rotation or 0),
                           [border.left.style, border.right.style, border.top.style, border.bottom.style], shade, cell.number_format)
        for merged in sorted(sheet.merged_cells.ranges, key=lambda area: (area.min_row, area.min_col)):
            yield f"merged {merged.coord}"
        for row, size in sorted(sheet.row_dimensions.items()):
            if size.height is not None:
                yield f"height {row} {plain(size.height)}"
        for column, size in sorted(sheet.column_dimensions.items()):
            for number in range(size.min, size.max + 1):
                yield f"width {get_column_letter(number)} {plain(round(size.width, 1))}"
        if sheet.print_title_rows or sheet.print_title_cols:
            yield f"titles {sheet.print_title_cols} {sheet.print_title_rows}"
        page = sheet.page_setup
        yield f"page {page.orientation} {page.paperSize} {sheet.page_margins.left:.4f}"
        for part in (sheet.oddHeader, sheet.oddFooter):
            yield f"head [{part.left.text}] [{part.center.text}] [{part.right.text}]"


def read_page(path):
    for sheet in openpyxl.load_workbook(path).worksheets:
        page, margins = sheet.page_setup, sheet.page_margins
        yield f"sheet {sheet.title}"
        yield f"paper {page.paperSize} {page.orientation}"
        yield "margins " + " ".join(f"{margin:.2f}" for margin in (margins.left, margins.right, margins.top, margins.bottom))
        yield "breaks " + " ".join(str(one.id) for one in sheet.row_breaks.brk)
        yield f"fit {page.fitToWidth} {page.fitToHeight}" if sheet.sheet_properties.pageSetUpPr.fitToPage else f"scale {page.scale}"
        yield f"titles {sheet.print_title_cols} {sheet.print_title_rows}"
        for part in (sheet.oddHeader, sheet.oddFooter):
            yield f"head [{part.left.text}] [{part.center.text}] [{part.right.text}]"


# What must come back byte for byte: drawings, objects, notes, validations, formulas, fonts, formats and settings.
PASSED_THROUGH = {
    0x00EB, 0x00EC, 0x005D, 0x001C, 0x01B6, 0x01B2, 0x01BE, 0x0006, 0x0017, 0x01AE, 0x0018, 0x0031, 0x00E0, 0x041E, 0x00A1,
    0x0014, 0x0015, 0x0055, 0x0225, 0x0081, 0x0208, 0x0293, 0x0092, 0x0022, 0x0042
}


def read_records(path):
    from xlrd import compdoc
    with open(path, "rb") as file:
        container = compdoc.CompDoc(file.read())
    memory, start, length = container.locate_named_stream("Workbook")
    at = start
    while at + 4 <= start + length:
        number, size = struct.unpack_from("<HH", memory, at)
        body = bytes(memory[at + 4:at + 4 + size])
        if number in PASSED_THROUGH:
            yield f"{number:04X} {hashlib.sha256(body).hexdigest()[:16]}"
        at += 4 + size


def main():
    sys.stdout.reconfigure(encoding="utf-8")
    path = sys.argv[-1]
    asked = {"--records": read_records, "--page": read_page}.get(sys.argv[1])
    read = asked or (read_xls if path.endswith(".xls") else read_xlsx)
    for line in read(path):
        print(line)


main()
