#include "model/Implementation.h"

#include <utility>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/GraphRelease.h"
#include "model/Model.h"
#include "model/NumberText.h"
#include "model/Port.h"
#include "model/PrintLine.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

template <typename Map>
typename Map::mapped_type FindIn(const Map& map, const std::string& key) {
  const auto found = map.find(key);
  return found == map.end() ? nullptr : found->second;
}

template <typename Map>
void PrintAll(const Map& map, std::ostream& stream, int indent) {
  for (const auto& [name, object] : map) object->Print(stream, indent + NestedIndent);
}

const StateLogic& LogicForWalk(const Implementation& implementation, const std::string& state,
                               const char* kind) {
  const auto found = implementation.stateLogic.find(state);
  if (found != implementation.stateLogic.end()) return *found->second;
  throw VtnException("Cannot find state: " + state + " when looking up " + kind +
                     " deviations in implementation " + implementation.name);
}

void ResetCutSets(const IFailureCause& deviation) {
  if (deviation.expression) deviation.expression->ResetCutSets();
}

}  // namespace

Implementation::Implementation(std::string initName, const std::shared_ptr<Component>& initOwner,
                               Model* initModel)
    : owner(initOwner), name(std::move(initName)), model(initModel) {
  AddStateLogic(std::make_shared<StateLogic>(DefaultState));
}

Implementation::~Implementation() = default;

void Implementation::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "IMPLEMENTATION: " + name);
  PrintLine(stream, indent, "Desc: " + description);
  PrintLine(stream, indent, "Block type: " + ToText(hBlockType));
  PrintLine(stream, indent, "Cost: " + FormatDouble(cost));
  PrintLine(stream, indent, "Weight: " + FormatDouble(weight));
  PrintAll(basicEvents, stream, indent);
  PrintAll(inputDeviationRecords, stream, indent);
  PrintAll(ccfNodes, stream, indent);
  for (const auto& [state, logic] : stateLogic) {
    PrintLine(stream, indent, "STATE: " + state);
    PrintAll(logic->exportedDeviations, stream, indent);
    PrintAll(logic->outputDeviations, stream, indent);
  }
  if (subsystem) subsystem->Print(stream, indent + NestedIndent);
  PrintLine(stream, indent, "END IMPLEMENTATION");
}

std::shared_ptr<StateLogic> Implementation::GetStateLogic(const std::string& state) const {
  return FindIn(stateLogic, state);
}

std::shared_ptr<OutputDeviation> Implementation::GetOutputDeviation(
    const std::string& deviation, const std::string& state) const {
  const std::shared_ptr<StateLogic> logic = GetStateLogic(state);
  return logic ? FindIn(logic->outputDeviations, deviation) : nullptr;
}

std::shared_ptr<ExportedDeviation> Implementation::GetExportedDeviation(
    const std::string& deviation, const std::string& state) const {
  const std::shared_ptr<StateLogic> logic = GetStateLogic(state);
  return logic ? FindIn(logic->exportedDeviations, deviation) : nullptr;
}

StateLogic::OutputDeviations::const_iterator Implementation::OutputDeviationsBegin(
    const std::string& state) const {
  return LogicForWalk(*this, state, "output").outputDeviations.begin();
}

StateLogic::OutputDeviations::const_iterator Implementation::OutputDeviationsEnd(
    const std::string& state) const {
  return LogicForWalk(*this, state, "output").outputDeviations.end();
}

StateLogic::ExportedDeviations::const_iterator Implementation::ExportedDeviationsBegin(
    const std::string& state) const {
  return LogicForWalk(*this, state, "exported").exportedDeviations.begin();
}

StateLogic::ExportedDeviations::const_iterator Implementation::ExportedDeviationsEnd(
    const std::string& state) const {
  return LogicForWalk(*this, state, "exported").exportedDeviations.end();
}

int Implementation::CountOutputDeviations(const std::string& state) const {
  const std::shared_ptr<StateLogic> logic = GetStateLogic(state);
  return logic ? static_cast<int>(logic->outputDeviations.size()) : 0;
}

void Implementation::AddBasicEvent(const std::shared_ptr<BasicEvent>& event) {
  basicEvents[event->name] = event;
}

void Implementation::AddInputDeviation(const std::shared_ptr<InputDeviation>& deviation) {
  inputDeviationRecords[deviation->GetLocalName()] = deviation;
}

void Implementation::AddInputDeviationProxy(const std::shared_ptr<InputDeviationProxy>& proxy) {
  inputDeviations.emplace(proxy->deviation ? proxy->deviation->GetLocalName() : proxy->name, proxy);
}

void Implementation::AddPCCF(const std::shared_ptr<PCCFProxy>& proxy) {
  ccfNodes[proxy->name] = proxy;
}

void Implementation::AddStateLogic(const std::shared_ptr<StateLogic>& logic) {
  stateLogic[logic->state] = logic;
}

void Implementation::AddOutputDeviation(const std::shared_ptr<OutputDeviation>& deviation,
                                        const std::string& state) {
  std::shared_ptr<StateLogic>& logic = stateLogic[state];
  if (!logic) logic = std::make_shared<StateLogic>(state);
  logic->outputDeviations[deviation->GetLocalName()] = deviation;
}

void Implementation::AddExportedDeviation(const std::shared_ptr<ExportedDeviation>& deviation,
                                          const std::string& state) {
  std::shared_ptr<StateLogic>& logic = stateLogic[state];
  if (!logic) logic = std::make_shared<StateLogic>(state);
  logic->exportedDeviations[deviation->GetLocalName()] = deviation;
}

void Implementation::Instantiate() {
  const std::shared_ptr<Component> component = GetOwner();
  for (const auto& [eventName, event] : basicEvents) model->AddEvent(event);
  for (const auto& [state, logic] : stateLogic) {
    InstantiateOutputs(*logic, component);
    InstantiateExports(*logic, component);
  }
  if (subsystem) subsystem->Instantiate();
}

void Implementation::InstantiateOutputs(const StateLogic& logic,
                                        const std::shared_ptr<Component>& component) {
  for (const auto& [deviationName, deviation] : logic.outputDeviations) {
    const std::shared_ptr<OutputDeviation> copy = deviation->Copy(component);
    const std::shared_ptr<Port> port = copy->GetPort();
    if (port) port->AddOutputDeviation(copy, logic.state);
    if (copy->IsSystemOutput()) model->systemOutports.push_back(copy);
  }
}

void Implementation::InstantiateExports(const StateLogic& logic,
                                        const std::shared_ptr<Component>& component) {
  for (const auto& [deviationName, deviation] : logic.exportedDeviations) {
    if (deviation->expression) {
      deviation->instance =
          CloneTemplate(*deviation->expression, model, CloneMode::NewNodes, component);
    }
    // A label wins over an exported name, and the state "default" over the others.
    const auto [target, fresh] =
        model->gotoTargets.try_emplace(deviation->GetFullName(), deviation);
    if (!fresh && target->second->exported && logic.state == DefaultState) {
      target->second = deviation;
    }
  }
}

void Implementation::Clear() {
  for (const auto& [eventName, event] : basicEvents) ForgetAnalysis(*event);
  for (const auto& [recordName, record] : inputDeviationRecords) record->eventNode.reset();
  for (const auto& [proxyName, proxy] : inputDeviations) proxy->ResetCutSets();
  for (const auto& [proxyName, proxy] : ccfNodes) {
    proxy->ResetCutSets();
    ForgetAnalysis(*proxy->node);
  }
  for (const auto& [state, logic] : stateLogic) {
    for (const auto& [deviationName, deviation] : logic->outputDeviations) ResetCutSets(*deviation);
    for (const auto& [deviationName, deviation] : logic->exportedDeviations) {
      ResetCutSets(*deviation);
      deviation->resolved = false;
      ReleaseGraphs({std::exchange(deviation->instance, nullptr)});
    }
  }
  if (subsystem) subsystem->Clear();
}

}  // namespace FTS
