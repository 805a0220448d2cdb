#include "support/BrakeModel.h"

#include <utility>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "analysis/FMEA.h"
#include "faulttree/BasicEvent.h"
#include "faulttree/Gates.h"
#include "model/CCF.h"
#include "model/Perspective.h"

namespace FTS {

namespace {

void SetFigures(BasicEvent& event, double unavailability, double frequency) {
  event.unavailability = unavailability;
  event.frequency = frequency;
}

}  // namespace

std::unique_ptr<Model> EmptyModel(const std::string& fileName) {
  return std::make_unique<Model>(0, "/models/" + fileName, "A model", "", 1.0F, 1000.0);
}

FaultTree& AddTree(Model& model, std::shared_ptr<FaultTreeNode> root) {
  model.AddFaultTree(std::make_shared<FaultTree>(std::move(root)));
  return *model.faultTrees.back();
}

void AddCutSet(FaultTree& tree, std::initializer_list<std::shared_ptr<BasicEvent>> events) {
  auto cutSet = std::make_unique<CutSet>();
  for (const auto& event : events) cutSet->AddEvent(*event);
  tree.AddCutSet(std::move(cutSet), false);
}

BrakeModel::BrakeModel() : model(EmptyModel("brake.v2.xml")) {
  const auto perspective = std::make_shared<Perspective>("Sys", model.get());
  system = std::make_shared<Subsystem>(model.get());
  system->perspective = perspective;
  perspective->rootSubsystem = system;
  model->AddPerspective(perspective);
  pump = std::make_shared<Component>("Pump", system, model.get());
  pump->sid = "S-1";
  valve = std::make_shared<Component>("Valve", system, model.get());
  system->AddComponent(pump);
  system->AddComponent(valve);
  AddEvents();
  AddLoss();
  AddLate();
  AddFMEA();
}

void BrakeModel::AddEvents() {
  stuck = std::make_shared<BasicEvent>("stuck", model.get(), true, NodeType::FailureMode, 11);
  stuck->description = "Shaft \"stuck\" & cold";
  stuck->owner = pump;
  SetFigures(*stuck, 0.0025, 1.2e-05);
  leak = std::make_shared<BasicEvent>("leak", model.get(), true, NodeType::FailureMode, 12);
  leak->owner = pump;
  SetFigures(*leak, 0.25, 0.125);
  leak->GetComplement();
  demand = std::make_shared<NormalEvent>("demand", model.get(), true, 13);
  demand->owner = valve;
  SetFigures(*demand, 1.0, 0.0);
  fire = std::make_shared<CCF>("fire", model.get(), nullptr, true, 14);
  SetFigures(*fire, 0.5, 4.0);
  for (const auto& event : {stuck, leak, demand, fire}) model->AddEvent(event);
}

void BrakeModel::AddLoss() {
  const auto both = std::make_shared<AndGate>("", model.get(), 22);
  both->AddChild(leak);
  both->AddChild(demand);
  const auto root = std::make_shared<OrGate>("Loss of braking", model.get(), 20);
  root->description = "No pressure & <b>no</b> stop";
  root->AddChild(stuck);
  root->AddChild(both);
  hazard = std::make_shared<Hazard>("Loss of braking", model.get());
  hazard->safetyRequirement = 3;
  model->AddHazard(hazard);
  FaultTree& tree = AddTree(*model, root);
  tree.source = hazard;
  tree.severity = 2.5;
  tree.unavailability = 0.5012345678;
  tree.frequency = 1.5e-07;
  tree.maxOrder = 2;
  AddCutSet(tree, {stuck});
  AddCutSet(tree, {leak, demand});
}

void BrakeModel::AddLate() {
  const auto root = std::make_shared<AndGate>("Braking late", model.get(), 30);
  root->AddChild(stuck);
  root->AddChild(fire);
  FaultTree& tree = AddTree(*model, root);
  tree.maxOrder = 2;
  AddCutSet(tree, {stuck, fire});
}

void BrakeModel::AddFMEA() {
  model->fmea = std::make_shared<FMEA>(*model);
  for (const auto& event : {stuck, leak, demand, fire}) model->fmea->AddEvent(event);
  const auto loss = model->faultTrees.at(0);
  const auto late = model->faultTrees.at(1);
  model->fmea->AddEffect(stuck->prime, loss, true);
  model->fmea->AddEffect(leak->prime, loss, false);
  model->fmea->AddEffect(demand->prime, loss, false);
  model->fmea->AddEffect(stuck->prime, late, false);
  model->fmea->AddEffect(fire->prime, late, false);
}

}  // namespace FTS
