#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/HierarchicalName.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// A part of the system: ports, and one or more alternative implementations, of which one is
/// current.
class Component : public IPrintable,
                  public IVisitable,
                  public std::enable_shared_from_this<Component> {
 public:
  /// The full name is the subsystem's qualifier and `localName`.
  Component(const std::string& localName, const std::shared_ptr<Subsystem>& initOwner,
            Model* initModel);
  ~Component() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  virtual void AddPort(const std::shared_ptr<Port>& port);
  void AddImplementation(const std::shared_ptr<Implementation>& implementation);
  /// Makes the implementation of that position current; ignores an index out of range.
  void SelectImplementation(int index);

  const std::string& GetFullNameText() const { return fullNameText; }
  const std::string& GetLocalName() const { return fullName.Name(); }
  Model* GetModel() const { return model; }
  std::shared_ptr<Subsystem> GetOwnerSubsystem() const { return owner.lock(); }
  /// The perspective at the root of the architecture around it; null outside one.
  std::shared_ptr<Perspective> GetPerspective() const;
  /// The current implementation's inside, null for a leaf. Throws `VtnException` "No current
  /// implementation found for component: ..." when there is none.
  std::shared_ptr<Subsystem> GetSubsystem() const;
  /// Throws the same when there is none.
  Implementation& GetCurrentImplementation() const;
  /// In the model's unit of time: its own, else that of the component around it, else the
  /// perspective's, else the model's. A value of 0 means none.
  double GetRiskTime() const;
  /// The port that a line message leads to; null without entry. Several ports: the first, with a
  /// warning.
  std::shared_ptr<Port> FindInputPort(const std::string& message) const;
  std::shared_ptr<Port> FindOutputPort(const std::string& message) const;
  std::shared_ptr<Port> FindPort(const std::string& localName) const;

  /// Drop the port expression instances; or all that synthesis left in ports and implementations.
  void ForgetPortExpressions();
  void ClearPorts();
  void ReindexConfigurable();

  /// A copy for another subsystem, entered in `target`; see `Subsystem::Clone` for the mode.
  std::shared_ptr<Component> Clone(Model* target, const std::shared_ptr<Subsystem>& newOwner,
                                   CloneMode mode) const;
  /// Brings a clone up to date: it takes over allocations, messages, the choice of implementation,
  /// implementations that it lacks, and lines. Ports are matched by local name. What lines leave in
  /// the ports is not copied: every synthesis builds it.
  void ConnectClone(const std::shared_ptr<Component>& target) const;

  // Redundancy: model/Replication.cpp

  /// A component in `target` with this one's ports and a copy of one implementation, events anew.
  std::shared_ptr<Component> CreateReplica(const std::shared_ptr<Subsystem>& target,
                                           const std::string& localName, int implementationIndex);
  /// Makes the component redundant: `selection` holds one digit per replica, the 1-based position
  /// of its implementation; zeros are removed from it. False when nothing is left. The result is a
  /// new current implementation. Throws `VtnException` for a position that does not exist.
  bool CreateOptimisedImplementation(std::string& selection);
  /// Writes the full name and the names of the selected implementations.
  void WriteImplementations(const std::string& selection, std::ostream& stream) const;

  std::vector<std::string>
      allocations;                ///< Full names of hosts: the current one, then alternatives.
  std::string currentAllocation;  ///< Full name of the component on which this one runs.
  std::shared_ptr<Implementation> currentImplementation;  ///< May be null.
  std::vector<std::shared_ptr<Implementation>> implementations;
  int variant = 0;
  std::string description;
  std::map<std::string, std::vector<std::shared_ptr<Port>>> inputMessages;
  std::string sid;
  int maxReplicants = 0;
  HierarchicalName fullName;
  bool includeInOptimisation = false;
  std::map<std::string, std::vector<std::shared_ptr<Port>>> outputMessages;
  std::weak_ptr<Subsystem> owner;
  std::map<std::string, std::shared_ptr<Port>> ports;  ///< By local name.
  double riskTime = 0.0;                               ///< 0 means inherited.
  Model* model;

 private:
  void CopyFieldsTo(Component& target) const;
  void CopyPortsTo(const std::shared_ptr<Component>& target) const;
  /// Ports are matched by local name.
  void CopyMessagesTo(Component& target) const;

  std::string fullNameText;
};

}  // namespace FTS
