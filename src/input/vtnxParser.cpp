#include "input/vtnxParser.h"

#include <iostream>
#include <optional>
#include <utility>

#include "app/Config.h"
#include "app/ProgramPath.h"
#include "input/ModelParts.h"
#include "input/XmlElements.h"
#include "model/Component.h"
#include "model/DeviationName.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Objective.h"
#include "model/Perspective.h"
#include "model/StateMachine.h"
#include "model/VtnException.h"
#include "platform/Command.h"
#include "platform/FileSystem.h"
#include "platform/ZipArchive.h"

namespace FTS {
namespace {

int lastArchiveStatus = ZipOk;

/// Has a text file turned into an archive. Whether that works shows when the archive is read.
void Convert(const std::string& path) {
  const std::string converter = ToolPath(ProgramFolder(), "vtn2vtnx");
  if (!Config::Instance().runSilent) {
    std::cout << '"' << converter << "\" \"" << path << "\"\n";
  }
  Command::Run({converter, {path}});
}

}  // namespace

vtnxParser::vtnxParser(std::string initPath)
    : Parser(initPath), path(std::move(initPath)), document(Load(path)) {
  ready = !document.HasError();
}

vtnxParser::~vtnxParser() = default;

int vtnxParser::LastArchiveStatus() { return lastArchiveStatus; }

XmlDocument vtnxParser::Load(const std::string& path) {
  if (!FileReadable(path)) throw VtnException("File does not exist: " + path);
  const std::optional<std::string> fullPath = AbsolutePath(path);
  if (!fullPath) throw VtnException("Invalid file name: " + path);
  const PathParts parts = SplitPath(*fullPath);
  if (parts.extension == ".xml") return XmlDocument::LoadFile(path);
  if (parts.extension == ".vtn") Convert(path);
  std::cout << *fullPath << '\n';
  const ZipEntry entry = ReadZipEntry(*fullPath, parts.baseName + ".xml");
  lastArchiveStatus = entry.status;
  // Without archive or entry the text is empty, which the document reports as its error.
  return XmlDocument::LoadMemory(entry.data);
}

std::unique_ptr<Model> vtnxParser::Parse() {
  constexpr int ReaderMode = 0;
  const XmlElement root = document.FirstChild("Model");
  model = std::make_unique<Model>(
      ReaderMode, path, ElementText(root, "Name"), ElementText(root, "Description"),
      ToFloat(ElementDouble(root, "VersionNumber")), ElementDouble(root, "RiskTime"));
  ReadOptimisationParams(root.FirstChild("OptimisationParams"));
  // Failure data refers to hazards and hazards' logic to deviations, hence the two passes.
  const XmlElement hazards = root.FirstChild("Hazards");
  ForEachItem(hazards, "Hazard", [this](XmlElement hazard) { ReadHazard(hazard); });
  ReadPerspectives(root);
  ForEachItem(hazards, "Hazard", [this](XmlElement hazard) { ReadHazardLogic(hazard); });
  ForEachItem(root.FirstChild("StateMachine"), "State",
              [this](XmlElement state) { ReadState(state); });
  component = nullptr;
  implementation = nullptr;
  perspective = nullptr;
  return std::move(model);
}

void vtnxParser::ReadOptimisationParams(XmlElement element) {
  model->maxGenerations = ElementInteger(element, "MaxGenerations");
  model->defaultMaxReplicants = ElementInteger(element, "DefaultMaxReplicants");
  ForEachItem(element.FirstChild("Objectives"), "Objective",
              [this](XmlElement objective) { ReadObjective(objective); });
}

void vtnxParser::ReadObjective(XmlElement element) {
  Objective objective;
  objective.name = ElementText(element, "Name");
  objective.maximise = ElementText(element, "Goal") == "Maximise";
  const XmlElement bounds = element.FirstChild("Bounds");
  objective.hasLowerBound = static_cast<bool>(bounds.FirstChild("LowerBound"));
  objective.hasUpperBound = static_cast<bool>(bounds.FirstChild("UpperBound"));
  objective.lowerBound = ElementDouble(bounds, "LowerBound");
  objective.upperBound = ElementDouble(bounds, "UpperBound");
  objective.ResetScales();
  model->objectives[objective.name] = objective;
}

void vtnxParser::ReadPerspectives(XmlElement root) {
  const XmlElement perspectives = root.FirstChild("Perspectives");
  if (!perspectives) {
    ReadDefaultPerspective(root);
    return;
  }
  ForEachItem(perspectives, "Perspective",
              [this](XmlElement element) { ReadPerspective(element); });
}

/// The hazard of the element's name, made of the element unless it is known.
std::shared_ptr<Hazard> vtnxParser::ReadHazard(XmlElement element) {
  const std::string name = ElementText(element, "Name");
  if (std::shared_ptr<Hazard> known = model->FindHazard(name)) return known;
  auto hazard = std::make_shared<Hazard>(name, model.get());
  hazard->description = ElementText(element, "Description");
  hazard->safetyRequirement = ElementInteger(element, "SafetyRequirement");
  hazard->severity = ElementDouble(element, "Severity");
  model->AddHazard(hazard);
  return hazard;
}

void vtnxParser::ReadHazardLogic(XmlElement element) {
  const std::shared_ptr<Hazard> hazard = ReadHazard(element);
  if (const XmlElement causes = element.FirstChild("Causes")) {
    ReadCauses(causes, *hazard, [this, &hazard](const std::string& text, std::int32_t) {
      return BuildHazardExpression(text, hazard->name);
    });
    return;
  }
  const std::string logic = ElementText(element, "Logic");
  if (logic.empty()) return;
  if (const NodePointer expression = BuildHazardExpression(logic, hazard->name)) {
    hazard->expression = expression;
  }
}

void vtnxParser::ReadState(XmlElement element) {
  const std::string name = ElementText(element, "Name");
  if (name.empty()) throw VtnException("State has no name.");
  StateMachine& machine = *model->stateMachine;
  const auto state = std::make_shared<State>(name, model->stateMachine);
  machine.AddState(state);
  if (element.FirstChild("StartState")) {
    state->isStart = true;
    machine.startState = state;
  }
  state->failName = ElementText(element, "FailState");
  if (!state->failName.empty()) {
    state->isFail = true;
    machine.failStates.push_back(state);
  }
  ForEachItem(element.FirstChild("Transitions"), "Transition", [&](XmlElement item) {
    const std::string cause = ElementText(item, "Cause");
    AddFailureClass(FailureClassOf(cause));
    state->transitions.push_back(std::make_shared<Transition>(
        ElementText(item, "Name"), cause, ElementText(item, "DestinationState"), state));
  });
}

std::string LineNumberNote(XmlElement element) {
  return " [line number: " + std::to_string(element.Row() + 1) + "]";
}

}  // namespace FTS
