#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace FTS {

/// What a tree is checked against: a formula of AND and OR over named events, solved by its whole
/// truth table. Slow and plain on purpose; nothing in it is shared with the product.
///
/// A null pointer is a hole: logic that nothing feeds. A hole adds nothing to an OR and is passed
/// over by an AND; a gate of holes is a hole itself.
struct Formula {
  enum class Kind { EVENT, AND, OR };

  Kind kind;
  std::string event;                                     // The event's full name.
  std::vector<std::shared_ptr<const Formula>> operands;  // At least one in a gate, none null.
};

using FormulaPtr = std::shared_ptr<const Formula>;

/// A family of cut sets, each a set of events' full names.
using CutSets = std::set<std::set<std::string>>;

/// Figures by event's full name.
using EventFigures = std::map<std::string, double>;

FormulaPtr EventFormula(const std::string& fullName);

/// The conjunction of the operands that are no holes; null if none is left.
FormulaPtr AllOf(const std::vector<FormulaPtr>& operands);

/// The disjunction of the operands that are no holes; null if none is left.
FormulaPtr AnyOf(const std::vector<FormulaPtr>& operands);

/// The events that a formula mentions, whether they matter or not. A hole mentions none.
std::set<std::string> EventsOf(const FormulaPtr& formula);

/// The minimal combinations of events for which the formula holds; none for a hole. Tabulates
/// 2^n rows for n events and throws std::length_error above 22 events.
CutSets MinimalCutSets(const FormulaPtr& formula);

/// The top event's unavailability with cut sets taken as independent, events that all of them share
/// being taken out first (Esary and Proschan 1963). 0 without cut sets.
double EsaryProschan(const CutSets& cutSets, const EventFigures& unavailability);

/// The top event's frequency: each cut set's own, times the probability that no other cut set
/// holds. A cut set's own is the sum over its events of the event's frequency times the
/// unavailabilities of the others. An event without an entry in `frequency` has none.
double TopFrequency(const CutSets& cutSets, const EventFigures& unavailability,
                    const EventFigures& frequency);

/// One cut set per line, events separated by blanks; what tests print.
std::string ToText(const CutSets& cutSets);

}  // namespace FTS
