#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>

#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IFailureCause.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// A failure class at a place: at a port, or exported by a component to what is allocated on it.
class Deviation : public IPrintable, public IVisitable {
 public:
  ~Deviation() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  /// "class-full port name[:subject]"; for exported ones "class-full component name.subject".
  std::string GetFullName() const;
  /// The same with the port's local name; for exported ones "class-subject". Keys `StateLogic`.
  std::string GetLocalName() const;
  std::shared_ptr<Port> GetPort() const { return port.lock(); }
  std::shared_ptr<Component> GetOwner() const { return owner.lock(); }
  const std::string& GetFailureClass() const { return failureClass; }
  const std::string& GetSubject() const { return subject; }

  std::weak_ptr<Component> owner;
  std::string description;
  std::string failureClass;
  bool byMessage = false;  ///< Found through a line message, not through a port name.
  bool exported = false;
  std::string subject;  ///< The message or the exported name; empty for a port.
  std::weak_ptr<Port> port;

 protected:
  Deviation(const std::shared_ptr<Component>& initOwner, std::string initFailureClass);
  Deviation(const Deviation& source, const std::shared_ptr<Component>& initOwner);
  /// Finds the port by name, else by message. Throws `VtnException` "Could not find port in
  /// component: ..." when neither leads to one.
  void FindSubject(const std::string& text, bool output);
  /// The lines of the subclass between the description and the end.
  virtual void PrintDetails(std::ostream& stream, int indent) const;
};

/// A deviation that arrives at a port. One record per implementation and name, shared by all
/// proxies of the deviation.
class InputDeviation : public Deviation, public std::enable_shared_from_this<InputDeviation> {
 public:
  /// See `Deviation::FindSubject` for the error.
  InputDeviation(const std::shared_ptr<Component>& initOwner, std::string initFailureClass,
                 const std::string& initSubject);
  /// A record like `source` for another component; the port is found there by its local name.
  InputDeviation(const InputDeviation& source, const std::shared_ptr<Component>& initOwner);
  void Accept(Visitor& visitor) override;

  /// A record for another component; the port is found there by its local name.
  std::shared_ptr<InputDeviation> Copy(const std::shared_ptr<Component>& newOwner) const;
  /// The event that stands for this deviation while nothing connects it; made on first use, so that
  /// all proxies of one unconnected input are one event in the cut sets.
  std::shared_ptr<InputDeviationNode> GetEventNode();

  std::shared_ptr<InputDeviationNode> eventNode;
  std::map<std::string, double> coverage;  ///< By hazard name: diagnostic coverage in per cent.
};

/// How a component says when a deviation leaves a port: its `expression`.
class OutputDeviation : public Deviation,
                        public IFailureCause,
                        public std::enable_shared_from_this<OutputDeviation> {
 public:
  /// See `Deviation::FindSubject` for the error.
  OutputDeviation(const std::shared_ptr<Component>& initOwner, std::string initFailureClass,
                  const std::string& initSubject);
  /// A deviation like `source` for another component, without causes and logic; the port is found
  /// there by its local name.
  OutputDeviation(const OutputDeviation& source, const std::shared_ptr<Component>& initOwner);
  void Accept(Visitor& visitor) override;
  std::string GetCauseName() const override { return GetFullName(); }

  /// A copy for `newOwner`, whose expression is a clone with new gates and proxies over the same
  /// events.
  std::shared_ptr<OutputDeviation> Copy(const std::shared_ptr<Component>& newOwner) const;
  /// The copy as part of a greater one: leaves the memoised clones, by which all copied expressions
  /// share their events, for the caller to clear.
  std::shared_ptr<OutputDeviation> CopyWithin(const std::shared_ptr<Component>& newOwner,
                                              CloneMode mode) const;
  bool IsSystemOutput() const { return systemOutput; }
  void SetSystemOutput(bool value) { systemOutput = value; }

  double severity = 0.0;
  bool resolved = false;  ///< Synthesis has walked the expression.
  bool systemOutput = false;

 protected:
  void PrintDetails(std::ostream& stream, int indent) const override;
};

/// A deviation that a component offers to what is allocated on it.
class ExportedDeviation : public Deviation,
                          public IFailureCause,
                          public std::enable_shared_from_this<ExportedDeviation> {
 public:
  ExportedDeviation(const std::shared_ptr<Component>& initOwner, std::string initFailureClass,
                    std::string initSubject);
  void Accept(Visitor& visitor) override;
  std::string GetCauseName() const override { return GetFullName(); }

  /// See `OutputDeviation::CopyWithin`.
  std::shared_ptr<ExportedDeviation> CopyWithin(const std::shared_ptr<Component>& newOwner,
                                                CloneMode mode) const;

  bool resolved = false;
  /// The clone of `expression` in which synthesis works; null outside a synthesis.
  std::shared_ptr<FaultTreeNode> instance;

 protected:
  void PrintDetails(std::ostream& stream, int indent) const override;
};

}  // namespace FTS
