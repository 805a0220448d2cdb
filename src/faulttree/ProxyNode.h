#pragma once

#include <map>
#include <memory>
#include <string>

#include "faulttree/FaultTreeNode.h"

namespace FTS {

/// A node with at most one child per state, which stands for something not known while expressions
/// are written. Synthesis hangs the real logic under it; one that stays empty is a hole that
/// refinement closes. All expressions that reach one deviation share one proxy, and so a tree stays
/// a shared graph instead of an exponential copy.
class ProxyNode : public FaultTreeNode {
 public:
  /// Legal types are `NullOp`, `Not`, `InputDeviation`, `OutputDeviation`, `PCCF`, `External`,
  /// `ExternalDeviation` and `State`; any other is logged as a warning and accepted.
  ProxyNode(NodeType initType, std::string initName, Model* initModel, int initId = NewId);
  ~ProxyNode() override;

  int GetChildCount() const override { return child ? 1 : 0; }
  const Pointer& GetChild(int index) const override;
  void AddChild(const Pointer& node) override;
  void ReplaceChild(int index, const Pointer& node) override;
  bool RemoveChild(const FaultTreeNode& node) override;
  void ClearChildren() override;
  bool IsProxy() const override { return true; }

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "ProxyNode"; }

  Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                const std::shared_ptr<Component>& context) override;
  void FindContradictions(OnceMarks& marks) override;
  void TakeCoverage(CoverageWalk& walk,
                    const std::shared_ptr<InputDeviationProxy>& mechanism) override;
  Pointer DualiseWithin(NegationWalk& walk, bool negate) override;
  /// An empty proxy throws `VtnException` "No component for: " and its name; a start state, which
  /// needs no cause, has no cut sets.
  int GenerateCutSets() override;
  /// An empty proxy gives what `GenerateCutSets` gives.
  std::unique_ptr<BDDParent> BuildBDD(bool asRoot) override;
  void AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) override;
  void DefineInOpenPSA(const XmlOutputElement& tree) const override;

  /// The event that stands in for a proxy that stays empty while hanging nodes are kept; made on
  /// first use where the class has one, null otherwise.
  virtual std::shared_ptr<BasicEvent> GetEventNode() { return nullptr; }
  /// The port that the name leads to, behind its first "-"; null when there is none.
  std::shared_ptr<Port> FindNamedPort() const;

  std::map<std::string, Pointer> childByState;

 protected:
  void SelectState(const std::string& value) override;
  void CopyListToState(const std::string& value) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
  /// Throws for an empty proxy that must not be empty.
  void RequireChild() const;
  /// The owner of that port; null when there is none.
  std::shared_ptr<Component> FindNamedOwner() const;
  /// A node of the exact class of this one with its own fields carried over, for `Clone`, which
  /// fills in everything that all proxies share.
  virtual std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                              const std::shared_ptr<Component>& context);

 private:
  Pointer child;  // The child of the current state.
};

/// Negation of its one operand.
class NotGate : public ProxyNode {
 public:
  NotGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "NotGate"; }
  void FindContradictions(OnceMarks& marks) override;
  /// Always gives a replacement when there is an operand: a negation leaves its parent's list.
  Pointer DualiseWithin(NegationWalk& walk, bool negate) override;
  void DefineInOpenPSA(const XmlOutputElement& tree) const override;

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
};

}  // namespace FTS
