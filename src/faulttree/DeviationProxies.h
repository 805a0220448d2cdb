#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "faulttree/ProxyNode.h"

namespace FTS {

/// A deviation that arrives at a port, as failure logic names it. The name is class, "-", port.
class InputDeviationProxy : public ProxyNode {
 public:
  InputDeviationProxy(std::string initName, Model* initModel, int initId = NewId);
  /// Named as the deviation is.
  InputDeviationProxy(const std::shared_ptr<InputDeviation>& initDeviation, Model* initModel,
                      int initLine, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "InputDeviationProxy"; }
  void RegisterSelf(Model& target) override;
  /// Hands itself on as the mechanism when its deviation has a coverage for the hazard.
  void TakeCoverage(CoverageWalk& walk,
                    const std::shared_ptr<InputDeviationProxy>& mechanism) override;
  /// The deviation's event, null without a deviation.
  std::shared_ptr<BasicEvent> GetEventNode() override;

  /// The coverage in per cent that this safety mechanism gives for the hazard; 0.0 for none. It is
  /// held on the deviation's record, which all proxies of the deviation share.
  double GetCoverage(const std::string& hazard) const;
  void SetCoverage(const std::string& hazard, double value);
  bool HasCoverage(const std::string& hazard) const;

  std::shared_ptr<InputDeviation> deviation;
  int line = -1;  ///< The line of the model file where it was written, -1 when unknown.

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
};

/// A deviation that leaves a port, as lines and hazards name it. The name is class, "-", port.
class OutputDeviationProxy : public ProxyNode {
 public:
  OutputDeviationProxy(std::string initName, Model* initModel, int initLine = -1,
                       int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "OutputDeviationProxy"; }
  std::shared_ptr<BasicEvent> GetEventNode() override;

  std::shared_ptr<OutputDeviationNode> eventNode;
  int line;  ///< See `InputDeviationProxy::line`.
  bool classless =
      false;  ///< Written without a failure class in a line; the name is the port's alone.
  bool reference = false;  ///< Written by the reader in a line, and not yet chosen by direction.

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
};

/// A deviation that the host of this component's allocation exports.
class ExportedDeviationProxy : public ProxyNode {
 public:
  ExportedDeviationProxy(std::string initName, Model* initModel,
                         const std::shared_ptr<Component>& initOwner, int initLine = -1,
                         int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "ExportedDeviationProxy"; }
  std::shared_ptr<BasicEvent> GetEventNode() override;

  std::weak_ptr<Component>
      owner;  ///< Weak: the component owns the expression that holds this node.
  std::shared_ptr<ExportedDeviationNode> eventNode;
  int line;

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
};

}  // namespace FTS
