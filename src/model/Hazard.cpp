#include "model/Hazard.h"

#include <cstdint>
#include <utility>

#include "analysis/CutSet.h"
#include "analysis/FaultTree.h"
#include "faulttree/BasicEvent.h"
#include "model/Model.h"
#include "model/PrintLine.h"

namespace FTS {

Hazard::Hazard(std::string initName, Model* initModel)
    : IFailureCause(OfHazard), model(initModel), name(std::move(initName)) {}

Hazard::~Hazard() = default;

std::shared_ptr<Hazard> Hazard::Clone(Model* target) const {
  auto copy = std::make_shared<Hazard>(name, target);
  copy->description = description;
  copy->safetyRequirement = safetyRequirement;
  copy->severity = severity;
  if (expression) copy->expression = CloneTemplate(*expression, target, CloneMode::KeepIdentity);
  return copy;
}

void Hazard::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "Hazard: " + name);
  PrintLine(stream, indent, "Desc: " + description);
  PrintLine(stream, indent, "Safety Requirement: " + std::to_string(safetyRequirement));
  PrintLine(stream, indent, "Cause: ");
  if (expression) expression->Print(stream, indent + NestedIndent);
  PrintLine(stream, indent, "End of hazard");
}

int Hazard::CountRequirementViolations() const {
  if (!faultTree) return 0;
  int count = 0;
  for (const auto& [product, cutSet] : faultTree->cutSets) {
    std::int64_t sum = 0;  // A reader may have set any level.
    for (const BasicEvent* event : cutSet->events) {
      // Levels are allocated to the events of the model's table; a module's member is one of them.
      const auto allocated = model->basicEvents.find(event->prime);
      sum += allocated == model->basicEvents.end() ? event->safetyRequirement
                                                   : allocated->second->safetyRequirement;
    }
    if (sum < safetyRequirement) ++count;
  }
  return count;
}

}  // namespace FTS
