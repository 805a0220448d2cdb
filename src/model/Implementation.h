#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>

#include "faulttree/Forward.h"
#include "model/Enumerations.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// What an implementation says about its deviations in one state.
class StateLogic {
 public:
  explicit StateLogic(std::string initState) : state(std::move(initState)) {}

  using OutputDeviations = std::map<std::string, std::shared_ptr<OutputDeviation>>;
  using ExportedDeviations = std::map<std::string, std::shared_ptr<ExportedDeviation>>;

  std::string state;
  ExportedDeviations exportedDeviations;  ///< By local name.
  OutputDeviations outputDeviations;      ///< By local name.
};

/// One way to build a component: its local failure data, and perhaps a subsystem that refines it.
class Implementation : public IPrintable,
                       public IVisitable,
                       public std::enable_shared_from_this<Implementation> {
 public:
  /// Comes with the state "default" and block type BOTH.
  Implementation(std::string initName, const std::shared_ptr<Component>& initOwner,
                 Model* initModel);
  ~Implementation() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  std::shared_ptr<Component> GetOwner() const { return owner.lock(); }
  /// Null when there is no such state.
  std::shared_ptr<StateLogic> GetStateLogic(const std::string& state) const;
  /// By local name; null when there is none, or no such state.
  std::shared_ptr<OutputDeviation> GetOutputDeviation(const std::string& deviation,
                                                      const std::string& state) const;
  std::shared_ptr<ExportedDeviation> GetExportedDeviation(const std::string& deviation,
                                                          const std::string& state) const;
  /// The iterations throw `VtnException` "Cannot find state: ..." for an unknown state.
  StateLogic::OutputDeviations::const_iterator OutputDeviationsBegin(
      const std::string& state) const;
  StateLogic::OutputDeviations::const_iterator OutputDeviationsEnd(const std::string& state) const;
  StateLogic::ExportedDeviations::const_iterator ExportedDeviationsBegin(
      const std::string& state) const;
  StateLogic::ExportedDeviations::const_iterator ExportedDeviationsEnd(
      const std::string& state) const;
  int CountOutputDeviations(const std::string& state) const;

  void AddBasicEvent(const std::shared_ptr<BasicEvent>& event);
  void AddInputDeviation(const std::shared_ptr<InputDeviation>& deviation);
  /// Keeps the first proxy of each name.
  void AddInputDeviationProxy(const std::shared_ptr<InputDeviationProxy>& proxy);
  void AddPCCF(const std::shared_ptr<PCCFProxy>& proxy);
  void AddStateLogic(const std::shared_ptr<StateLogic>& logic);
  /// The state is made when it is unknown.
  void AddOutputDeviation(const std::shared_ptr<OutputDeviation>& deviation,
                          const std::string& state);
  void AddExportedDeviation(const std::shared_ptr<ExportedDeviation>& deviation,
                            const std::string& state);

  /// A copy for a component of another model, identities kept. It is added to the component.
  std::shared_ptr<Implementation> Clone(const std::shared_ptr<Component>& newOwner) const;
  /// The same for a replica: events, gates and proxies are new ones, common causes stay.
  std::shared_ptr<Implementation> CloneForReplica(const std::shared_ptr<Component>& newOwner) const;
  /// See `Subsystem::Instantiate` and `Subsystem::Clear`.
  void Instantiate();
  void Clear();

  std::map<std::string, std::shared_ptr<BasicEvent>> basicEvents;  ///< Normal events included.
  std::weak_ptr<Component> owner;
  double cost = 0.0;
  double failureRate = 0.0;  ///< The component's failure rate under this implementation.
  std::string description;
  HBlockType hBlockType = HBlockType::BOTH;
  bool includeInOptimisation = true;
  std::map<std::string, std::shared_ptr<InputDeviationProxy>> inputDeviations;
  std::string name;
  std::map<std::string, std::shared_ptr<InputDeviation>> inputDeviationRecords;
  std::map<std::string, std::shared_ptr<PCCFProxy>> ccfNodes;
  std::map<std::string, std::shared_ptr<StateLogic>> stateLogic;
  std::shared_ptr<Subsystem> subsystem;  ///< Null for a leaf.
  double weight = 0.0;
  Model* model;

 private:
  std::shared_ptr<Implementation> CopyTo(const std::shared_ptr<Component>& newOwner,
                                         CloneMode mode) const;
  void InstantiateOutputs(const StateLogic& logic, const std::shared_ptr<Component>& component);
  void InstantiateExports(const StateLogic& logic, const std::shared_ptr<Component>& component);
};

}  // namespace FTS
