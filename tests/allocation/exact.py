#!/usr/bin/env python3
"""The cheapest allocation of integrity levels that there is, by an exact integer program.

    tests/allocation/exact.py <program> <model>

analyses the model, and lets the solver of glpk choose a level from 0 to 4 for every event, so that
the levels in each cut set of a hazard add up to its required level at least. Prints the cost.
"""
import pathlib
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

COSTS = [0, 10, 100, 1000, 10000]


def analyse(program, model, folder):
    subprocess.run([program, model, "outputtype=RESULTS", f"outputdir={folder}"],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    (results,) = pathlib.Path(folder).glob("*-Results/Results.xml")
    return xml.parse(results)


def constraints(results):
    """Pairs of a required level and the events that share it; each once."""
    found = set()
    for tree in results.iterfind("FaultTrees/FaultTree"):
        level = int(tree.findtext("SIL"))
        for cut_set in tree.iterfind(".//CutSet"):
            events = frozenset(event.get("ID") for event in cut_set.iterfind(".//Event"))
            found.add((level, events))
    return sorted((level, sorted(events)) for level, events in found)


def program_text(rows):
    events = sorted({event for _, members in rows for event in members})
    variables = [(event, level) for event in events for level in range(1, len(COSTS))]
    lines = ["Minimize", " cost: " + " + ".join(f"{COSTS[level]} x{event}l{level}"
                                               for event, level in variables), "Subject To"]
    for event in events:
        lines.append(" + ".join(f"x{event}l{level}" for level in range(1, len(COSTS))) + " <= 1")
    for required, members in rows:
        lines.append(" + ".join(f"{level} x{event}l{level}" for event in members
                                for level in range(1, len(COSTS))) + f" >= {required}")
    lines += ["Binary"] + [f" x{event}l{level}" for event, level in variables] + ["End"]
    return "\n".join(lines) + "\n"


def solve(text, folder):
    path = pathlib.Path(folder) / "allocation.lp"
    path.write_text(text)
    answer = pathlib.Path(folder) / "allocation.txt"
    subprocess.run(["glpsol", "--lp", path, "-o", answer], check=True, stdout=subprocess.DEVNULL)
    report = answer.read_text()
    if "INTEGER OPTIMAL" not in report:
        raise SystemExit("glpsol found no optimum:\n" + report[:400])
    objective = next(line for line in report.splitlines() if line.startswith("Objective:"))
    return int(float(objective.split("=")[1].split()[0]))


def optimum(program, model):
    with tempfile.TemporaryDirectory() as folder:
        return solve(program_text(constraints(analyse(program, model, folder))), folder)


if __name__ == "__main__":
    print(optimum(sys.argv[1], sys.argv[2]))
