#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

/// One described cause of a hazard or deviation, with the probability that it leads there.
class Cause : public IPrintable, public IVisitable {
 public:
  Cause(std::string initName, Model* initModel, double initProbability,
        std::shared_ptr<FaultTreeNode> initExpression);
  ~Cause() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const override;

  std::string name;
  Model* model;
  double probability;  ///< 0 to 1; not used by the analysis.
  std::shared_ptr<FaultTreeNode> expression;
};

/// What a hazard and a deviation with logic have in common: causes, and the expression they make
/// up.
class IFailureCause {
 public:
  enum Kind { OfHazard = 0, OfOutputDeviation = 1, OfExportedDeviation = 2 };

  virtual ~IFailureCause();
  virtual std::string GetCauseName() const = 0;

  /// Takes the cause in. The first makes the expression an OR gate named `GetCauseName`; each
  /// cause's logic is then merged into it.
  void AddCause(std::unique_ptr<Cause> cause, Model* model);

  std::vector<std::unique_ptr<Cause>> causes;
  std::shared_ptr<FaultTreeNode> expression;  ///< Null without logic.
  Kind kind;

 protected:
  explicit IFailureCause(Kind initKind) : kind(initKind) {}

 private:
  /// Joins the logic to the expression, which is not null, in one flat OR where possible.
  void MergeExpression(const std::shared_ptr<FaultTreeNode>& logic, Model* model);
};

}  // namespace FTS
