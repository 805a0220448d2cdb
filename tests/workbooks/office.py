"""Lets LibreOffice open workbooks, and reads what it has understood of them."""
import csv
import os
import pathlib
import re
import shutil
import subprocess
import xml.etree.ElementTree as ElementTree
import zipfile

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATION = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}id"
# All sheets, each a file; figures as they are kept, not as they are shown.
CSV = "csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,false,false,false,false,-1"


def find():
    """The path of LibreOffice, None where it is not installed."""
    return shutil.which("soffice") or shutil.which("libreoffice")


def convert(office, files, kind, folder, profile):
    """Converts all files in one process; returns what it printed."""
    run = subprocess.run(
        [office, "--headless", "--norestore", "-env:UserInstallation=" + profile.as_uri(),
         "--convert-to", kind, "--outdir", str(folder)] + [str(f) for f in files],
        stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
        timeout=240, check=False, env={**os.environ, "HOME": str(profile.parent)})
    if run.returncode != 0:
        raise RuntimeError("LibreOffice ended with status %d:\n%s" % (run.returncode, run.stdout))
    return run.stdout


def cell_place(reference):
    letters, digits = re.fullmatch(r"([A-Z]+)(\d+)", reference).groups()
    column = 0
    for letter in letters:
        column = column * 26 + ord(letter) - ord("A") + 1
    return int(digits), column


class Sheet:
    """`cells` by (row, column): float, text or, of an error, its sign. `formulas` likewise."""

    def __init__(self, data, texts):
        root = ElementTree.fromstring(data)
        self.cells, self.formulas, self.merges = {}, {}, []
        for cell in root.iter(MAIN + "c"):
            value, formula = cell.find(MAIN + "v"), cell.find(MAIN + "f")
            place = cell_place(cell.get("r"))
            if formula is not None:
                self.formulas[place] = formula.text
            if value is not None:
                self.cells[place] = self.value(cell.get("t", "n"), value.text or "", texts)
        for merge in root.iter(MAIN + "mergeCell"):
            first, last = (cell_place(part) for part in merge.get("ref").split(":"))
            self.merges.append((*first, last[1] - first[1], last[0] - first[0]))
        self.widths = {int(c.get("min")) for c in root.iter(MAIN + "col")
                       if c.get("customWidth") == "true"}

    @staticmethod
    def value(kind, text, texts):
        if kind == "s":
            return texts[int(text)]
        return float(text) if kind == "n" else text


def read_xlsx(path):
    """The sheets of a converted workbook by name, in their order."""
    with zipfile.ZipFile(path) as archive:
        texts = []
        if "xl/sharedStrings.xml" in archive.namelist():
            shared = ElementTree.fromstring(archive.read("xl/sharedStrings.xml"))
            texts = ["".join(t.text or "" for t in item.iter(MAIN + "t")) for item in shared]
        relations = ElementTree.fromstring(archive.read("xl/_rels/workbook.xml.rels"))
        files = {r.get("Id"): r.get("Target") for r in relations}
        book = ElementTree.fromstring(archive.read("xl/workbook.xml"))
        return {sheet.get("name"): Sheet(archive.read("xl/" + files[sheet.get(RELATION)]), texts)
                for sheet in book.find(MAIN + "sheets")}


def read_csv(path):
    """The cells of one sheet by (row, column); empty ones are left out."""
    with open(pathlib.Path(path), newline="", encoding="utf-8") as file:
        return {(r, c): text for r, row in enumerate(csv.reader(file), 1)
                for c, text in enumerate(row, 1) if text}
