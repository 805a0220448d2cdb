#include "model/Model.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <sstream>
#include <utility>

#include "analysis/FMEA.h"
#include "analysis/FaultTree.h"
#include "analysis/Prime.h"
#include "app/Config.h"
#include "faulttree/BasicEvent.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Objective.h"
#include "model/Perspective.h"
#include "model/PrintLine.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"
#include "platform/FileSystem.h"

namespace FTS {

// NOLINTNEXTLINE(readability-function-size): what the head of a model file says, in its order.
Model::Model(int initMode, const std::string& path, std::string initName,
             std::string initDescription, float initVersionNumber, double initRiskTime)
    : description(std::move(initDescription)),
      mode(initMode),
      name(std::move(initName)),
      riskTime(initRiskTime),
      versionNumber(initVersionNumber),
      stateMachine(std::make_shared<StateMachine>(this)) {
  const std::optional<std::string> absolute = AbsolutePath(path);
  if (!absolute) throw VtnException("Invalid file name: " + path);
  const PathParts parts = SplitPath(*absolute);
  directory = parts.drive + parts.directory;
  fileName = parts.baseName + parts.extension;
  const auto initial = std::make_shared<State>(DefaultState, stateMachine);
  stateMachine->AddState(initial);
  stateStack.push_back(initial);
}

Model::~Model() { ClearSynthesis(); }

void Model::Print(int indent, const std::string& targetFile) const {
  std::ostringstream text;
  PrintRule(text, indent);
  PrintLine(text, indent, "MODEL: " + JoinPath(directory, fileName) + " (" + name + ")");
  const std::pair<const char*, std::size_t> counts[] = {
      {"numBasicEvents: ", basicEvents.size()},
      {"numCCFs: ", ccfs.size()},
      {"numComponents: ", components.size()},
      {"numConfigurableComponents: ", configurableComponents.size()},
      {"numFailureClasses: ", failureClasses.size()},
      {"numFaultTrees: ", faultTrees.size()},
      {"numFaultTreePlusIndices: ", faultTreePlusIds.size()},
      {"numObjectives: ", objectives.size()},
      {"numSystemOutports: ", systemOutports.size()},
      {"numHazards: ", hazards.size()},
  };
  for (const auto& [title, count] : counts) PrintLine(text, indent, title + std::to_string(count));
  for (const auto& [key, perspective] : perspectives) {
    perspective->Print(text, indent + NestedIndent);
  }
  PrintLine(text, indent, "END MODEL");
  PrintRule(text, indent);
  if (targetFile.empty()) {
    std::cout << text.str();
  } else {
    std::ofstream(targetFile, std::ios::binary) << text.str();
  }
}

// Building.

void Model::AddFailureClass(const std::string& failureClass) {
  if (knownFailureClasses.insert(failureClass).second) failureClasses.push_back(failureClass);
}

bool Model::HasFailureClass(const std::string& failureClass) const {
  return knownFailureClasses.contains(failureClass);
}

void Model::AddComponent(const std::shared_ptr<Component>& component) {
  components[component->GetFullNameText()] = component;
}

void Model::AddEvent(const std::shared_ptr<BasicEvent>& event) {
  basicEvents[event->prime] = event;
}

void Model::AddFaultTree(const std::shared_ptr<FaultTree>& tree) { faultTrees.push_back(tree); }

void Model::RemoveFaultTree(const FaultTree& tree) {
  const auto found = std::find_if(faultTrees.begin(), faultTrees.end(),
                                  [&](const auto& held) { return held.get() == &tree; });
  if (found != faultTrees.end()) faultTrees.erase(found);
}

void Model::AddPerspective(const std::shared_ptr<Perspective>& perspective) {
  perspectives[perspective->name] = perspective;
}

void Model::AddConfigurableComponent(const std::shared_ptr<Component>& component) {
  configurableComponents.push_back(component);
}

void Model::AddHazard(const std::shared_ptr<Hazard>& hazard) { hazards[hazard->name] = hazard; }

// Reading.

std::string Model::GetComponentName(int index) const {
  return configurableComponents.at(static_cast<std::size_t>(index))->GetFullNameText();
}

int Model::GetImplementationCount(int index) const {
  const auto& component = configurableComponents.at(static_cast<std::size_t>(index));
  return static_cast<int>(component->implementations.size());
}

int Model::GetCurrentImplementationIndex(int index) const {
  const auto& component = configurableComponents.at(static_cast<std::size_t>(index));
  const auto& all = component->implementations;
  const auto current = std::find(all.begin(), all.end(), component->currentImplementation);
  return current == all.end() ? -1 : static_cast<int>(current - all.begin());
}

int Model::FindFaultTreeIndex(const std::string& treeName) const {
  for (std::size_t i = 0; i < faultTrees.size(); ++i) {
    const auto& root = faultTrees[i]->root;
    if (root && root->name == treeName) return static_cast<int>(i);
  }
  return -1;
}

int Model::GetPrimeCount() const { return Prime::Instance().GetIndex(); }

void Model::SetPrimeIndex(int index) { Prime::Instance().SetIndex(index); }

const Objective* Model::GetObjective(const std::string& objective) const {
  const auto found = objectives.find(objective);
  return found == objectives.end() ? nullptr : &found->second;
}

std::map<std::string, Objective>::const_iterator Model::ObjectivesBegin() const {
  return objectives.begin();
}

std::map<std::string, Objective>::const_iterator Model::ObjectivesEnd() const {
  return objectives.end();
}

double Model::GetFaultTreeUnavailability(int index) const {
  if (index < 0 || index >= GetFaultTreeCount()) return 0.0;
  return faultTrees[static_cast<std::size_t>(index)]->unavailability;
}

double Model::GetFaultTreeSeverity(int index) const {
  if (index < 0 || index >= GetFaultTreeCount()) return 0.0;
  return faultTrees[static_cast<std::size_t>(index)]->severity;
}

int Model::CountAnnotatedComponents() const {
  int count = 0;
  for (const auto& [key, perspective] : perspectives) {
    if (perspective->rootSubsystem) count += perspective->rootSubsystem->CountAnnotatedComponents();
  }
  return count;
}

std::string Model::GetFileStem() const { return SplitPath(fileName).baseName; }

std::string Model::OutputDirectory() const {
  const std::string& configured = Config::Instance().outputDir;
  if (configured.empty() || configured == "default") return directory;
  return EndsWithSeparator(configured) ? configured : configured + PathSeparator;
}

// Designs.

double Model::EvaluateCost() const {
  double sum = 0.0;
  for (const auto& [key, perspective] : perspectives) {
    if (perspective->rootSubsystem) sum += perspective->rootSubsystem->TotalCost();
  }
  return sum;
}

double Model::EvaluateWeight() const {
  double sum = 0.0;
  for (const auto& [key, perspective] : perspectives) {
    if (perspective->rootSubsystem) sum += perspective->rootSubsystem->TotalWeight();
  }
  return sum;
}

double Model::EvaluateASILCost() const {
  double sum = 0.0;  // Whole numbers, but more than an integer of 32 bits holds in a large model.
  for (const auto& [prime, event] : basicEvents) {
    sum += CostOfSafetyLevel(event->safetyRequirement);
  }
  return sum;
}

int Model::CountRequirementViolations() const {
  int sum = 0;
  for (const auto& [key, hazard] : hazards) sum += hazard->CountRequirementViolations();
  return sum;
}

void Model::WriteImplementations(const std::string& selections, std::ostream& stream) const {
  std::istringstream elements(selections);
  std::string selection;
  for (const auto& component : configurableComponents) {
    if (!std::getline(elements, selection, '|')) return;
    component->WriteImplementations(selection, stream);
    stream << '\n';
  }
}

void Model::ReindexConfigurableComponents() {
  configurableComponents.clear();
  for (const auto& [key, perspective] : perspectives) {
    if (perspective->rootSubsystem) perspective->rootSubsystem->ReindexConfigurable();
  }
}

void Model::ResetImplementations() {
  for (const auto& [key, perspective] : perspectives) {
    if (perspective->rootSubsystem) perspective->rootSubsystem->ResetImplementations();
  }
  ClearSynthesis();
  ReindexConfigurableComponents();
}

}  // namespace FTS
