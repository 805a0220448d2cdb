#include "output/ResultsWriter.h"

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/BasicEvent.h"
#include "model/BuildInfo.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Model.h"
#include "model/NumberText.h"

namespace FTS {

namespace {

int IdOf(const FaultTree& tree) { return tree.root ? tree.root->GetId() : 0; }

std::string_view NameOf(const FaultTree& tree) {
  return tree.root ? std::string_view(tree.root->name) : "?";
}

/// Several writers may meet the same tree, which need not be told more than once.
void AddWarningOnce(const std::string& text) {
  DiagnosticLog& log = DiagnosticLog::Instance();
  const std::vector<std::string>& held = log.Warnings();
  if (std::find(held.begin(), held.end(), text) == held.end()) log.AddWarning(text);
}

}  // namespace

ResultsWriter::ResultsWriter(std::int64_t initNodeLimit) : nodeLimit(initNodeLimit) {}

void ResultsWriter::SelectTreeState(Model& model) {
  if (Config::Instance().outputContractedTrees) return;
  for (const auto& tree : model.faultTrees) {
    if (!tree->root) continue;
    tree->root->ClearVisited();
    tree->root->SetCurrentState(DefaultState);
  }
}

void ResultsWriter::WriteRootStart(const std::string* modelName) {
  out << R"(<?xml version="1.0" encoding="iso-8859-1" ?><Vel-Tarn_Results)";
  if (modelName) out << " model=\"" << *modelName << "\"";
  out << " build=\"" << BuildEdition << "\" majorVersion=\"" << MajorVersion << "\" minorVersion=\""
      << MinorVersion << "\" version=\"" << BuildNumber << "\" versionDate=\"" << BuildDate
      << "\">";
}

void ResultsWriter::WriteRootEnd() { out << "</Vel-Tarn_Results>"; }

void ResultsWriter::WriteElement(std::string_view element, std::string_view text) {
  out << "<" << element << ">" << text << "</" << element << ">";
}

void ResultsWriter::WriteElement(std::string_view element, double figure) {
  WriteElement(element, FormatDouble(figure));
}

void ResultsWriter::WriteUnavailabilitySort(double unavailability) {
  WriteElement("UnavailabilitySort", FormatSortKey(unavailability));
}

void ResultsWriter::Enter(DiagnosticLog& log) {
  WriteWarnings(log, [](const std::string& text) { return text; });
}

void ResultsWriter::WriteWarnings(const DiagnosticLog& log, const TextForm& form) {
  const std::vector<std::string>& warnings = log.Warnings();
  if (warnings.empty()) return;
  const int held = static_cast<int>(warnings.size());
  out << "<WarningList>";
  if (held < log.ReportedWarnings()) {
    out << "<Warning>Excessive number of warnings; displaying first " << held << " of "
        << log.ReportedWarnings() << " only.</Warning>";
  }
  for (const std::string& warning : warnings) WriteElement("Warning", form(warning));
  out << "</WarningList>";
}

// Failure modes and effects

void ResultsWriter::WriteFMEA(Model& model) {
  if (model.fmea && Config::Instance().generateFMEAXML) Visit(*model.fmea);
}

void ResultsWriter::Enter(FMEA& fmea) {
  out << "<FMEA>";
  for (const auto& [key, events] : fmea.eventsByComponent) {
    out << "<Component>";
    WriteElement("Name", key.empty() ? "None" : key);
    out << "<Events>";
    for (const auto& event : events) {
      WriteEventBlock(fmea, *event, false);
      if (event->complement) WriteEventBlock(fmea, *event->complement, true);
    }
    out << "</Events>";
    // All events of an entry share their owner, or have none.
    const std::shared_ptr<Component> owner =
        events.empty() ? nullptr : events.front()->owner.lock();
    if (owner && !owner->sid.empty()) WriteElement("SID", owner->sid);
    out << "</Component>";
  }
}

void ResultsWriter::Leave(FMEA&) { out << "</FMEA>"; }

void ResultsWriter::WriteEventBlock(const FMEA& fmea, const BasicEvent& event, bool linked) {
  const std::string element = event.GetTypeName();
  out << "<" << element << " ID=\"" << event.GetId() << "\">";
  WriteElement("Name", event.GetFullName());
  WriteElement("ShortName", event.name);
  WriteElement("Description", event.description);
  WriteElement("Unavailability", event.GetUnavailability());
  WriteElement("Frequency", event.GetFrequency());
  if (linked) out << "<Children/>";
  WriteEffects(fmea, event);
  out << "</" << element << ">";
}

void ResultsWriter::WriteEffects(const FMEA& fmea, const BasicEvent& event) {
  out << "<Effects>";
  for (const auto& tree : fmea.GetDirectEffects(event)) WriteEffect(*tree, true);
  for (const auto& tree : fmea.GetFurtherEffects(event)) WriteEffect(*tree, false);
  out << "</Effects>";
}

void ResultsWriter::WriteEffect(const FaultTree& tree, bool direct) {
  out << "<Effect ID=\"" << IdOf(tree) << "\">";
  WriteElement("Name", NameOf(tree));
  WriteElement("SinglePointFailure", direct ? "true" : "false");
  out << "</Effect>";
}

// Fault trees

void ResultsWriter::WriteCutSetsDocument(Model& model, FaultTree& tree) {
  const std::string modelName = model.GetFileStem();
  WriteRootStart(&modelName);
  out << "<FaultTrees>";
  WriteFMEA(model);
  WriteFaultTree(tree, false, true);
  out << "</FaultTrees>";
  WriteRootEnd();
}

void ResultsWriter::WriteFaultTree(FaultTree& tree, bool withTree, bool withAllCutSets) {
  out << "<FaultTree ID=\"" << IdOf(tree) << "\">";
  WriteFaultTreeSummary(tree);
  if (withTree) WriteTopNode(tree);
  if (!tree.cutSets.empty()) {
    WriteCutSetsSummary(tree);
    if (withAllCutSets) WriteAllCutSets(tree);
  }
  out << "</FaultTree>";
}

void ResultsWriter::WriteFaultTreeSummary(const FaultTree& tree) {
  WriteElement("Name", NameOf(tree));
  WriteElement("Description", tree.root ? tree.root->description : tree.label);
  if (const std::shared_ptr<Hazard> hazard = tree.source.lock()) {
    out << "<SIL>" << hazard->safetyRequirement << "</SIL>";
  }
  WriteElement("Unavailability", tree.unavailability);
  WriteElement("Frequency", tree.frequency);
  WriteUnavailabilitySort(tree.unavailability);
  WriteElement("Severity", tree.severity);
}

void ResultsWriter::WriteTopNode(FaultTree& tree) {
  nodesLeft = nodeLimit;
  cutShort = false;
  out << "<TopNode>";
  if (tree.root) tree.root->Accept(*this);
  out << "</TopNode>";
  if (!cutShort) return;
  AddWarningOnce("Fault tree is written in part only, as it has more than " +
                 std::to_string(nodeLimit) + " nodes with shared ones repeated: " + tree.GetName());
}

void ResultsWriter::WriteCutSetsSummary(const FaultTree& tree) {
  const std::map<int, int> counts = tree.CountCutSetsByOrder();
  const int last = Config::Instance().countNormalEvents ? tree.maxOrder : tree.maxOrder + 1;
  out << "<CutSetsSummary>";
  for (int order = 1; order <= last; ++order) {
    const auto pruned = tree.prunedCounts.find(order);
    const bool isPruned = pruned != tree.prunedCounts.end();
    const auto found = counts.find(order);
    const int count = isPruned ? pruned->second : found != counts.end() ? found->second : 0;
    if (count == 0) continue;
    out << "<CutSets order=\"" << order << "\" pruned=\"" << (isPruned ? "true" : "false") << "\">"
        << count << "</CutSets>";
  }
  out << "</CutSetsSummary>";
}

void ResultsWriter::WriteAllCutSets(FaultTree& tree) {
  out << "<AllCutSets>";
  if (Config::Instance().countNormalEvents) {
    WriteCutSetsBySize(tree);
  } else {
    WriteCutSetsByEffectiveOrder(tree);
  }
  out << "</AllCutSets>";
}

void ResultsWriter::WriteCutSetsBySize(FaultTree& tree) {
  for (int order = 1; order <= tree.maxOrder; ++order) {
    out << "<CutSets order=\"" << order << "\">";
    for (const auto& [prime, listsBySize] : tree.primeIndex->lists) {
      const auto found = listsBySize.find(order);
      if (found != listsBySize.end()) Visit(*found->second);
    }
    out << "</CutSets>";
  }
}

void ResultsWriter::WriteCutSetsByEffectiveOrder(FaultTree& tree) {
  std::map<int, std::vector<CutSet*>> byOrder;
  for (const auto& [key, cutSet] : tree.cutSets) {
    byOrder[cutSet->GetEffectiveOrder()].push_back(cutSet.get());
  }
  for (int order = 0; order <= tree.maxOrder; ++order) {
    // One more than the order, so that cut sets of normal events alone stand under 1, and a blank
    // at the end of the tag: readers of this format tell the two ways of counting apart by it.
    out << "<CutSets order=\"" << order + 1 << "\" >";
    for (CutSet* cutSet : byOrder[order]) Visit(*cutSet);
    out << "</CutSets>";
  }
}

void ResultsWriter::Enter(CutSet& cutSet) {
  const double unavailability = cutSet.GetUnavailability();
  out << "<CutSet>";
  WriteElement("Unavailability", unavailability);
  WriteElement("Frequency", cutSet.GetFrequency());
  WriteUnavailabilitySort(unavailability);
  out << "<Events>";
}

void ResultsWriter::Leave(CutSet&) { out << "</Events></CutSet>"; }

}  // namespace FTS
