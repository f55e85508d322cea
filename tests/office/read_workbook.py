#!/usr/bin/python3
"""Tells what a reader of its own finds in a workbook's first sheet, for comparison with what was written.

usage: read_workbook.py xlrd|openpyxl|office FILE

One line each, tab-separated: "sheet NAME", "hidden COL", "merged ROW COL ROWS COLS", and for every cell that is not
empty "cell ROW COL KIND VALUE FORMULA BOLD". Kinds are text, number and date; a reader that does not know formulas says
"?" for them.
"""
import datetime
import pathlib
import subprocess
import sys
import tempfile


def tell(*words):
    print("\t".join(str(word).replace("\\", "\\\\").replace("\n", "\\n").replace("\t", "\\t") for word in words))


def plain(value):
    if isinstance(value, datetime.datetime):
        return "date", value.isoformat(sep=" ")
    if isinstance(value, (int, float)):
        return "number", f"{value:.15g}"
    return "text", value


def with_xlrd(path):
    import xlrd

    book = xlrd.open_workbook(path, formatting_info=True)
    sheet = book.sheet_by_index(0)
    tell("sheet", sheet.name)
    for col, info in sorted(sheet.colinfo_map.items()):
        if info.hidden:
            tell("hidden", col + 1)
    for top, bottom, left, right in sheet.merged_cells:
        tell("merged", top + 1, left + 1, bottom - top, right - left)
    for row in range(sheet.nrows):
        for col in range(sheet.ncols):
            cell = sheet.cell(row, col)
            if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
                continue
            value = cell.value
            if cell.ctype == xlrd.XL_CELL_DATE:
                value = xlrd.xldate_as_datetime(value, book.datemode)
            bold = book.font_list[book.xf_list[cell.xf_index].font_index].bold
            tell("cell", row + 1, col + 1, *plain(value), "?", int(bold))


def with_openpyxl(path):
    import openpyxl

    sheet = openpyxl.load_workbook(path).worksheets[0]
    values = openpyxl.load_workbook(path, data_only=True).worksheets[0]
    tell("sheet", sheet.title)
    for letters, column in sheet.column_dimensions.items():
        if column.hidden:
            tell("hidden", openpyxl.utils.column_index_from_string(letters))
    for block in sheet.merged_cells.ranges:
        tell("merged", block.min_row, block.min_col, block.size["rows"], block.size["columns"])
    for line in sheet.iter_rows():
        for cell in line:
            if cell.value is None:
                continue
            formula = cell.value[1:] if cell.data_type == "f" else ""
            value = values.cell(cell.row, cell.column).value
            tell("cell", cell.row, cell.column, *plain(value), formula, int(cell.font.b))


def with_office(path):
    """As the office program reads it and writes it again."""
    with tempfile.TemporaryDirectory() as folder:
        command = ["soffice", "--headless", "--norestore", f"-env:UserInstallation=file://{folder}/profile",
                   "--convert-to", "xlsx", "--outdir", folder, path]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120)
        with_openpyxl(pathlib.Path(folder) / (pathlib.Path(path).stem + ".xlsx"))


if __name__ == "__main__":
    readers = {"xlrd": with_xlrd, "openpyxl": with_openpyxl, "office": with_office}
    if len(sys.argv) != 3 or sys.argv[1] not in readers:
        sys.exit(__doc__)
    sys.stdout.reconfigure(encoding="utf-8")
    readers[sys.argv[1]](sys.argv[2])
