"""Reads a workbook in the XML spreadsheet format of 2003, and refuses what spreadsheet programs
refuse or complain about: names and numbers of sheets, styles, merges and indices that clash."""
import math
import re
import xml.etree.ElementTree as ElementTree

SS = "{urn:schemas-microsoft-com:office:spreadsheet}"
EXCEL = "{urn:schemas-microsoft-com:office:excel}"
LAST_ROW, LAST_COLUMN, LONGEST_NAME = 1048576, 256, 31
CELL_ATTRIBUTES = {"Index", "MergeAcross", "MergeDown", "StyleID", "HRef", "Formula"}


class Problem(Exception):
    pass


def require(condition, text):
    if not condition:
        raise Problem(text)


def number(text):
    require(re.fullmatch(r"[-+]?\d+(\.\d+)?(e[-+]?\d+)?", text or ""), "no number: %r" % text)
    return float(text)


class Cell:
    def __init__(self, value, style, link, formula, across, down):
        self.value, self.style, self.link, self.formula = value, style, link, formula
        self.across, self.down = across, down


class Sheet:
    """`cells` by (row, column), both from 1 on; `merges` as (row, column, across, down)."""

    def __init__(self, element, styles):
        self.name = element.get(SS + "Name")
        self.cells, self.merges, self.widths = {}, [], {}
        self.covered = set()
        kinds = [child.tag for child in element]
        require(kinds in ([SS + "Table"], [SS + "Table", EXCEL + "WorksheetOptions"]),
                "unexpected parts of a sheet: %s" % kinds)
        self.read(element.find(SS + "Table"), styles)

    def read(self, table, styles):
        row = column = 0
        for child in table:
            if child.tag == SS + "Column":
                require(row == 0, "a column behind a row")
                column = int(child.get(SS + "Index", column + 1))
                self.widths[column] = number(child.get(SS + "Width"))
                continue
            require(child.tag == SS + "Row", "unexpected element " + child.tag)
            index = int(child.get(SS + "Index", row + 1))
            require(index > row, "row %d behind row %d" % (index, row))
            row = index
            self.read_row(child, row, styles)
        require(row <= LAST_ROW, "too many rows")

    def read_row(self, element, row, styles):
        column = 0
        for child in element:
            require(child.tag == SS + "Cell", "unexpected element " + child.tag)
            unknown = {name[len(SS):] for name in child.attrib} - CELL_ATTRIBUTES
            require(not unknown, "unknown attributes %s" % unknown)
            index = int(child.get(SS + "Index", column + 1))
            require(column < index <= LAST_COLUMN, "cell %d behind cell %d" % (index, column))
            cell = self.read_cell(child, styles)
            self.place(cell, row, index)
            column = index + cell.across

    def place(self, cell, row, column):
        area = {(r, c) for r in range(row, row + cell.down + 1)
                for c in range(column, column + cell.across + 1)}
        require(not area & self.covered, "%s: cell (%d, %d) is taken" % (self.name, row, column))
        if len(area) > 1:
            self.merges.append((row, column, cell.across, cell.down))
            self.covered |= area
        else:
            self.covered.add((row, column))
        self.cells[row, column] = cell

    @staticmethod
    def read_cell(element, styles):
        style = element.get(SS + "StyleID")
        require(style is None or style in styles, "unknown style %s" % style)
        value = None
        require(len(element) <= 1, "more than one part of a cell")
        for data in element:
            require(data.tag == SS + "Data", "unexpected element " + data.tag)
            kind = data.get(SS + "Type")
            require(kind in ("Number", "String"), "unknown type %s" % kind)
            value = number(data.text) if kind == "Number" else data.text or ""
        return Cell(value, style, element.get(SS + "HRef"), element.get(SS + "Formula"),
                    int(element.get(SS + "MergeAcross", 0)), int(element.get(SS + "MergeDown", 0)))


class Workbook:
    def __init__(self, path):
        root = ElementTree.parse(path).getroot()
        require(root.tag == SS + "Workbook", "no workbook")
        styles = [style.get(SS + "ID") for style in root.find(SS + "Styles")]
        require(len(set(styles)) == len(styles), "two styles of one name")
        self.sheets = [Sheet(e, set(styles)) for e in root.findall(SS + "Worksheet")]
        self.check_names()
        self.check_links()

    def check_names(self):
        names = [sheet.name for sheet in self.sheets]
        require(len({n.casefold() for n in names}) == len(names), "two sheets of one name")
        for name in names:
            units = len(name.encode("utf-16-le")) // 2
            require(0 < units <= LONGEST_NAME, "length of sheet name %r" % name)
            require(not re.search(r"[:\\/?*\[\]\x00-\x1f]", name), "sheet name %r" % name)
            require(not name.startswith("'") and not name.endswith("'"), "sheet name %r" % name)

    def check_links(self):
        names = {sheet.name for sheet in self.sheets}
        for sheet in self.sheets:
            for cell in sheet.cells.values():
                if cell.link is not None:
                    require(target(cell.link) in names, "link to nowhere: " + cell.link)

    def sheet(self, name):
        return next(sheet for sheet in self.sheets if sheet.name == name)


def target(link):
    match = re.fullmatch(r"#'((?:[^']|'')+)'!A1", link)
    require(match, "no link to a sheet: " + link)
    return match.group(1).replace("''", "'")


def same(a, b):
    """Whether two values of cells are one; figures within the digits that a program keeps."""
    if isinstance(a, float) and isinstance(b, float):
        return a == b or math.isclose(a, b, rel_tol=1e-12)
    return (a or None) == (b or None)
