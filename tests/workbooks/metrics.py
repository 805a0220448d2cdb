"""The workbook of hardware metrics: its formulas, as LibreOffice computes them, against the figures
of its first sheet, against the rates worked out here from its inputs, and against those that were
worked out by hand for an example."""
import math

from results import expect

HEADINGS = ["Component Name", "Component Failure Rate", "Failure Mode", "Failure Rate Distribution",
            "Failure Mode can violate safety goal?", "Safety Mechanism?",
            "Failure mode coverage wrt safety goal", "Residual/SPF failure rate",
            "Failure mode may violate safety goal in conjunction with other FM?", "Detection means",
            "Coverage wrt latent failures", "Latent MPF failure rate"]
SUMMARY = ["Fault Tree", "Total Failure Rate", "Single-Point Fault Metric", "Latent Fault Metric"]

# From the README of the example: rates in 1e-9 per hour.
BY_HAND = {
    "electric-power-steering": {
        "SelfSteering": (570, 2.9, 7, 1 - 2.9 / 570, 1 - 7 / 567.1),
        "LossOfAssist": (650, 177, 6, 1 - 177 / 650, 1 - 6 / 473),
    },
}


def close(found, wanted, where, digits=1e-5):
    """Workbooks hold six digits."""
    if not math.isclose(found, wanted, rel_tol=digits, abs_tol=1e-30):
        raise AssertionError("%s: %r instead of %r" % (where, found, wanted))


def check_modes(sheet, last, where):
    """The rows of failure modes; returns the sums of their three rates."""
    total = residuals = latents = 0.0
    rate = 0.0
    for row in range(2, last + 1):
        cell = {column: sheet.cells.get((row, column)) for column in range(1, 13)}
        if cell[1]:
            rate = cell[2]
            total += rate
        share, coverage, covered = cell[4], cell[7], cell[11] or 0.0
        residual = rate * share * (1 - coverage) if cell[5] == "Yes" else 0.0
        latent = (rate * share - residual) * (1 - covered) if cell[9] == "Yes" else 0.0
        expect((row, 8) in sheet.formulas, cell[5] == "Yes", where + ": formula in column 8")
        expect((row, 12) in sheet.formulas, cell[9] == "Yes", where + ": formula in column 12")
        close(cell[8], residual, "%s: residual rate in row %d" % (where, row))
        close(cell[12] or 0.0, latent, "%s: latent rate in row %d" % (where, row))
        expect(cell[6] == "None", coverage == 0, where + ": mechanism in row %d" % row)
        residuals, latents = residuals + residual, latents + latent
    return total, residuals, latents


def ratio_left(part, whole):
    """What a metric is, and what a spreadsheet says where there is nothing to divide by."""
    return 1 - part / whole if whole else "#DIV/0!"


def check_tree(name, sheet, summary):
    expect([sheet.cells.get((1, c)) for c in range(1, 13)], HEADINGS, name)
    last = max(row for row, _ in sheet.cells) - 2  # Of the modes; sums and metrics follow.
    total, residual, latent = check_modes(sheet, last, name)
    sums, metrics = last + 1, last + 2
    labels = {(sums, 1): "Total safety-related component failure rate",
              (sums, 7): "Single point failure sum",
              (sums, 11): "Latent Multiple point failure sum",
              (metrics, 7): "Single Point Fault Metric", (metrics, 11): "Latent Fault Metric"}
    expect({place: sheet.cells.get(place) for place in labels}, labels, name)
    for place, wanted in {(sums, 2): total, (sums, 8): residual, (sums, 12): latent}.items():
        expect(place in sheet.formulas, True, name + ": sum %s is a formula" % (place,))
        close(sheet.cells[place], wanted, "%s: sum %s" % (name, place))
    close(summary[1], total, name + ": total failure rate")
    for column, wanted, told in [(8, ratio_left(residual, total), summary[2]),
                                 (12, ratio_left(latent, total - residual), summary[3])]:
        computed = sheet.cells[metrics, column]
        expect((metrics, column) in sheet.formulas, True, name + ": metric is a formula")
        if isinstance(wanted, str):
            expect(computed, wanted, name + ": metric without a rate")
            expect(isinstance(told, str), True, name + ": %r in the summary" % (told,))
        else:
            close(computed, wanted, name + ": computed metric")
            close(told, wanted, name + ": metric in the summary")
    return sheet.cells[sums, 2], sheet.cells[sums, 8], sheet.cells[sums, 12]


def check(example, book):
    """Returns how many metrics were compared with those worked out by hand."""
    summary = book["Summary"].cells
    expect(summary[1, 1], "Vel-Tarn ISO26262 Analysis", "Summary")
    expect([summary.get((3, c)) for c in range(1, 5)], SUMMARY, "Summary")
    by_hand = dict(BY_HAND.get(example, {}))
    trees = list(book)[1:]
    expect(max(row for row, _ in summary), 3 + len(trees), "Summary: rows")
    compared = 0
    for row, sheet_name in enumerate(trees, 4):
        told = [summary.get((row, c)) for c in range(1, 5)]  # The name may be empty.
        rates = check_tree(sheet_name, book[sheet_name], told)
        if told[0] in by_hand:
            wanted = by_hand.pop(told[0])
            for found, rate in zip(rates, wanted):
                close(found, rate * 1e-9, told[0] + ": rate by hand")
            close(told[2], wanted[3], told[0] + ": single-point metric by hand")
            close(told[3], wanted[4], told[0] + ": latent metric by hand")
            compared += 1
    expect(by_hand, {}, example + ": trees that were not there")
    return compared
