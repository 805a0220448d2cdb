#pragma once

#include <string>
#include <vector>

#include "output/Visitor.h"

// Every class that a walk can meet, in the order of the families.
#define FTS_VISITED_CLASSES(ROW) \
  ROW(DiagnosticLog)             \
  ROW(CutSetList)                \
  ROW(CutSet)                    \
  ROW(ExportedDeviationNode)     \
  ROW(ExportedDeviationProxy)    \
  ROW(InputDeviationNode)        \
  ROW(InputDeviationProxy)       \
  ROW(OutputDeviationNode)       \
  ROW(OutputDeviationProxy)      \
  ROW(GotoNode)                  \
  ROW(ProxyNode)                 \
  ROW(ComplementEvent)           \
  ROW(NormalEvent)               \
  ROW(ModuleEvent)               \
  ROW(CircleNode)                \
  ROW(PCCFNode)                  \
  ROW(PCCFProxy)                 \
  ROW(StateProxy)                \
  ROW(CCF)                       \
  ROW(BasicEvent)                \
  ROW(XorGate)                   \
  ROW(SandGate)                  \
  ROW(PorGate)                   \
  ROW(PandGate)                  \
  ROW(NotGate)                   \
  ROW(AndGate)                   \
  ROW(OrGate)                    \
  ROW(FaultTreeGate)             \
  ROW(FaultTreeNode)             \
  ROW(FaultTree)                 \
  ROW(FMEA)                      \
  ROW(Cause)                     \
  ROW(Hazard)                    \
  ROW(ExportedDeviation)         \
  ROW(OutputDeviation)           \
  ROW(InputDeviation)            \
  ROW(Deviation)                 \
  ROW(Implementation)            \
  ROW(Line)                      \
  ROW(Port)                      \
  ROW(Component)                 \
  ROW(Subsystem)                 \
  ROW(Perspective)               \
  ROW(Model)

namespace FTS {

/// Writes down what a walk meets, as "+X" when it enters an X and "-X" when it leaves one.
class RecordingVisitor : public Visitor {
 public:
  using Visitor::Enter;
  using Visitor::Leave;
  using Visitor::Visit;

#define FTS_RECORD(X)                                     \
  void Enter(X&) override { steps.emplace_back("+" #X); } \
  void Leave(X&) override { steps.emplace_back("-" #X); }
  FTS_VISITED_CLASSES(FTS_RECORD)
#undef FTS_RECORD

  void Enter(ReservedPlace&) override { steps.emplace_back("+ReservedPlace"); }
  void Leave(ReservedPlace&) override { steps.emplace_back("-ReservedPlace"); }

  std::vector<std::string> steps;
};

}  // namespace FTS
