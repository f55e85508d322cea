#!/usr/bin/python3
"""Makes the workbooks that tests of reading and importing read, by programs of others.

usage: make_workbooks.py DIRECTORY

openpyxl writes .xlsx without the results of formulas; the office program makes .xls of them, and .xlsx with results.
"""
import datetime
import pathlib
import shutil
import subprocess
import sys
import tempfile

import openpyxl

SHEET = "药品目录"


def workbook(*rows, title=SHEET):
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = title
    for row in rows:
        sheet.append(row)
    return book, sheet


def varied():
    """Every kind of cell that a reader may meet; the second sheet is hidden."""
    book, sheet = workbook()
    heads = [" 编码 ", "品 名", "规\n格", None, "品 名", "零售价", "效期", "合计", "标志", "错误"]
    cells = [
        ["001", "阿莫西林 胶囊", "0.25g*10粒", 1, "重", 15.5, datetime.datetime(2026, 3, 1), "=G4*2", True, "=1/0"],
        [2, "𠮷药😀", "1/2", 2, None, -0.0001, datetime.datetime(2026, 3, 1, 8, 5), '="文"&"字"', False, "=NA()"],
        [None] * 10,
        ["003", "多行\n文字", 1e12, 0.1, "'引号", 123456789012, datetime.time(8, 5), "=G4", None, '=""'],
        [" 前后 ", "a&<b>", "_x000D_", 1 / 3, "x" * 32767, 46082.5, datetime.date(1900, 2, 28), "=I4", None, None],
    ]
    for row, line in enumerate([heads] + cells, start=3):
        for col, value in enumerate(line, start=2):
            sheet.cell(row, col).value = value
    sheet["G4"].number_format = '0.00_ ;[Red]\\-0.00\\ '
    sheet["H4"].number_format = 'yyyy"年"m"月"d"日"'
    sheet["H7"].number_format = "[$-804]h:mm;@"
    sheet["G8"].number_format = '"day "0.0'
    sheet["I7"].number_format = "yyyy/m/d;@"
    sheet["B9"] = "合并"
    sheet.merge_cells("B9:D10")
    sheet["C9"].number_format = "0.00"
    # Texts of all lengths, so that some go on in another record of the table of texts.
    for row in range(11, 1200):
        sheet.cell(row, 2).value = f"{row:06d}"
        sheet.cell(row, 3).value = "长" * (row % 61) + "w" * (row % 7) + str(row)
    sheet["A2000"].number_format = "@"  # a cell with nothing but a look
    hidden = book.create_sheet("隐藏")
    hidden["A1"] = "只有表头"
    hidden.sheet_state = "hidden"
    book.create_sheet("空表")
    return book


def since_1904():
    book, sheet = workbook(["效期"], [datetime.datetime(2026, 3, 1)])
    book.epoch = openpyxl.utils.datetime.CALENDAR_MAC_1904
    sheet["A2"].value = datetime.datetime(2026, 3, 1)
    return book


def catalogue():
    """For the import: good rows, and for each reason to fail one that does."""
    return workbook(
        ["编码", "品名", "商品名", "规格", "单位", "拆零比", "零售价", "备注", "建档日期", "批准文号", "库存量"],
        ["LR001", "云岫 注射针", "云 岫", "2ml", "盒", 4, 15.5, "不导入", datetime.datetime(2026, 3, 1), "准 字1", 12],
        [77000002, "碘伏", None, "100ml", "瓶", None, 8, None, "2026-2-3", None, None],
        ["LR001", "重复", None, "1g", "盒", 1, 1.5, None, None, None, None],
        ["LR003", "价格不对", None, "1g", "盒", 1, "待定", None, None, None, None],
        [None, "没有编码", None, "1g", "盒", 1, 2, None, None, None, None],
        ["LR004", None, None, "=\"1\"&\"g\"", "盒", "=2*5", "=G2*2", None, "以后再说", None, None],
        ["LR006", "O'云", None, "1g", "盒", 1, 2, None, None, None, None],
        ["LR005", "规格太长", None, "长" * 60, "盒", 1, 2, None, None, None, None],
    )[0]


def many(count):
    rows = [["编码", "品名", "零售价", "拆零比"]]
    rows += [[f"PL{number:05d}", f"药品{number}", number / 4, 10] for number in range(1, count + 1)]
    return workbook(*rows)[0]


def convert(place, folder, kind, files):
    """All files in one run of the office program, which takes seconds to start, longest with a profile that is new."""
    command = ["soffice", "--headless", "--norestore", f"-env:UserInstallation=file://{place}/profile",
               "--convert-to", kind, "--outdir", str(folder)] + [str(file) for file in files]
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=120)


def main(folder):
    folder.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as place:
        place = pathlib.Path(place)
        books = {"varied": varied(), "since_1904": since_1904(), "catalogue": catalogue(), "many": many(200),
                 "other_sheet": workbook(["编码", "品名"], title="目录")[0], "no_rows": workbook(["编码", "品名"])[0],
                 "no_heads": workbook(["甲", "乙"], ["1", "2"])[0]}
        for name, book in books.items():
            book.save(place / f"{name}.xlsx")
        convert(place, folder, "xls:MS Excel 97", [place / f"{name}.xlsx" for name in books])
        convert(place, folder, "xlsx:Calc MS Excel 2007 XML", [place / "varied.xlsx"])
        books["varied"].create_chartsheet("图")  # which the office program would make a sheet of cells
        books["varied"].save(folder / "unsaved_results.xlsx")
        shutil.copy(place / "since_1904.xlsx", folder / "since_1904.xlsx")
        shutil.copy(place / "many.xlsx", folder / "newer.XLS")
        shutil.copy(place / "many.xlsx", folder / "many.xlsx")
    (folder / "empty.xls").write_bytes(b"")
    (folder / "junk.xls").write_text("编码\t品名\n1\t药\n")
    whole = (folder / "catalogue.xls").read_bytes()
    (folder / "cut.xls").write_bytes(whole[: len(whole) // 2])


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]))
