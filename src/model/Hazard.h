#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "analysis/Forward.h"
#include "model/IFailureCause.h"
#include "model/IVisitable.h"

namespace FTS {

/// A top event: a failure expression over output deviations, with a severity and the safety
/// integrity level that each of its cut sets must reach.
class Hazard : public IVisitable, public IFailureCause {
 public:
  Hazard(std::string initName, Model* initModel);
  ~Hazard() override;
  void Accept(Visitor& visitor) override;
  virtual std::shared_ptr<Hazard> Clone(Model* target) const;
  virtual void Print(std::ostream& stream, int indent) const;
  std::string GetCauseName() const override { return name; }

  /// How many cut sets of the tree stay below `safetyRequirement`, summed over the allocated levels
  /// of their events; 0 without a tree.
  int CountRequirementViolations() const;

  std::string description;
  std::shared_ptr<FaultTree> faultTree;  ///< Set by synthesis.
  Model* model;
  std::string name;
  int safetyRequirement = 0;
  double severity = 0.0;
};

}  // namespace FTS
