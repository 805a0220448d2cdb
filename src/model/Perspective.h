#pragma once

#include <map>
#include <memory>
#include <ostream>
#include <string>

#include "model/Forward.h"
#include "model/IVisitable.h"

namespace FTS {

/// One self-contained view of the system: a top level subsystem and the common cause failures
/// declared on it.
class Perspective : public IVisitable, public std::enable_shared_from_this<Perspective> {
 public:
  Perspective(std::string initName, Model* initModel);
  ~Perspective() override;
  void Accept(Visitor& visitor) override;
  void Print(std::ostream& stream, int indent) const;

  void AddCCF(const std::shared_ptr<CCF>& ccf);
  /// Null when the perspective has none of that name.
  std::shared_ptr<CCF> FindCCF(const std::string& ccfName) const;
  std::shared_ptr<Perspective> Clone(Model* target) const;
  /// Lets this perspective take over implementations, allocations and ports' contents of another of
  /// the same structure.
  void RebuildFrom(const Perspective& source);

  std::map<std::string, std::shared_ptr<CCF>> ccfs;
  std::string description;
  Model* model;
  std::string name;
  double riskTime = 0.0;          ///< 0 when not given.
  bool defaultGenerated = false;  ///< Not made by the user, but by the tool that wrote the model.
  std::shared_ptr<Subsystem> rootSubsystem;  ///< May be null.
};

}  // namespace FTS
