// The workbook of hardware architectural metrics: what the program has computed on the first sheet,
// and the calculation itself, in formulas that stay alive, on a sheet for each tree.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "analysis/HardwareMetrics.h"
#include "faulttree/BasicEvent.h"
#include "model/Component.h"
#include "model/Model.h"
#include "output/Workbook.h"

namespace FTS {
namespace {

constexpr const char* Headings[] = {
    "Component Name",
    "Component Failure Rate",
    "Failure Mode",
    "Failure Rate Distribution",
    "Failure Mode can violate safety goal?",
    "Safety Mechanism?",
    "Failure mode coverage wrt safety goal",
    "Residual/SPF failure rate",
    "Failure mode may violate safety goal in conjunction with other FM?",
    "Detection means",
    "Coverage wrt latent failures",
    "Latent MPF failure rate",
};

// The columns of the sums.
constexpr int SinglePointLabel = 7;
constexpr int LatentLabel = 11;

const char* YesOrNo(bool value) { return value ? "Yes" : "No"; }

/// So many rows further up, as a formula names them.
std::string RowAbove(int rows) { return rows == 0 ? "R" : "R[-" + std::to_string(rows) + "]"; }

void WriteSummary(Workbook& out, const Model& model) {
  out.StartSheet("Summary", {200.25});
  out.StartRow();
  out.Text({}, "Vel-Tarn ISO26262 Analysis");
  out.EndRow();
  out.StartRow();
  out.EndRow();
  out.StartRow();
  for (const char* heading :
       {"Fault Tree", "Total Failure Rate", "Single-Point Fault Metric", "Latent Fault Metric"}) {
    out.Text({}, heading);
  }
  out.EndRow();
  for (const auto& tree : model.faultTrees) {
    tree->ComputeHardwareMetrics(model);
    out.StartRow();
    out.Text({}, TreeTitle(*tree));
    for (const double figure :
         {tree->totalFailureRate, tree->singlePointMetric, tree->latentFaultMetric}) {
      out.Number({}, figure);
    }
    out.EndRow();
  }
  out.EndSheet();
}

/// The columns from the failure mode on; the component's rate stands `rowsBack` rows further up.
void WriteModeCells(Workbook& out, const FailureModeMetrics& mode, int rowsBack) {
  constexpr int ModeColumn = 3;
  out.Text({.column = rowsBack > 0 ? ModeColumn : 0}, mode.event->name);
  out.Number({}, mode.share);
  out.Text({}, YesOrNo(mode.single));
  out.Text({}, mode.mechanism.empty() ? "None" : mode.mechanism);
  out.Number({}, mode.coverage);
  if (mode.single) {
    out.Formula({}, "=" + RowAbove(rowsBack) + "C[-6]*RC[-4]*(1-RC[-1])");
  } else {
    out.Number({}, 0);
  }
  out.Text({}, YesOrNo(mode.dual));
  out.Text({}, "");  // How it is detected: for the user to fill in.
  if (mode.dual) {
    out.Number({}, mode.latentCoverage);
    out.Formula({}, "=(" + RowAbove(rowsBack) + "C[-10]*RC[-8]-RC[-4])*(1-RC[-1])");
  } else {
    out.Text({}, "");
    out.Text({}, "");
  }
}

void WriteComponent(Workbook& out, const ComponentMetrics& metrics) {
  const int count = static_cast<int>(metrics.modes.size());
  for (int i = 0; i < count; ++i) {
    if (i > 0) {
      out.StartNextRow();
    } else {
      out.StartRow();
      out.Text({.mergeDown = MergeOver(count)}, metrics.component->GetFullNameText());
      out.Number({.mergeDown = MergeOver(count)}, metrics.failureRate);
    }
    WriteModeCells(out, metrics.modes[i], i);
    out.EndRow();
  }
}

void WriteLabelled(Workbook& out, int column, const char* label, const std::string& formula) {
  out.Text({.column = column}, label);
  out.Formula({}, formula);
}

void WriteSums(Workbook& out) {
  // The rows from the second on; without any, the heading's, whose texts add up to 0.
  const std::string sum = "=SUM(" + RowAbove(std::max(out.GetRow() - 1, 1)) + "C:R[-1]C)";
  out.StartNextRow();
  WriteLabelled(out, 1, "Total safety-related component failure rate", sum);
  WriteLabelled(out, SinglePointLabel, "Single point failure sum", sum);
  WriteLabelled(out, LatentLabel, "Latent Multiple point failure sum", sum);
  out.EndRow();
  out.StartNextRow();
  WriteLabelled(out, SinglePointLabel, "Single Point Fault Metric", "=1-(R[-1]C/R[-1]C[-6])");
  WriteLabelled(out, LatentLabel, "Latent Fault Metric", "=1-(R[-1]C/(R[-1]C[-10]-R[-1]C[-4]))");
  out.EndRow();
}

}  // namespace

void Model::WriteISO26262Workbook() {
  const std::unique_ptr<Workbook> out = WriteWorkbookHead("ISO26262");
  if (!out) return;
  WriteSummary(*out, *this);
  for (const auto& tree : faultTrees) tree->WriteISO26262Sheet(*out);
}

void FaultTree::WriteISO26262Sheet(Workbook& stream) const {
  stream.StartSheet(stream.SheetOf(*this), {});
  stream.StartRow();
  for (const char* heading : Headings) stream.Text({}, heading);
  stream.EndRow();
  for (const ComponentMetrics& metrics : CollectHardwareMetrics(*this, stream.GetModel())) {
    WriteComponent(stream, metrics);
  }
  WriteSums(stream);
  stream.EndSheet();
}

}  // namespace FTS
