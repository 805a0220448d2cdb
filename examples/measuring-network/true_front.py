#!/usr/bin/env python3
"""Works out the true front of measuring-network.xml, without the program.

    true_front.py single|doubled                   prints it: cost, unavailability, what is bought
    true_front.py single|doubled STATE.xml ...     compares what searches have found with it

"single" are the designs with one of each component (encodingType=TREE without replicas), "doubled"
those with one or two of each (encodingType=FIXED).

A component fails with the figure of its implementation, or with the product of both. The forecast
is lost with any of the four central components, or with any two stations. So with independent cut
sets (Esary and Proschan 1963)

    1 - Q = prod over central c (1 - c) * prod over pairs of stations, a of one, b of the other (1 - a b)

Products of two stations are small enough that the logarithm of the second factor is the sum of
S_i S_j, with S_i the sum of the figures of station i. So a station counts by its cost and S alone,
and the front of the whole comes out of the fronts of the parts. The figures that are printed are
those of the formula, with six digits.
"""
import itertools
import math
import os
import sys
import xml.etree.ElementTree as ElementTree

STATIONS = ("Spring", "Gorge", "Meadow", "Bridge")
STATION_PARTS = ("Gauge", "Logger", "Supply", "Link")
CENTRAL_PARTS = ("Receiver", "Network", "Server", "Forecast")


def read(path):
    """The implementations of each component: name, cost, figure. And the most that may be spent."""
    model = ElementTree.parse(path).getroot()
    parts = {}
    for component in model.find("System/Components"):
        both = component.find("Implementations")
        kinds = [both.find("Current"), *both.findall("Alternatives/Alternative")]
        parts[component.findtext("Name")] = [
            (kind.findtext("Name"), int(kind.findtext("Cost")), float(kind.findtext(".//Unavailability")))
            for kind in kinds]
    return parts, int(model.findtext(".//UpperBound"))


def choices(kinds, doubled):
    """One of the implementations, or two of them: cost, figure, what is bought."""
    single = [(cost, figure, (name,)) for name, cost, figure in kinds]
    pairs = [(a[0] + b[0], a[1] * b[1], a[2] + b[2])
             for a, b in itertools.combinations_with_replacement(single, 2)]
    return front(single + pairs) if doubled else front(single)


def front(designs):
    """Those that no other one beats in the first two entries."""
    best = []
    for design in sorted(designs, key=lambda design: design[:2]):
        if not best or design[1] < best[-1][1]:
            best.append(design)
    return best


def series(parts, names, doubled, weigh):
    """The front of components of which none may fail. Each design lists name, bought and figure."""
    designs = [(0, 0.0, ())]
    for name in names:
        designs = front((cost + more, sum_ + weigh(figure), bought + ((name, kinds, figure),))
                        for cost, sum_, bought in designs
                        for more, figure, kinds in choices(parts[name], doubled))
    return designs


def stations(parts, doubled, limit):
    """By cost and the sum of S_i S_j. On the way a design counts by its own sum of S as well."""
    designs = {0: [(0.0, 0.0, ())]}
    for station in STATIONS:
        own = series(parts, [part + station for part in STATION_PARTS], doubled, lambda figure: figure)
        longer = {}
        for cost, some in designs.items():
            for more, figure, bought in own:
                if cost + more <= limit:
                    longer.setdefault(cost + more, []).extend(
                        (total + figure, pairs + total * figure, so_far + (bought,))
                        for total, pairs, so_far in some)
        designs = {cost: front(some) for cost, some in longer.items()}
    return front((cost, min(some, key=lambda design: design[1])[1:]) for cost, some in designs.items())


def unavailability(central, own):
    logarithm = sum(math.log1p(-figure) for _, _, figure in central)
    for one, other in itertools.combinations(own, 2):
        logarithm += sum(math.log1p(-a * b) for _, _, a in one for _, _, b in other)
    return float("%.6g" % -math.expm1(logarithm))


def true_front(path, doubled):
    parts, limit = read(path)
    central = series(parts, CENTRAL_PARTS, doubled, lambda figure: -math.log1p(-figure))
    whole = front((a + c, pairs + sum_, (bought, own)) for a, sum_, bought in central
                  for c, (pairs, own) in stations(parts, doubled, limit) if a + c <= limit)
    return front((cost, unavailability(*design), design) for cost, _, design in whole)


def found(state, limit):
    """The designs of a saved search that are within the bounds, by cost."""
    best = {}
    for individual in ElementTree.parse(state).getroot().iter("Individual"):
        values = {item.findtext("Name"): float(item.findtext("Value"))
                  for item in individual.iter("Evaluation")}
        cost, lost = values["Cost"], values["Unavailability(NoForecast)"]
        if cost <= limit:
            best[cost] = min(lost, best.get(cost, 1.0))
    return best


def compare(wanted, best):
    """States hold six decimals, and so much is compared."""
    hit = sum(best.get(cost) == float("%.6f" % lost) for cost, lost, _ in wanted)
    worst = max(min(other for price, other in best.items() if price <= cost) / lost
                for cost, lost, _ in wanted)
    return f"{hit} of {len(wanted)} designs; for the same money at most {worst:.3f} times the figure"


def main(kind, *states):
    path = os.path.join(os.path.dirname(os.path.abspath(__file__)), "measuring-network.xml")
    wanted = true_front(path, {"single": False, "doubled": True}[kind])
    for state in states:
        print(state, compare(wanted, found(state, read(path)[1])), sep="\n  ")
    if not states:
        for cost, lost, (central, own) in wanted:
            bought = "; ".join(", ".join(name + " " + "+".join(kinds) for name, kinds, _ in group)
                               for group in (central, *own))
            print(cost, lost, bought)


if __name__ == "__main__":
    if len(sys.argv) < 2 or sys.argv[1] not in ("single", "doubled"):
        sys.exit(__doc__)
    main(*sys.argv[1:])
