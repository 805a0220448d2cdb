#pragma once

#include <memory>
#include <string>

#include "faulttree/FaultTreeGate.h"

namespace FTS {

/// True when all inputs are.
class AndGate : public FaultTreeGate, public IPrime {
 public:
  AndGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "AndGate"; }
  std::string GetPrimeType() const override { return "AND GATE"; }
  bool AddPrimeObject(FaultTreeNode& object, IPrime& identity) override;
  /// The product of the primes of the events among the inputs that `AddPrimeObject` has taken in.
  virtual double GetPrime() const { return prime; }

 private:
  void RecomputePrime();
};

/// True when one input is.
class OrGate : public FaultTreeGate {
 public:
  OrGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "OrGate"; }
  bool AddPrimeObject(FaultTreeNode& object, IPrime& identity) override;
};

/// True when exactly one of its inputs is. The analysis takes the first input that has cut sets.
class XorGate : public FaultTreeGate {
 public:
  XorGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "XorGate"; }
};

/// Priority AND: all inputs, in their order. Treated structurally, see `XorGate`.
class PandGate : public FaultTreeGate {
 public:
  PandGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "PandGate"; }
};

/// Simultaneous AND. Treated structurally, see `XorGate`.
class SandGate : public FaultTreeGate {
 public:
  SandGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "SandGate"; }
};

/// Priority OR: the first input, before the others. Treated structurally, see `XorGate`.
class PorGate : public FaultTreeGate {
 public:
  PorGate(std::string initName, Model* initModel, int initId = NewId);

  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "PorGate"; }
};

}  // namespace FTS
