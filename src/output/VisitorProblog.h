#pragma once

#include <string>
#include <string_view>

#include "output/ResultFile.h"
#include "output/Visitor.h"

namespace FTS {

/// The text as the atom of a logic program: tab, line ends, blank, "-", "." and ":" become "_", and
/// a capital in front becomes small. All other characters stay, so that a user finds the names
/// again; a name with brackets in it, or with a digit or "_" in front, is no atom.
std::string Sanitise(std::string_view text);

/// Writes the model, not its trees, as one ProbLog program: the architecture as facts, the failure
/// logic as rules and the failure data as probabilistic facts. See docs/formats/problog.md.
///
/// The file lies in the working folder and has the sanitised name of the model. One that cannot be
/// written is missed without a word.
class VisitorProblog : public Visitor {
 public:
  using Visitor::Enter;
  using Visitor::Leave;
  using Visitor::Visit;

  // Architecture and rules: output/VisitorProblog.cpp

  void Enter(Model& model) override;
  void Enter(Perspective& perspective) override;
  void Enter(Component& component) override;
  void Leave(Component& component) override;
  void Enter(Port& port) override;
  void Enter(Line& line) override;
  void Enter(InputDeviation& deviation) override;
  void Enter(Hazard& hazard) override;
  void Leave(Hazard& hazard) override;
  void Enter(ExportedDeviation& deviation) override;
  void Enter(OutputDeviation& deviation) override;
  void Leave(OutputDeviation& deviation) override;
  void Enter(Cause& cause) override;
  void Visit(Cause& cause) override;

  // Failure logic and events: output/ProblogNodes.cpp

  void Visit(AndGate& gate) override;
  void Visit(OrGate& gate) override;
  void Visit(NotGate& gate) override;
  void Visit(GotoNode& node) override;
  void Enter(BasicEvent& event) override;
  void Enter(CCF& event) override;
  void Enter(CircleNode& event) override;
  void Enter(NormalEvent& event) override;
  void Enter(ExportedDeviationNode& event) override;
  void Enter(InputDeviationNode& event) override;
  void Enter(OutputDeviationNode& event) override;
  void Enter(ExportedDeviationProxy& proxy) override;
  void Enter(InputDeviationProxy& proxy) override;
  void Enter(OutputDeviationProxy& proxy) override;

 protected:
  /// What hangs below a deviation belongs to a rule of its own.
  void WalkChildren(FaultTreeNode& node) override;

 private:
  class Rule;

  /// The node as the body of a rule; "null", which nothing proves, for no logic at all.
  std::string BodyOf(FaultTreeNode* node);
  /// Appends the sign and the node to the body; neither, and false, when the node has no text, as a
  /// potential common cause without an actual one. An operator needs something on both sides.
  bool WriteBehind(std::string_view sign, FaultTreeNode& node);
  /// Appends the gate's children to the body.
  void WriteJoined(FaultTreeNode& gate, std::string_view separator);
  /// An event in a rule; outside one, the fact that it occurs with its probability.
  void WriteEvent(const BasicEvent& event, const std::string& term);
  void WriteFormula(const BasicEvent& event);
  void WriteInRule(const std::string& term);
  void Put(std::string_view text);

  ResultFile out;
  std::string body;         // Of the rule being put together.
  bool insideRule = false;  // Text goes to `body`, and events are no facts.
  std::string modelAtom;
  std::string head;  // Of the causes that are being walked.
};

}  // namespace FTS
