#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// One level of the architecture: components and the lines between their ports. It is the root of a
/// perspective or the inside of an implementation.
class Subsystem : public IPrintable,
                  public IVisitable,
                  public std::enable_shared_from_this<Subsystem> {
 public:
  explicit Subsystem(Model* initModel);
  ~Subsystem() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  void AddComponent(const std::shared_ptr<Component>& component);
  void AddLine(const std::shared_ptr<Line>& line);
  Model* GetModel() const { return model; }
  /// The component around this subsystem; null for a root.
  std::shared_ptr<Component> GetOwnerComponent() const;
  /// What stands before a local name in full names: the owner component's full name, or the
  /// perspective's name and "::", or nothing.
  std::string GetQualifier() const;

  // Walks over the current implementations; they throw `VtnException` "No current implementation
  // found for component: ..." where one is missing.

  void BuildPortExpressions();
  void ForgetPortExpressions();
  /// Copies the deviations of the current implementations into the ports, and enters events, system
  /// outputs and exported deviations in the model.
  void Instantiate();
  /// Drops everything that synthesis left in ports and implementations.
  void Clear();
  double TotalCost() const;
  double TotalWeight() const;
  /// Components whose current implementation has output deviations in state "default".
  int CountAnnotatedComponents() const;
  void ReindexConfigurable();
  /// Selects the first implementation everywhere.
  void ResetImplementations();

  /// A copy for another perspective or implementation (one of both null). In the mode
  /// `NewIdentity` it is part of a replica, and its events are new ones. Lines come without
  /// connections; see `Reconnect`.
  std::shared_ptr<Subsystem> Clone(Model* target,
                                   const std::shared_ptr<Perspective>& newPerspective,
                                   const std::shared_ptr<Implementation>& newOwner,
                                   CloneMode mode) const;
  /// Lets every line copy its connections from the line of the same place in `source`.
  void Reconnect(const Subsystem& source);
  /// Lets the components and lines take over what those of the same name or place in `source` hold.
  void RebuildFrom(const Subsystem& source);

  std::map<std::string, std::shared_ptr<Component>> components;  ///< By local name.
  std::vector<std::shared_ptr<Line>> lines;
  std::weak_ptr<Perspective> perspective;  ///< Set for a root.
  std::weak_ptr<Implementation> owner;     ///< Empty for a root.
  Model* model;

 private:
  void ForgetLineEnds();
  void TieLines();
};

}  // namespace FTS
