#include "optimisation/RedundancyBenchmark.h"

#include <array>
#include <charconv>

namespace FTS {

namespace {

constexpr int Subsystems = 14;
constexpr int MostChoices = 4;

using Row = std::array<BenchmarkChoice, MostChoices>;

constexpr std::array<Row, Subsystems> Table = {{
    {{{0.90, 1, 3}, {0.93, 1, 4}, {0.91, 2, 2}, {0.95, 2, 5}}},
    {{{0.95, 2, 8}, {0.94, 1, 10}, {0.93, 1, 9}, {}}},
    {{{0.85, 2, 7}, {0.90, 3, 5}, {0.87, 1, 6}, {0.92, 4, 4}}},
    {{{0.83, 3, 5}, {0.87, 4, 6}, {0.85, 5, 4}, {}}},
    {{{0.94, 2, 4}, {0.93, 2, 3}, {0.95, 3, 5}, {}}},
    {{{0.99, 3, 5}, {0.98, 3, 4}, {0.97, 2, 5}, {0.96, 2, 4}}},
    {{{0.91, 4, 7}, {0.92, 4, 8}, {0.94, 5, 9}, {}}},
    {{{0.81, 3, 4}, {0.90, 5, 7}, {0.91, 6, 6}, {}}},
    {{{0.97, 2, 8}, {0.99, 3, 9}, {0.96, 4, 7}, {0.91, 3, 8}}},
    {{{0.83, 4, 6}, {0.85, 4, 5}, {0.90, 5, 6}, {}}},
    {{{0.94, 3, 5}, {0.95, 4, 6}, {0.96, 5, 6}, {}}},
    {{{0.79, 2, 4}, {0.82, 3, 5}, {0.85, 4, 6}, {0.90, 5, 7}}},
    {{{0.98, 2, 5}, {0.99, 3, 5}, {0.97, 2, 6}, {}}},
    {{{0.90, 4, 6}, {0.92, 4, 7}, {0.95, 5, 6}, {0.99, 6, 9}}},
}};

/// What stands behind the last of the separators.
std::string_view Behind(std::string_view separators, std::string_view fullName) {
  return fullName.substr(fullName.find_last_of(separators) + 1);
}

/// The subsystem of that number; 0 for a text that is no number of one, or not all of it.
int SubsystemOf(std::string_view number) {
  int subsystem = 0;
  const auto end = number.data() + number.size();
  const auto read = std::from_chars(number.data(), end, subsystem);
  const bool whole = read.ec == std::errc() && read.ptr == end;
  return whole && subsystem >= 1 && subsystem <= Subsystems ? subsystem : 0;
}

}  // namespace

int FlatBenchmarkSubsystem(std::string_view fullName) {
  constexpr std::string_view Prefix = "fyffe";
  constexpr std::size_t Digits = 2;
  const std::string_view name = Behind(":", fullName);
  if (!name.starts_with(Prefix) || name.size() != Prefix.size() + Digits) return 0;
  return SubsystemOf(name.substr(Prefix.size()));
}

int TreeBenchmarkSubsystem(std::string_view fullName) {
  constexpr std::string_view Prefix = "component";
  const std::string_view name = Behind(".:", fullName);
  if (!name.starts_with(Prefix) || name.back() < 'a' || name.back() > 'd') return 0;
  const std::string_view number = name.substr(Prefix.size(), name.size() - Prefix.size() - 1);
  return number.starts_with('0') ? 0 : SubsystemOf(number);
}

BenchmarkChoice BenchmarkChoiceOf(int subsystem, std::int32_t choice) {
  if (subsystem < 1 || subsystem > Subsystems || choice < 1 || choice > MostChoices) return {};
  return Table[static_cast<std::size_t>(subsystem - 1)][static_cast<std::size_t>(choice - 1)];
}

}  // namespace FTS
