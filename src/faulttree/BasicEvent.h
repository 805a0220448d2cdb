#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/IPrime.h"
#include "faulttree/FaultTreeNode.h"
#include "model/ISafetyRequirementTarget.h"

namespace FTS {

/// A leaf of every fault tree: something that fails by itself, with the two figures that its
/// failure model gives for the risk time. The figures are computed once, when the model is read,
/// and then only read.
class BasicEvent : public FaultTreeNode, public IPrime, public ISafetyRequirementTarget {
 public:
  /// With `takePrime` the event takes its identity from `Prime` at once; else `prime` is 0 until
  /// set. Every event takes the next event number (the first is 1).
  BasicEvent(std::string initName, Model* initModel, bool takePrime,
             NodeType initType = NodeType::FailureMode, int initId = NewId);
  ~BasicEvent() override;

  bool IsEvent() const override { return true; }
  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "BasicEvent"; }
  std::string GetPrimeType() const override { return "BASIC EVENT"; }

  Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                const std::shared_ptr<Component>& context) override;
  void RegisterSelf(Model& target) override;
  void FindContradictions(OnceMarks& marks) override;
  void TakeCoverage(CoverageWalk& walk,
                    const std::shared_ptr<InputDeviationProxy>& mechanism) override;
  Pointer DualiseWithin(NegationWalk& walk, bool negate) override;
  int GenerateCutSets() override;
  std::unique_ptr<BDDParent> BuildBDD(bool asRoot) override;
  void AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) override;
  void DefineInOpenPSA(const XmlOutputElement& tree) const override;
  void WriteCutSetRows(Workbook& stream, int place, int size, int column) const override;
  void MakeFTPlusRecord(FTPlusProject& project) override;

  // Failure data: analysis/FailureModels.cpp

  /// Probability that the event holds at the risk time, and failure frequency per unit of time.
  virtual double GetUnavailability() const { return unavailability; }
  virtual double GetFrequency() const { return frequency; }
  /// The stored value, -1.0 when absent.
  double GetParameter(const std::string& parameter) const;
  void SetParameter(const std::string& parameter, double value) { parameters[parameter] = value; }
  /// Fills `unavailability` and `frequency` by `failureModel`; logs what looks wrong as a warning.
  void ComputeFailureData();
  /// Sets the failure model of the event's record: output/FTPlusFailureModels.cpp.
  void ExportFailureModel(FTPlusProject& project) const;
  /// The owning component's risk time; without an owner the parameter "RiskTime", or the model's
  /// when that is 0.
  double ResolveRiskTime() const;
  /// The unavailability of a repairable item with constant failure rate `lambda` and repair rate
  /// `mu` after the time `t`; stores and returns it.
  double RepairableUnavailability(double lambda, double mu, double t);
  /// Owning component's full name, ".", name; the name alone without an owner.
  std::string GetFullName() const;

  /// True for an event that stands where the options want a loop or a hole removed, and for its
  /// complement: it has no cut sets, and diagrams have no variable for it.
  bool IsLeftOut() const;

  /// This event's complement, made on first use. An event keeps its complement until
  /// `Model::ClearSynthesis`.
  std::shared_ptr<ComplementEvent> GetComplement();

  std::shared_ptr<ComplementEvent> complement;
  std::weak_ptr<Component>
      owner;  ///< The component whose implementation holds the event, or empty.
  /// By hazard name: the safety mechanism that covers this event for the hazard.
  std::map<std::string, std::weak_ptr<InputDeviationProxy>> coverage;
  std::map<std::string, double> parameters;
  double unavailability = 0.0;
  double frequency = 0.0;
  FailureModel failureModel = FailureModel::NONE;
  float orderWeight = 0.0F;
  std::uint32_t eventNumber;  ///< Source of the cut set signature; not the id.

 protected:
  BasicEvent(std::string initName, Model* initModel, bool takePrime, NodeType initType,
             ExactId initId);

  /// A new event of the exact class of this one, without a prime, for `Clone`, which fills in what
  /// all events share.
  virtual std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId);

 private:
  void ComputeRepairable(double lambda, double mu);
  static std::uint32_t TakeEventNumber();  // faulttree/NodeRegistry.cpp
};

/// An event that is part of normal operation and no failure; the order of a cut set may leave it
/// out.
class NormalEvent : public BasicEvent {
 public:
  NormalEvent(std::string initName, Model* initModel, bool takePrime, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "NormalEvent"; }

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

/// The negation of an event. Its prime is its own and its figures follow the event's; its id is the
/// event's negated.
class ComplementEvent : public BasicEvent {
 public:
  explicit ComplementEvent(BasicEvent& initSource);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "ComplementEvent"; }
  /// 1.0 less the event's unavailability, at every call.
  double GetUnavailability() const override { return 1.0 - source->GetUnavailability(); }
  Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                const std::shared_ptr<Component>& context) override;
  std::unique_ptr<BDDParent> BuildBDD(bool asRoot) override;

  BasicEvent* source;  ///< The event; it owns this complement and outlives the trees it is in.

 protected:
  void AppendCloned(std::vector<FaultTreeNode*>& nodes) const override;
};

}  // namespace FTS
