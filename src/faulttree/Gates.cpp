#include "faulttree/Gates.h"

#include <array>
#include <cassert>
#include <iostream>
#include <utility>

#include "analysis/CutSet.h"
#include "faulttree/BasicEvent.h"
#include "model/NumberText.h"

namespace FTS {

namespace {

using Maker = std::shared_ptr<FaultTreeGate> (*)(std::string name, Model* model, int id);

template <typename Gate>
std::shared_ptr<FaultTreeGate> Make(std::string name, Model* model, int id) {
  return std::make_shared<Gate>(std::move(name), model, id);
}

struct GateKind {
  NodeType type;
  Maker make;
};

constexpr std::array<GateKind, 6> GateKinds = {{{NodeType::Or, &Make<OrGate>},
                                                {NodeType::And, &Make<AndGate>},
                                                {NodeType::PAnd, &Make<PandGate>},
                                                {NodeType::SAnd, &Make<SandGate>},
                                                {NodeType::POr, &Make<PorGate>},
                                                {NodeType::XOr, &Make<XorGate>}}};

}  // namespace

std::shared_ptr<FaultTreeGate> MakeGate(NodeType type, std::string name, Model* model, int id) {
  for (const GateKind& kind : GateKinds) {
    if (kind.type == type) return kind.make(std::move(name), model, id);
  }
  assert(false && "The type is that of no gate.");
  return nullptr;
}

AndGate::AndGate(std::string initName, Model* initModel, int initId)
    : FaultTreeGate(NodeType::And, std::move(initName), initModel, initId) {}

OrGate::OrGate(std::string initName, Model* initModel, int initId)
    : FaultTreeGate(NodeType::Or, std::move(initName), initModel, initId) {}

XorGate::XorGate(std::string initName, Model* initModel, int initId)
    : FaultTreeGate(NodeType::XOr, std::move(initName), initModel, initId) {}

PandGate::PandGate(std::string initName, Model* initModel, int initId)
    : FaultTreeGate(NodeType::PAnd, std::move(initName), initModel, initId) {}

SandGate::SandGate(std::string initName, Model* initModel, int initId)
    : FaultTreeGate(NodeType::SAnd, std::move(initName), initModel, initId) {}

PorGate::PorGate(std::string initName, Model* initModel, int initId)
    : FaultTreeGate(NodeType::POr, std::move(initName), initModel, initId) {}

// Absorption on the level of gates: an AND gate of more factors than another is redundant beside
// it. Both operations tell on standard output what they are given, as they always have: they exist
// for people who try out tree building by hand.

bool FaultTreeGate::AddPrimeObject(FaultTreeNode& /*object*/, IPrime& /*identity*/) {
  return false;
}

bool AndGate::AddPrimeObject(FaultTreeNode& object, IPrime& identity) {
  std::cout << "AND ADD PRIME OBJECT: Name: " << name << " ID: " << id
            << " Prime: " << FormatDouble(prime) << " num children: " << GetChildCount()
            << " Prime OBJECT: " << FormatDouble(identity.prime) << '\n';
  if (GetChildCount() > 0) {
    if (ComparePrimes(*this, identity) != 0) return false;
    if (identity.GetPrimeType() != "BASIC EVENT") return false;
  }
  AddChild(object.shared_from_this());
  RecomputePrime();
  return true;
}

void AndGate::RecomputePrime() {
  prime = 1.0;
  for (const Pointer& child : Children()) {
    if (child->IsEvent()) prime *= static_cast<const BasicEvent&>(*child).prime;
  }
}

bool OrGate::AddPrimeObject(FaultTreeNode& object, IPrime& identity) {
  std::cout << "OR ADD PRIME OBJECT: Name: " << name << " ID: " << id
            << " num children: " << GetChildCount()
            << " Prime OBJECT: " << FormatDouble(identity.prime) << '\n';
  bool changed = false;
  int i = 0;
  while (i < GetChildCount()) {
    FaultTreeNode& child = *GetChild(i);
    const bool isAnd = child.IsGate() && child.type == NodeType::And;
    const int comparison = isAnd ? ComparePrimes(static_cast<AndGate&>(child), identity) : 0;
    if (comparison == 1) return changed;
    if (comparison == 2) {
      auto& children = CurrentList().children;
      children.erase(children.begin() + i);
      changed = true;
    } else {
      ++i;
    }
  }
  if (identity.GetPrimeType() != "AND GATE") return changed;
  AddChild(object.shared_from_this());
  return true;
}

}  // namespace FTS
