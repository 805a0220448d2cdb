#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "faulttree/FaultTreeNode.h"
#include "model/Component.h"
#include "model/Hazard.h"
#include "model/Model.h"
#include "model/Subsystem.h"

namespace FTS {

/// A small analysed model, put together by hand so that every figure and id in its results is known
/// beforehand. Its file is /models/brake.v2.xml.
///
///   tree 20 "Loss of braking"  OR(stuck, AND(leak, demand))   a hazard of level 3
///   tree 30 "Braking late"     AND(stuck, fire)
///
/// Events: 11 stuck, 12 leak with its complement (both of Sys::Pump), 13 demand, a normal event of
/// Sys::Valve, and 14 fire, a common cause without owner.
class BrakeModel {
 public:
  BrakeModel();

  Model& Get() { return *model; }
  FaultTree& Loss() { return *model->faultTrees.at(0); }
  FaultTree& Late() { return *model->faultTrees.at(1); }

  std::shared_ptr<Component> pump;
  std::shared_ptr<Component> valve;
  std::shared_ptr<BasicEvent> stuck;
  std::shared_ptr<BasicEvent> leak;
  std::shared_ptr<BasicEvent> demand;
  std::shared_ptr<BasicEvent> fire;
  std::shared_ptr<Hazard> hazard;

 private:
  void AddEvents();
  void AddLoss();
  void AddLate();
  void AddFMEA();

  std::unique_ptr<Model> model;
  std::shared_ptr<Subsystem> system;
};

/// A model without anything, whose file is /models/<fileName>.
std::unique_ptr<Model> EmptyModel(const std::string& fileName);

/// Appends a tree with that root.
FaultTree& AddTree(Model& model, std::shared_ptr<FaultTreeNode> root);

/// Stores a cut set of these events in the tree.
void AddCutSet(FaultTree& tree, std::initializer_list<std::shared_ptr<BasicEvent>> events);

}  // namespace FTS
