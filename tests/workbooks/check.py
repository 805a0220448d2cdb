#!/usr/bin/env python3
"""Opens the workbooks of all examples with LibreOffice and compares what it finds.

    check.py PROGRAM EXAMPLES

Runs the program on every example, and on a model of its own with names that hold everything that
XML or a spreadsheet could stumble over. Every workbook has to be read without complaint, here and
by LibreOffice, with the same cells, merges and sheets; every link has to lead to a sheet; every
cell of the workbook of results has to be what Results.xml says; and the formulas of the hardware
metrics, which LibreOffice computes, have to give the figures that the program gives.

Without LibreOffice the exit status is 77, which counts as skipped; with FTS_ALL_TESTS set, as in
the gate, it is a failure.
"""
import os
import pathlib
import subprocess
import sys
import tempfile
from xml.sax.saxutils import escape

sys.dont_write_bytecode = True  # Nothing is to appear beside the sources.
import metrics
import office
import results
import spreadsheetml

SKIPPED = 77
# What stands in the names of the awkward model.
HAZARDS = ["a < b & \"c\" > 'd'", "'quoted'", "x:/y\\z?*[1]", "Gr\u00f6\u00dfe \u65e5\u672c \U0001f600",
           "A name of forty characters in the middle", "", "=1+1", "Same", "SAME", " blanks "]
COMPONENT, EVENT, DESCRIPTION = "C<&'\"", "e&<'\"", "\"<b>\" & 'c' ]]> \u00fc"


def awkward_model():
    hazards = "".join(
        "<Hazard><Name>%s</Name><Description>%s</Description><Severity>2</Severity>"
        "<Logic>Omission-C.out</Logic></Hazard>" % (escape(name), escape(DESCRIPTION))
        for name in HAZARDS)
    formula = ("<UnavailabilityFormula><ISO26262DetectabilityAnalysis><Percentage>%d</Percentage>"
               "</ISO26262DetectabilityAnalysis></UnavailabilityFormula>")
    events = "".join("<BasicEvent><Name>%s</Name>%s</BasicEvent>" % (name, formula % share)
                     for name, share in (("plain", 40), (escape(EVENT), 60)))
    failures = ("<FailureData><ComponentFailureRate>1e-6</ComponentFailureRate><BasicEvents>%s"
                "</BasicEvents><OutputDeviations><OutputDeviation><Name>Omission-out</Name>"
                "<FailureExpression>plain</FailureExpression></OutputDeviation></OutputDeviations>"
                "</FailureData>" % events)
    component = ("<Component><Name>%s</Name><Ports><Port><Name>out</Name></Port></Ports>"
                 "<Implementations><Current><Name>i</Name><HBlockType>NotRefined</HBlockType>%s"
                 "</Current></Implementations></Component>")
    return ("<Model><Name>awkward</Name><Hazards>%s</Hazards><System><Components>%s%s</Components>"
            "<Lines/></System></Model>"
            % (hazards, component % ("C", failures), component % (escape(COMPONENT), failures)))


def run(program, model, folder, *options):
    ended = subprocess.run([program, str(model), "outputdir=" + str(folder),
                            "outputtype=EXCEL,ISO,RESULTS", *options],
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=True,
                           text=True, errors="replace")
    if "\nERROR" in ended.stdout:
        raise AssertionError(ended.stdout)


class Case:
    """One run of the program; the files of all cases have names of their own."""

    def __init__(self, name, model, options, folder, has_results=True):
        self.name, self.options, self.folder = name, options, folder / name
        self.folder.mkdir()
        self.model = self.folder / (name + ".xml")
        self.model.write_bytes(model)
        self.has_results = has_results
        output = self.folder / (name + "-FMEAOutput")
        self.workbooks = [output / (name + end) for end in ("_Excel.xml", "_ISO26262_Excel.xml")]

    def run(self, program):
        run(program, self.model, self.folder, *self.options)


def make_cases(examples, folder):
    cases = []
    for model in sorted(examples.glob("*/*.xml")):
        if model.stem == model.parent.name:
            cases.append(Case(model.stem, model.read_bytes(), ["isomode"], folder))
    plant = examples / "process-plant" / "process-plant.xml"
    steering = examples / "electric-power-steering" / "electric-power-steering.xml"
    cases += [
        Case("process-plant-normal", plant.read_bytes(), ["countNormalEvents=false"], folder),
        Case("process-plant-limited", plant.read_bytes(), ["maxcutset=2"], folder),
        Case("steering-by-diagrams", steering.read_bytes(), ["isomode", "useBDDs=true"], folder),
        Case("unanalysed", steering.read_bytes(), ["isomode", "analyse=false"], folder),
        # Results.xml does not escape, so the names of this one leave nothing to compare with.
        Case("awkward", awkward_model().encode("utf-8"), [], folder, has_results=False)]
    return cases


def check_converted(own, converted):
    """LibreOffice has understood what stands in the file: sheets, cells, merges and columns."""
    results.expect(list(converted), [sheet.name for sheet in own.sheets], "sheets")
    for sheet in own.sheets:
        found = converted[sheet.name]
        wanted = {place for place, cell in sheet.cells.items() if cell.value or cell.value == 0}
        formulas = {place for place, cell in sheet.cells.items() if cell.formula}
        results.expect(set(found.cells), wanted | formulas, sheet.name + ": cells")
        results.expect(set(found.formulas), formulas, sheet.name + ": formulas")
        for place in wanted:
            if not spreadsheetml.same(found.cells[place], sheet.cells[place].value):
                raise AssertionError("%s %s: %r instead of %r" % (
                    sheet.name, place, found.cells[place], sheet.cells[place].value))
        results.expect(sorted(found.merges), sorted(sheet.merges), sheet.name + ": merges")
        results.expect(found.widths, set(sheet.widths), sheet.name + ": columns with a width")


def check_tables(converted, stem, folder):
    """The same cells again, from the sheets as tables of text."""
    for name, sheet in converted.items():
        # The name of a sheet with characters that files can't have is written in another way.
        path = folder / ("%s-%s.csv" % (stem, name))
        if not path.is_file():
            continue
        table = office.read_csv(path)
        results.expect(set(table), set(sheet.cells), "%s: cells of the table" % name)
        for place, value in sheet.cells.items():
            text = table[place]
            same = (spreadsheetml.same(float(text), value) if isinstance(value, float)
                    else text == value)
            if not same:
                raise AssertionError("%s %s: %r instead of %r" % (path, place, text, value))
        yield name


def check_links(own):
    """Trees lead to their sheets, and all sheets of the workbook of results back to the contents."""
    contents = own.sheet("Contents")
    linked = [spreadsheetml.target(c.link) for c in contents.cells.values() if c.link]
    names = [sheet.name for sheet in own.sheets]
    results.expect(linked, names[1:], "links of the contents")
    for sheet in own.sheets:
        for cell in sheet.cells.values():
            if not cell.link:
                continue
            goal = spreadsheetml.target(cell.link)
            if cell.value == results.CONTENTS_LINK:
                results.expect(goal, "Contents", sheet.name)
            elif goal not in names[:3]:
                top = own.sheet(goal).cells[3, 2].value
                results.expect(cell.value, top, sheet.name + ": link to " + goal)


def check_awkward(book):
    titles = [sheet.cells[3, 2] for name, sheet in list(book.items())[3:] if (3, 2) in sheet.cells]
    results.expect(sorted(titles), sorted(name.strip() for name in HAZARDS if name), "titles")
    long_name = next(name for name in book if name.startswith("A name of forty"))
    results.expect(len(long_name), 31, "length of " + long_name)
    texts = {value for value in book["Direct Effects"].cells.values()}
    for wanted in (EVENT, "Component: DEFAULT::" + COMPONENT):
        results.expect(wanted in texts, True, "Direct Effects: " + wanted)
    first = list(book.values())[3]
    results.expect(DESCRIPTION in first.cells.values(), True, "description")


def check_all(cases, folder, report):
    hands = tables = 0
    for case in cases:
        for path in case.workbooks:
            own = spreadsheetml.Workbook(path)
            book = office.read_xlsx(folder / (path.stem + ".xlsx"))
            check_converted(own, book)
            tables += len(list(check_tables(book, path.stem, folder)))
            if "ISO26262" in path.stem:
                hands += metrics.check(case.name, book)
            else:
                check_links(own)
                if case.has_results:
                    results.check(book, case.folder / (case.name + "-Results") / "Results.xml")
        if case.name == "awkward":
            check_awkward(office.read_xlsx(folder / "awkward_Excel.xlsx"))
        report("%-24s ok" % case.name)
    results.expect(hands, 2, "goals that were worked out by hand")
    if tables < 2 * len(cases):
        raise AssertionError("only %d tables were written" % tables)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    program, examples = sys.argv[1], pathlib.Path(sys.argv[2])
    found = office.find()
    if found is None:
        print("LibreOffice is missing: run scripts/setup.sh test")
        sys.exit(1 if os.environ.get("FTS_ALL_TESTS") else SKIPPED)
    with tempfile.TemporaryDirectory(prefix="workbooks-") as name:
        folder = pathlib.Path(name)
        cases = make_cases(examples, folder)
        for case in cases:
            case.run(program)
        files = [path for case in cases for path in case.workbooks]
        for kind in ("xlsx", office.CSV):
            office.convert(found, files, kind, folder, folder / "profile")
        check_all(cases, folder, print)


if __name__ == "__main__":
    main()
