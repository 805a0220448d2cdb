#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "faulttree/Forward.h"
#include "model/Enumerations.h"
#include "model/Forward.h"

// Rules for the parts of a model that hold in whichever format the part was written.

namespace FTS {

/// Gives a variable its value back at the end of the scope.
template <typename Type>
class Restore {
 public:
  explicit Restore(Type& initVariable) : variable(initVariable), value(initVariable) {}
  ~Restore() { variable = std::move(value); }
  Restore(const Restore&) = delete;
  Restore& operator=(const Restore&) = delete;

 private:
  Type& variable;
  Type value;
};

/// The name of the perspective of a model that declares none.
inline constexpr const char* DefaultPerspectiveName = "DEFAULT";

/// A number of a file for a field of single precision, kept in its range.
float ToFloat(double value);

/// Makes a perspective and adds it to the model. Its name or `generated` tell whether the tool that
/// wrote the model made it up.
std::shared_ptr<Perspective> AddPerspective(const std::string& name, bool generated, Model& model);

/// Makes the top subsystem of a perspective.
std::shared_ptr<Subsystem> AddRootSubsystem(const std::shared_ptr<Perspective>& perspective);

/// Makes the inside of an implementation.
std::shared_ptr<Subsystem> AddInside(const std::shared_ptr<Implementation>& implementation);

/// Finishes a common cause whose formula has been read and adds it to its perspective.
void AddActualCCF(const std::shared_ptr<CCF>& ccf, Perspective& perspective);

/// Gives a component of a subsystem a risk time of its own. One above that of its parent is ignored
/// with a warning.
void SetRiskTime(Component& component, double riskTime, const Subsystem& subsystem);

/// The block type that a word stands for; nothing for an unknown word.
std::optional<HBlockType> FindBlockType(std::string_view word);

/// Gives an implementation of a component its block type. A propagator with too many ports is
/// treated as not refined, with a warning.
void SetBlockType(Implementation& implementation, const Component& component, HBlockType type);

/// Makes an event of the implementation, without figures yet. Null when it has one of that name.
std::shared_ptr<BasicEvent> AddBasicEvent(const std::string& name, bool normal,
                                          const std::shared_ptr<Component>& component,
                                          Implementation& implementation);

/// Computes the figures of an event whose formula has been read, if the run wants any.
void FinishEvent(BasicEvent& event);

/// Adds up what the events of one component claim of its failure rate.
class DistributionTotal {
 public:
  /// Counts the event if its failure model is a share of the component's rate.
  void Add(const BasicEvent& event);

  /// Warns if there was such an event and the shares don't make up the whole.
  void Check(const Component& component) const;

 private:
  bool any = false;
  double total = 0.0;  // Percent.
};

/// Makes a reference to a common cause and adds it to the component's implementation. `ccf` may be
/// null: the reference then stays without.
void AddPotentialCCF(const std::string& name, const std::string& description,
                     const std::shared_ptr<CCF>& ccf, const std::shared_ptr<Component>& component,
                     Implementation& implementation);

/// A deviation's name as a file has it.
struct WrittenName {
  bool hasHyphen;            // One without has been reported.
  std::string failureClass;  // May be empty in front of a hyphen too.
  std::string place;         // A port, or what is exported.
};

/// Cuts a deviation's name at its first hyphen. Logs an error with that line when there is none.
WrittenName SplitDeviationName(const std::string& name, std::int32_t line);

/// What an expression by itself counts as: a cause that always leads to the deviation.
inline constexpr double CertainProbability = 1.0;

}  // namespace FTS
