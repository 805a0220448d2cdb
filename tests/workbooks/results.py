"""What the workbook of results must hold, worked out from Results.xml of the same run."""
import collections
import xml.etree.ElementTree as ElementTree

CONTENTS_LINK = "Click here to go to the Contents page"


def text(element, name):
    return element.findtext(name) or ""


class Event:
    def __init__(self, element):
        self.name = text(element, "ShortName")
        self.effects = [(e.get("ID"), text(e, "SinglePointFailure") == "true")
                        for e in element.iterfind("Effects/Effect")]


class Tree:
    def __init__(self, element, events):
        self.id, self.name = element.get("ID"), text(element, "Name")
        self.description = text(element, "Description")
        self.unavailability = float(text(element, "Unavailability"))
        self.frequency = float(text(element, "Frequency"))
        self.severity = float(text(element, "Severity"))
        self.counts = {int(c.get("order")): int(c.text)
                       for c in element.iterfind("CutSetsSummary/CutSets")}
        # (members' ids, unavailability, frequency) by order, in the order of the file.
        self.sets = {int(s.get("order")): [
            (tuple(e.get("ID") for e in c.iterfind("Events/Event")),
             float(text(c, "Unavailability")), float(text(c, "Frequency")))
            for c in s.iterfind("CutSet")] for s in element.iterfind("AllCutSets/CutSets")}
        self.events = events

    def names(self, members):
        return tuple(self.events[m].name for m in members)

    def contributions(self, event):
        """The cut sets with the event, as (names, unavailability, frequency)."""
        return [(self.names(members), q, f) for sets in self.sets.values()
                for members, q, f in sets if event in members]


class Results:
    def __init__(self, path):
        root = ElementTree.parse(path).getroot()
        self.components = {}  # The ids of the events of each, complements left out.
        self.events = {}
        for component in root.iterfind("FaultTrees/FMEA/Component"):
            listed = component.find("Events")
            self.events.update({e.get("ID"): Event(e) for e in listed})
            self.components[text(component, "Name")] = [e.get("ID") for e in listed
                                                        if e.tag != "ComplementEvent"]
        self.trees = [Tree(t, self.events) for t in root.iterfind("FaultTrees/FaultTree")]

    def tree(self, tree_id):
        return next(t for t in self.trees if t.id == tree_id)


class Rows:
    """Takes a sheet's rows one after another; texts and figures of cells that are there."""

    def __init__(self, sheet):
        self.rows = collections.defaultdict(dict)
        for (row, column), value in sheet.cells.items():
            self.rows[row][column] = value
        self.last = max(self.rows, default=0)
        self.at = 0

    def take(self):
        self.at += 1
        return self.rows.get(self.at, {})

    def more(self):
        return self.at < self.last


def expect(found, wanted, where):
    if found != wanted:
        raise AssertionError("%s:\n  found  %s\n  wanted %s" % (where, found, wanted))


def filled(*values):
    return {i: v for i, v in enumerate(values, 1) if v not in (None, "")}


def check_contents(sheet, results, orders):
    rows = Rows(sheet)
    for wanted in ("FMEA tables", "Direct Effects", "Further Effects", None):
        expect(rows.take(), filled(wanted), "Contents")
    expect(rows.take(), {2: "Number of cut sets of order:"}, "Contents")
    expect(rows.take(), filled("Fault Tree Cut Sets", *map(float, range(1, orders + 1)), "Total"),
           "Contents")
    for tree in results.trees:
        counts = [float(tree.counts.get(order, 0)) for order in range(1, orders + 1)]
        expect(rows.take(), filled(tree.name, *counts, sum(counts)), "Contents")
    expect(rows.more(), False, "Contents: rows behind the last tree")


def check_component_head(rows, component, headings, where):
    expect(rows.take(), {}, where)
    expect(rows.take(), filled("Component: " + component), where)
    expect(rows.take(), filled(*headings), where)


def check_direct(sheet, results):
    rows = Rows(sheet)
    expect(rows.take(), filled(CONTENTS_LINK), "Direct Effects")
    for component, ids in results.components.items():
        check_component_head(rows, component, ("Failure Mode", "Direct Effect", "Severity"),
                             "Direct Effects")
        for event in (results.events[i] for i in ids):
            trees = [results.tree(t) for t, direct in event.effects if direct]
            expect(rows.take(), filled(event.name, *((trees[0].name, trees[0].severity)
                                                     if trees else ())), "Direct Effects")
            for tree in trees[1:]:
                expect(rows.take(), {2: tree.name, 3: tree.severity}, "Direct Effects")
    expect(rows.more(), False, "Direct Effects: rows behind the last")


def take_cut_set(rows, first, column, size):
    """The names in the rows of one cut set, whose first row has been taken, and its figures."""
    names = [first[column]]
    for _ in range(size - 1):
        row = rows.take()
        expect(set(row), {column}, "members of a cut set")
        names.append(row[column])
    return tuple(names), first[column + 1], first[column + 2]


def check_further(sheet, results):
    where = "Further Effects"
    headings = ("Failure Mode", "Further Effect", "Severity", "Contributing Events",
                "Cut Set Unavailability", "Cut Set Frequency")
    sizes = {(r, c): down + 1 for r, c, _, down in sheet.merges}
    rows = Rows(sheet)
    expect(rows.take(), filled(CONTENTS_LINK), where)
    for component, ids in results.components.items():
        check_component_head(rows, component, headings, where)
        for event_id in ids:
            event = results.events[event_id]
            wanted = sorted((results.tree(t).name, results.tree(t).severity, *contribution)
                            for t, direct in event.effects if not direct
                            for contribution in results.tree(t).contributions(event_id))
            row, found = rows.take(), []
            expect(row.get(1), event.name, where)
            expect(sizes.get((rows.at, 1), 1), max(sum(len(w[2]) for w in wanted), 1), where)
            for i in range(len(wanted)):
                row = row if i == 0 else rows.take()
                size = sizes.get((rows.at, 2), 1)
                expect(sizes.get((rows.at, 5), 1), size, where + ": merge of a figure")
                found.append((row[2], row[3], *take_cut_set(rows, row, 4, size)))
            expect(sorted(found), wanted, where + ": " + event.name)
    expect(rows.more(), False, where + ": rows behind the last")


def check_tree(sheet, tree):
    where = "sheet of " + tree.name
    sizes = {(r, c): down + 1 for r, c, _, down in sheet.merges}
    rows = Rows(sheet)
    severity = [] if tree.severity == -1 else [("Severity", tree.severity)]
    count = float(sum(map(len, tree.sets.values())))
    for wanted in [(CONTENTS_LINK,), (), ("Top Event (Effect)", tree.name),
                   ("System Unavailability", tree.unavailability),
                   ("System Frequency", tree.frequency), *severity,
                   ("Description", tree.description or "N/A"), ("Number of Cut Sets", count)]:
        expect(rows.take(), filled(*wanted), where)
    for order, sets in sorted(tree.sets.items()):
        if not sets:
            continue
        expect(rows.take(), {}, where)
        expect(rows.take(), filled("%d x Cut Sets of Order: %d" % (len(sets), order),
                                   "Unavailability", "Frequency"), where)
        found = []
        for _ in sets:
            row = rows.take()
            found.append(take_cut_set(rows, row, 1, sizes.get((rows.at, 2), 1)))
        expect(sorted(found), sorted((tree.names(m), q, f) for m, q, f in sets), where)
    expect(rows.more(), False, where + ": rows behind the last")


def check(book, path):
    """Compares the sheets of `book` with the Results.xml at `path`, cell by cell."""
    results = Results(path)
    trees = {"%s(%s)" % (t.name, t.id): t for t in results.trees}
    trees = {short(name): tree for name, tree in trees.items()}
    expect(list(book), ["Contents", "Direct Effects", "Further Effects", *trees], "sheets")
    orders = max((o for t in results.trees for o in t.sets), default=0)
    check_contents(book["Contents"], results, orders)
    check_direct(book["Direct Effects"], results)
    check_further(book["Further Effects"], results)
    for name, tree in trees.items():
        check_tree(book[name], tree)


def short(name):
    for refused in ":\\/?*[]":
        name = name.replace(refused, "_")
    if len(name) <= 31:
        return name
    title, bracket, suffix = name.rpartition("(")
    suffix = bracket + suffix
    return title[:29 - len(suffix)] + ".." + suffix
