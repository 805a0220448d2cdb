#pragma once

#include <cstdint>
#include <string_view>

namespace FTS {

/// What a component choice of the redundancy allocation benchmark is worth.
struct BenchmarkChoice {
  double reliability = 0.0;
  double cost = 0.0;
  double weight = 0.0;
};

/// The benchmark of Fyffe, Hines and Lee (System reliability allocation and a computational
/// algorithm, IEEE Transactions on Reliability 17, 1968): a series of 14 subsystems, each with
/// three or four choices of component. It checks the search against a problem whose best designs
/// are known, without any synthesis.
///
/// The subsystem, from 1 on, that a component of the flat form stands for: exactly "fyffe01" to
/// "fyffe14" at the top of whatever perspective. 0 for any other, and for one inside another.
int FlatBenchmarkSubsystem(std::string_view fullName);
/// The same for the hierarchical form: "component1a" to "component14d" behind the last point; all
/// four letters stand for the same subsystem.
int TreeBenchmarkSubsystem(std::string_view fullName);

/// All zero for a choice, counted from 1, that the subsystem does not have.
BenchmarkChoice BenchmarkChoiceOf(int subsystem, std::int32_t choice);

}  // namespace FTS
