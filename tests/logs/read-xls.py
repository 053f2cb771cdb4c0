#!/usr/bin/python3
"""Reads a workbook with a reader that is not ours: one JSON object, sheet names to lists of rows of cells.

A number stays one, a text is one, a missing cell is null. Whole numbers come as such.
"""

import json
import sys

import xlrd


def value(cell):
    if cell.ctype == xlrd.XL_CELL_NUMBER:
        return int(cell.value) if cell.value == int(cell.value) else cell.value
    if cell.ctype == xlrd.XL_CELL_TEXT:
        return cell.value
    if cell.ctype in (xlrd.XL_CELL_EMPTY, xlrd.XL_CELL_BLANK):
        return None
    raise ValueError(f"a cell of type {cell.ctype}")


book = xlrd.open_workbook(sys.argv[1], logfile=sys.stderr, formatting_info=False)
sheets = {sheet.name: [[value(cell) for cell in sheet.row(n)] for n in range(sheet.nrows)] for sheet in book.sheets()}
json.dump(sheets, sys.stdout)
