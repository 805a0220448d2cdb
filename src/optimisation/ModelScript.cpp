// What the results page needs to know of the model beside the state of the search: bounds, and for
// safety levels the cut sets that they have to guard. A script of its own, so that the state keeps
// the form that users have tools for.

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "model/Hazard.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Objective.h"
#include "optimisation/FixedASILEncoding.h"
#include "optimisation/GA.h"
#include "optimisation/ResultFiles.h"
#include "platform/FileSystem.h"
#include "platform/XmlOutput.h"

namespace FTS {

namespace {

void ObjectivesWithBounds(const Model& model, XmlOutputElement parent) {
  const XmlOutputElement list = parent.Add("Objectives");
  for (auto entry = model.ObjectivesBegin(); entry != model.ObjectivesEnd(); ++entry) {
    const Objective& objective = entry->second;
    const XmlOutputElement element = list.Add("Objective");
    element.Add("Name", entry->first);
    element.Add("Goal", objective.maximise ? "Maximise" : "Minimise");
    if (objective.hasLowerBound) element.Add("LowerBound", FormatDouble(objective.lowerBound));
    if (objective.hasUpperBound) element.Add("UpperBound", FormatDouble(objective.upperBound));
  }
}

void HazardsWithCutSets(const Model& model, XmlOutputElement parent) {
  const XmlOutputElement list = parent.Add("Hazards");
  for (const auto& [name, hazard] : model.hazards) {
    const XmlOutputElement element = list.Add("Hazard");
    element.Add("Name", name);
    element.Add("SIL", std::to_string(hazard->safetyRequirement));
    const XmlOutputElement sets = element.Add("CutSets");
    if (!hazard->faultTree) continue;
    for (const auto& [product, cutSet] : hazard->faultTree->cutSets) {
      const XmlOutputElement set = sets.Add("CutSet");
      for (const BasicEvent* event : cutSet->events) {
        set.Add("Event", EventText(*event)).SetAttribute("ID", PrimeText(event->prime));
      }
    }
  }
}

}  // namespace

void GA::WriteModelScript() const {
  XmlOutput document("OptimisationModel");
  ObjectivesWithBounds(*model, document.Root());
  if (Config::Instance().decomposeSILs) HazardsWithCutSets(*model, document.Root());
  WriteScript(JoinPath(ResultsFolder(), GetRunName() + "-Model.js"), "OptimisationModel",
              document.Text());
}

}  // namespace FTS
