#!/usr/bin/env python3
"""Compares allocations that the search finds with the cheapest there are.

    tests/allocation/check.py <program> <examples>

Of the small example all allocations are gone through; of both an exact integer program is solved.
Ends with 77, which the test driver counts as skipped, where the solver is missing; with
FTS_ALL_TESTS set that is a failure.
"""
import itertools
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as xml

import exact

failures = []


def check(sentence, found, expected):
    if found != expected:
        failures.append(f"{sentence}: {found} and not {expected}")


def cheapest_of_all(rows):
    """By brute force over all levels of all events."""
    events = sorted({event for _, members in rows for event in members})
    place = {event: i for i, event in enumerate(events)}
    tests = [(level, [place[event] for event in members]) for level, members in rows]
    best = None
    for levels in itertools.product(range(len(exact.COSTS)), repeat=len(events)):
        cost = sum(exact.COSTS[level] for level in levels)
        if best is not None and cost >= best:
            continue
        if all(sum(levels[i] for i in members) >= level for level, members in tests):
            best = cost
    return best


def found_by_search(program, model, *options):
    """The number of open cut sets and the cost of the best individual."""
    with tempfile.TemporaryDirectory() as folder:
        environment = {name: value for name, value in os.environ.items()
                       if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        subprocess.run([program, model, "optimise=true", "decomposeSILs", f"outputdir={folder}",
                        *options], check=True, stdout=subprocess.DEVNULL, env=environment)
        (state,) = pathlib.Path(folder).glob("*-OptimisationResults/*.xml")
        return min((value(individual, "ASILInvalids"), value(individual, "ASILCost"))
                   for individual in xml.parse(state).iter("Individual"))


def value(individual, name):
    (text,) = (evaluation.findtext("Value") for evaluation in individual.iter("Evaluation")
               if evaluation.findtext("Name") == name)
    return int(text)


def check_small(program, model):
    with tempfile.TemporaryDirectory() as folder:
        rows = exact.constraints(exact.analyse(program, model, folder))
        check("brute force", cheapest_of_all(rows), 10600)
        check("integer program", exact.solve(exact.program_text(rows), folder), 10600)
    for seed in range(1, 6):
        check(f"search from seed {seed}",
              found_by_search(program, model, "populationSize=100", f"randomSeed={seed}"),
              (0, 10600))


def check_large(program, model):
    best = exact.optimum(program, model)
    check("integer program of the large model", best, 12560)
    invalids, cost = found_by_search(program, model, "GAType=NSGA", "pureElitist=true",
                                     "populationSize=50", "maxGenerations=300", "randomSeed=1")
    check("open cut sets of the large model", invalids, 0)
    check("nothing is cheaper than the exact solution", cost >= best, True)


def main():
    if not shutil.which("glpsol"):
        print("glpsol is missing: run scripts/setup.sh test")
        sys.exit(1 if os.environ.get("FTS_ALL_TESTS") else 77)
    program, examples = sys.argv[1], pathlib.Path(sys.argv[2])
    check_small(program, examples / "steer-by-wire/steer-by-wire.xml")
    check_large(program, examples / "chassis-controller/chassis-controller.xml")
    print("\n".join(failures) or "all allocations are as expected")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
