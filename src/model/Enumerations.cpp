#include "model/Enumerations.h"

#include <array>
#include <cassert>
#include <string_view>

namespace FTS {
namespace {

template <std::size_t Count>
using TextTable = std::array<std::string_view, Count>;

constexpr TextTable<20> NodeTypeTexts = {"NullOp",
                                         "Or",
                                         "And",
                                         "PAnd",
                                         "SAnd",
                                         "POr",
                                         "Not",
                                         "XOr",
                                         "InputDeviation",
                                         "OutputDeviation",
                                         "FailureMode",
                                         "Circle",
                                         "PCCF",
                                         "ACCF",
                                         "Module",
                                         "External",
                                         "ExternalDeviation",
                                         "Normal",
                                         "Complement",
                                         "State"};
static_assert(NodeTypeTexts[static_cast<std::size_t>(NodeType::State)] == "State");

constexpr TextTable<4> HBlockTypeTexts = {"PROPAGATOR", "REFINED", "NOT_REFINED", "BOTH"};
static_assert(HBlockTypeTexts[static_cast<std::size_t>(HBlockType::BOTH)] == "BOTH");

constexpr TextTable<3> LineOperatorTexts = {"AND", "OR", "OUTPUT"};
static_assert(LineOperatorTexts[static_cast<std::size_t>(LineOperator::OUTPUT)] == "OUTPUT");

constexpr TextTable<13> FailureModelTexts = {
    "CONSTANT", "MTTR",    "MTTF",       "MTTFMTTR", "FIXED",        "TIME", "BINOMIAL",
    "POISSON",  "DORMANT", "SEQUENTIAL", "VARIABLE", "DISTRIBUTION", "NONE"};
static_assert(FailureModelTexts[static_cast<std::size_t>(FailureModel::NONE)] == "NONE");

template <std::size_t Count, typename Enumeration>
std::string TextOf(const TextTable<Count>& texts, Enumeration value) {
  const auto index = static_cast<std::size_t>(value);
  assert(index < Count && "The value is no enumerator.");
  return std::string(texts[index]);
}

}  // namespace

std::string ToText(NodeType type) { return TextOf(NodeTypeTexts, type); }
std::string ToText(HBlockType type) { return TextOf(HBlockTypeTexts, type); }
std::string ToText(LineOperator op) { return TextOf(LineOperatorTexts, op); }
std::string ToText(FailureModel failureModel) { return TextOf(FailureModelTexts, failureModel); }

}  // namespace FTS
