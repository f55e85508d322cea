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
import xml.etree.ElementTree


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


class FlatDocument:
    """The flat XML that LibreOffice makes of a workbook."""

    def __init__(self, path):
        self.root = xml.etree.ElementTree.parse(path).getroot()
        spaces = "office table text style fo".split()
        known = {
            "fo": "urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0",
        }
        for space in spaces:
            setattr(self, space, "{%s}" % known.get(space, f"urn:oasis:names:tc:opendocument:xmlns:{space}:1.0"))
        self.bold = set()
        for style in self.root.iter(self.style + "style"):
            look = style.find(self.style + "text-properties")
            if look is not None and look.get(self.fo + "font-weight") == "bold":
                self.bold.add(style.get(self.style + "name"))

    def text_of(self, cell):
        lines = []
        for paragraph in cell.findall(self.text + "p"):
            lines.append(self.spaced(paragraph))
        return "\n".join(lines)

    def spaced(self, node):
        parts = [node.text or ""]
        for child in node:
            if child.tag == self.text + "s":
                parts.append(" " * int(child.get(self.text + "c", "1")))
            elif child.tag == self.text + "tab":
                parts.append("\t")
            else:
                parts.append(self.spaced(child))
            parts.append(child.tail or "")
        return "".join(parts)

    def value_of(self, cell):
        kind = cell.get(self.office + "value-type")
        if kind == "date":
            moment = cell.get(self.office + "date-value")
            return "date", str(datetime.datetime.fromisoformat(moment[:19]))
        if kind in ("float", "currency", "percentage"):
            return plain(float(cell.get(self.office + "value")))
        return "text", self.text_of(cell)

    def tell_all(self):
        sheet = next(self.root.iter(self.table + "table"))
        tell("sheet", sheet.get(self.table + "name"))
        col = 1
        for column in sheet.iter(self.table + "table-column"):
            count = int(column.get(self.table + "number-columns-repeated", "1"))
            if column.get(self.table + "visibility") == "collapse":
                for hidden in range(col, col + count):
                    tell("hidden", hidden)
            col += count
        number = 1
        for line in sheet.iter(self.table + "table-row"):
            count = int(line.get(self.table + "number-rows-repeated", "1"))
            for again in range(count if count < 1000 else 0):
                self.tell_row(number + again, line)
            number += count

    def tell_row(self, row, line):
        col = 1
        for cell in line:
            count = int(cell.get(self.table + "number-columns-repeated", "1"))
            rows = int(cell.get(self.table + "number-rows-spanned", "1"))
            cols = int(cell.get(self.table + "number-columns-spanned", "1"))
            if rows > 1 or cols > 1:
                tell("merged", row, col, rows, cols)
            if cell.get(self.office + "value-type"):
                formula = cell.get(self.table + "formula", "").removeprefix("of:=")
                formula = formula.replace("[.", "").replace("]", "").replace(":.", ":")
                bold = int(cell.get(self.table + "style-name") in self.bold)
                for again in range(count):
                    tell("cell", row, col + again, *self.value_of(cell), formula, bold)
            col += count


def with_office(path):
    with tempfile.TemporaryDirectory() as folder:
        command = ["soffice", "--headless", "--norestore", f"-env:UserInstallation=file://{folder}/profile",
                   "--convert-to", "fods", "--outdir", folder, path]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120)
        FlatDocument(pathlib.Path(folder) / (pathlib.Path(path).stem + ".fods")).tell_all()


if __name__ == "__main__":
    readers = {"xlrd": with_xlrd, "openpyxl": with_openpyxl, "office": with_office}
    if len(sys.argv) != 3 or sys.argv[1] not in readers:
        sys.exit(__doc__)
    sys.stdout.reconfigure(encoding="utf-8")
    readers[sys.argv[1]](sys.argv[2])
