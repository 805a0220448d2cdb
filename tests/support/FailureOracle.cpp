#include "support/FailureOracle.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <utility>

namespace FTS {
namespace {

constexpr std::size_t MostEvents = 22;

/// One bit for each combination of n events, 64 of them in a word: bit r tells whether the formula
/// holds when exactly the events i with bit i set in r have occurred. Bits beyond 2^n mean nothing.
using Table = std::vector<std::uint64_t>;

bool Holds(const Table& table, std::size_t row) {
  return (table[row / 64] >> (row % 64) & 1U) != 0;
}

class Tabulation {
 public:
  explicit Tabulation(const std::set<std::string>& events)
      : names(events.begin(), events.end()), rows(std::size_t{1} << names.size()) {}

  const Table& Of(const FormulaPtr& formula) {
    const auto known = tables.find(formula.get());
    if (known != tables.end()) return known->second;
    Table table =
        formula->kind == Formula::Kind::EVENT ? Column(formula->event) : Combined(*formula);
    return tables.emplace(formula.get(), std::move(table)).first->second;
  }

  std::set<std::string> EventsOfRow(std::size_t row) const {
    std::set<std::string> result;
    for (std::size_t i = 0; i < names.size(); ++i) {
      if ((row >> i & 1U) != 0) result.insert(names[i]);
    }
    return result;
  }

  std::size_t EventCount() const { return names.size(); }
  std::size_t RowCount() const { return rows; }

 private:
  Table Column(const std::string& event) const {
    const auto place = std::lower_bound(names.begin(), names.end(), event);
    const auto i = static_cast<std::size_t>(place - names.begin());
    Table column(WordCount());
    for (std::size_t row = 0; row < rows; ++row) {
      if ((row >> i & 1U) != 0) column[row / 64] |= std::uint64_t{1} << (row % 64);
    }
    return column;
  }

  std::size_t WordCount() const { return (rows + 63) / 64; }

  Table Combined(const Formula& gate) {
    Table result = Of(gate.operands.front());
    for (std::size_t k = 1; k < gate.operands.size(); ++k) {
      const Table& operand = Of(gate.operands[k]);
      for (std::size_t word = 0; word < result.size(); ++word) {
        result[word] = gate.kind == Formula::Kind::AND ? result[word] & operand[word]
                                                       : result[word] | operand[word];
      }
    }
    return result;
  }

  std::vector<std::string> names;  // Ascending.
  std::size_t rows;
  std::map<const Formula*, Table> tables;
};

void CollectEvents(const FormulaPtr& formula, std::set<const Formula*>& seen,
                   std::set<std::string>& events) {
  if (!formula || !seen.insert(formula.get()).second) return;
  if (formula->kind == Formula::Kind::EVENT) events.insert(formula->event);
  for (const FormulaPtr& operand : formula->operands) CollectEvents(operand, seen, events);
}

FormulaPtr GateOf(Formula::Kind kind, const std::vector<FormulaPtr>& operands) {
  auto gate = std::make_shared<Formula>();
  gate->kind = kind;
  std::copy_if(operands.begin(), operands.end(), std::back_inserter(gate->operands),
               [](const FormulaPtr& operand) { return operand != nullptr; });
  if (gate->operands.empty()) return nullptr;
  return gate;
}

double Figure(const EventFigures& figures, const std::string& event) {
  const auto found = figures.find(event);
  return found == figures.end() ? 0.0 : found->second;
}

double Product(const std::set<std::string>& events, const EventFigures& unavailability) {
  double product = 1.0;
  for (const std::string& event : events) product *= Figure(unavailability, event);
  return product;
}

std::set<std::string> EventsInAll(const CutSets& cutSets) {
  std::set<std::string> common = *cutSets.begin();
  for (const auto& cutSet : cutSets) {
    std::erase_if(common, [&](const std::string& event) { return !cutSet.contains(event); });
  }
  return common;
}

double SetFrequency(const std::set<std::string>& cutSet, const EventFigures& unavailability,
                    const EventFigures& frequency) {
  double sum = 0.0;
  for (const std::string& event : cutSet) {
    std::set<std::string> others = cutSet;
    others.erase(event);
    sum += Figure(frequency, event) * Product(others, unavailability);
  }
  return sum;
}

}  // namespace

FormulaPtr EventFormula(const std::string& fullName) {
  auto leaf = std::make_shared<Formula>();
  leaf->kind = Formula::Kind::EVENT;
  leaf->event = fullName;
  return leaf;
}

FormulaPtr AllOf(const std::vector<FormulaPtr>& operands) {
  return GateOf(Formula::Kind::AND, operands);
}

FormulaPtr AnyOf(const std::vector<FormulaPtr>& operands) {
  return GateOf(Formula::Kind::OR, operands);
}

std::set<std::string> EventsOf(const FormulaPtr& formula) {
  std::set<const Formula*> seen;
  std::set<std::string> events;
  CollectEvents(formula, seen, events);
  return events;
}

CutSets MinimalCutSets(const FormulaPtr& formula) {
  CutSets result;
  if (!formula) return result;
  const std::set<std::string> events = EventsOf(formula);
  if (events.size() > MostEvents) throw std::length_error("too many events for a truth table");
  Tabulation tabulation(events);
  const Table& table = tabulation.Of(formula);
  for (std::size_t row = 0; row < tabulation.RowCount(); ++row) {
    if (!Holds(table, row)) continue;
    // With AND and OR alone, a combination is minimal when no single event can be spared.
    bool minimal = true;
    for (std::size_t i = 0; i < tabulation.EventCount() && minimal; ++i) {
      const std::size_t bit = std::size_t{1} << i;
      minimal = (row & bit) == 0 || !Holds(table, row ^ bit);
    }
    if (minimal) result.insert(tabulation.EventsOfRow(row));
  }
  return result;
}

double EsaryProschan(const CutSets& cutSets, const EventFigures& unavailability) {
  if (cutSets.empty()) return 0.0;
  const std::set<std::string> common = EventsInAll(cutSets);
  double none = 1.0;
  for (std::set<std::string> rest : cutSets) {
    for (const std::string& event : common) rest.erase(event);
    none *= 1.0 - Product(rest, unavailability);
  }
  return (1.0 - none) * Product(common, unavailability);
}

double TopFrequency(const CutSets& cutSets, const EventFigures& unavailability,
                    const EventFigures& frequency) {
  double sum = 0.0;
  for (const auto& cutSet : cutSets) {
    double noOther = 1.0;
    for (const auto& other : cutSets) {
      if (other != cutSet) noOther *= 1.0 - Product(other, unavailability);
    }
    sum += SetFrequency(cutSet, unavailability, frequency) * noOther;
  }
  return sum;
}

std::string ToText(const CutSets& cutSets) {
  std::string text;
  for (const auto& cutSet : cutSets) {
    std::string line;
    for (const std::string& event : cutSet) line += (line.empty() ? "" : " ") + event;
    text += line + "\n";
  }
  return text;
}

}  // namespace FTS
