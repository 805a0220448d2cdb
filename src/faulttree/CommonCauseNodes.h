#pragma once

#include <memory>
#include <string>
#include <vector>

#include "faulttree/BasicEvent.h"
#include "faulttree/ProxyNode.h"

namespace FTS {

/// The event of a potential common cause failure. Activated, it stands for the actual common cause.
class PCCFNode : public BasicEvent {
 public:
  PCCFNode(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "PCCFNode"; }
  Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                const std::shared_ptr<Component>& context) override;
  /// Registers itself only when activated.
  void RegisterSelf(Model& target) override;
  void FindContradictions(OnceMarks& marks) override;
  int GenerateCutSets() override;
  std::unique_ptr<BDDParent> BuildBDD(bool asRoot) override;

  std::shared_ptr<CCF> actual;  ///< Null until activated.

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
};

/// A potential common cause failure in an implementation's failure data: a reference to a common
/// cause declared on the perspective.
class PCCFProxy : public ProxyNode {
 public:
  PCCFProxy(std::string initName, Model* initModel, int initId = NewId);
  /// With an event that exists already, for clones.
  PCCFProxy(std::string initName, Model* initModel, std::shared_ptr<PCCFNode> initNode, int initId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "PCCFProxy"; }
  Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                const std::shared_ptr<Component>& context) override;
  /// Binds the actual common cause, which becomes the child.
  void Activate(const std::shared_ptr<CCF>& ccf);
  /// `node`, which belongs to the same component as this proxy.
  std::shared_ptr<BasicEvent> GetEventNode() override;

  std::weak_ptr<Component> owner;  ///< The component whose implementation holds it.
  std::shared_ptr<CCF> actual;     ///< Null until activated.
  std::shared_ptr<PCCFNode> node;  ///< Never null.

 protected:
  std::shared_ptr<ProxyNode> MakeSame(Model* target, CloneMode mode,
                                      const std::shared_ptr<Component>& context) override;
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
};

}  // namespace FTS
