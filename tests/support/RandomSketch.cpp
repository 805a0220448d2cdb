#include "support/RandomSketch.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "support/Dice.h"
#include "support/SketchSolution.h"

namespace FTS {
namespace {

constexpr int DeepestLevel = 2;  // Systems lie three levels deep: 0, 1 and 2.

struct SketchPort {
  int component;
  std::string port;
};

/// Makes components in the order in which signals flow: a component's inputs come from those made
/// before it in its system, or from the boundary around. So loops are rare, and arise only where
/// undirected lines let signals run backwards.
class SketchBuilder {
 public:
  SketchBuilder(std::uint64_t seed, bool initUnconnected)
      : dice(seed), unconnected(initUnconnected), eventsLeft(dice.Between(10, 30)) {}

  ModelSketch Build() {
    const std::vector<std::string> all = {"Omission", "Commission", "Value", "Late"};
    classes = dice.PickSome(all, dice.Chance(75) ? dice.Between(1, 2) : 3);
    for (const std::string& perspective : PerspectiveNames()) {
      const int index = sketch.AddPerspective(perspective);
      AddCommonCauses(index);
      FillSystem(sketch.perspectives[index].system, 0);
    }
    AddTops();
    return std::move(sketch);
  }

 private:
  // The default perspective is the first by name, so the second one made may be it.
  std::vector<std::string> PerspectiveNames() {
    if (dice.Chance(60)) return {"DEFAULT"};
    if (dice.Chance(25)) return {"Plant"};
    if (dice.Chance(50)) return {"Hardware", "Software"};
    return {"Platform", "Logic"};
  }

  void AddCommonCauses(int perspective) {
    const int count = dice.Chance(60) ? 0 : dice.Between(1, 2);
    for (int i = 0; i < count; ++i) {
      const std::string name = "ccf" + std::to_string(++commonCauseCount);
      sketch.perspectives[perspective].commonCauses.push_back({name, RandomFigure(), false});
    }
  }

  double RandomFigure() { return dice.Between(1, 999) / 1000.0; }

  // ------------------------------------------------------------------ components
  void FillSystem(int system, int depth) {
    const int owner = sketch.systems[system].owner;
    std::vector<SketchPort> sources;
    if (owner >= 0) sources = PortsOf(owner, "in");
    const int count = depth == 0 ? dice.Between(2, 5) : dice.Between(1, 3);
    for (int i = 0; i < count; ++i) {
      const std::string name(1, static_cast<char>('A' + i));
      const int component = AddComponent(system, name, depth, sources);
      for (const SketchPort& out : PortsOf(component, "out")) sources.push_back(out);
    }
    if (owner < 0) return;
    for (const SketchPort& out : PortsOf(owner, "out")) Connect(system, out, sources);
  }

  int AddComponent(int system, const std::string& name, int depth,
                   const std::vector<SketchPort>& sources) {
    const SketchBlock block = RandomBlock(depth, !sources.empty());
    const int component = sketch.AddComponent(system, name, RandomPorts(block, !sources.empty()));
    for (const SketchPort& in : PortsOf(component, "in")) Connect(system, in, sources);
    if (block == SketchBlock::REFINED || block == SketchBlock::BOTH) {
      FillSystem(sketch.Refine(component), depth + 1);
    }
    sketch.components[component].block = block;
    if (block == SketchBlock::NOT_REFINED || block == SketchBlock::BOTH) Annotate(component);
    finished.push_back(component);
    return component;
  }

  SketchBlock RandomBlock(int depth, bool hasSources) {
    const int roll = dice.Roll(100);
    if (roll < 15 && hasSources) return SketchBlock::PROPAGATOR;
    if (depth < DeepestLevel && roll < 35) return SketchBlock::REFINED;
    if (depth < DeepestLevel && roll < 50) return SketchBlock::BOTH;
    return SketchBlock::NOT_REFINED;
  }

  std::vector<std::string> RandomPorts(SketchBlock block, bool hasSources) {
    if (block == SketchBlock::PROPAGATOR) return {"in1", "out1"};
    std::vector<std::string> ports;
    const int ins = hasSources || unconnected ? dice.Roll(4) : 0;
    for (int i = 1; i <= ins; ++i) ports.push_back("in" + std::to_string(i));
    const int outs = dice.Chance(75) ? 1 : 2;
    for (int i = 1; i <= outs; ++i) ports.push_back("out" + std::to_string(i));
    return ports;
  }

  std::vector<SketchPort> PortsOf(int component, const std::string& prefix) const {
    std::vector<SketchPort> found;
    for (const std::string& port : sketch.components[component].ports) {
      if (port.starts_with(prefix)) found.push_back({component, port});
    }
    return found;
  }

  // --------------------------------------------------------------- failure data
  void Annotate(int component) {
    AddEvents(component);
    if (sketch.PerspectiveOf(component) > 0 && !hosts.empty() && dice.Chance(70)) {
      sketch.components[component].allocation = dice.Pick(hosts);
    }
    for (const SketchPort& out : PortsOf(component, "out")) {
      for (const std::string& failureClass : classes) {
        if (dice.Chance(75)) AddDeviation(component, failureClass, out.port);
      }
    }
    AddExports(component);
    sketch.components[component].alternative = dice.Chance(15);
  }

  void AddEvents(int component) {
    SketchComponent& own = sketch.components[component];
    for (const SketchEvent& cause :
         sketch.perspectives[sketch.PerspectiveOf(component)].commonCauses) {
      if (dice.Chance(30)) own.commonCauses.push_back(cause.name);
    }
    int count = std::min(eventsLeft, dice.Chance(15) ? 0 : dice.Between(1, 4));
    if (own.commonCauses.empty() && PortsOf(component, "in").empty()) count = std::max(count, 1);
    for (int i = 1; i <= count; ++i) {
      const bool normal = dice.Chance(15);
      own.events.push_back({(normal ? "n" : "f") + std::to_string(i), RandomFigure(), normal});
    }
    eventsLeft = std::max(0, eventsLeft - count);
  }

  void AddDeviation(int component, const std::string& failureClass, const std::string& port) {
    SketchDeviation deviation;
    deviation.failureClass = failureClass;
    deviation.port = port;
    if (!unconnected || dice.Chance(92)) deviation.causes = RandomCauses(component);
    if (deviation.causes.empty() && !unconnected) return;
    if (dice.Chance(25)) deviation.label = "label" + std::to_string(++labelCount);
    sketch.components[component].deviations.push_back(std::move(deviation));
  }

  void AddExports(int component) {
    const bool wanted = sketch.perspectives.size() > 1 || sketch.PerspectiveOf(component) == 0;
    if (!wanted || !dice.Chance(35)) return;
    SketchDeviation exported;
    exported.failureClass = dice.Pick(classes);
    exported.port = "service";
    exported.causes = RandomCauses(component);
    if (exported.causes.empty()) return;
    sketch.components[component].exported.push_back(std::move(exported));
    if (sketch.PerspectiveOf(component) == 0) hosts.push_back(component);
  }

  std::vector<SketchLogic> RandomCauses(int component) {
    const std::vector<SketchLogic> atoms = Atoms(component);
    std::vector<SketchLogic> causes;
    if (atoms.empty()) return causes;
    const int count = dice.Chance(80) ? 1 : 2;
    for (int i = 0; i < count; ++i) causes.push_back(RandomLogic(atoms, 2));
    return causes;
  }

  // Mostly ANDs below ORs and ORs below ANDs, so that cut sets grow in number and order.
  SketchLogic RandomLogic(const std::vector<SketchLogic>& atoms, int depth) {
    return RandomGate(atoms, depth, dice.Chance(50));
  }

  SketchLogic RandomGate(const std::vector<SketchLogic>& atoms, int depth, bool isOr) {
    if (depth == 0 || dice.Chance(12)) return dice.Pick(atoms);
    std::vector<SketchLogic> operands;
    const int count = dice.Between(2, depth + 2);
    for (int i = 0; i < count; ++i) {
      operands.push_back(RandomGate(atoms, depth - 1, dice.Chance(80) ? !isOr : isOr));
    }
    SketchLogic gate = isOr ? OrLogic(operands) : AndLogic(operands);
    gate.spelling = dice.Chance(70) ? 0 : dice.Between(1, 2);
    gate.parentheses = dice.Chance(20);
    return gate;
  }

  // What a component's logic may name.
  std::vector<SketchLogic> Atoms(int component) {
    const SketchComponent& own = sketch.components[component];
    std::vector<SketchLogic> atoms;
    for (const SketchEvent& event : own.events) atoms.push_back(EventLogic(event.name));
    for (const std::string& cause : own.commonCauses) {
      atoms.push_back(EventLogic(PotentialName(cause)));
    }
    AddInputAtoms(component, atoms);
    AddAllocationAtoms(component, atoms);
    if (dice.Chance(25)) AddJumpAtom(component, atoms);
    return atoms;
  }

  void AddInputAtoms(int component, std::vector<SketchLogic>& atoms) {
    SketchSolution solution(sketch);
    for (const SketchPort& in : PortsOf(component, "in")) {
      for (const std::string& failureClass : classes) {
        if (unconnected || solution.Arriving(component, in.port, failureClass)) {
          atoms.push_back(InputLogic(failureClass, in.port));
        }
      }
    }
  }

  void AddAllocationAtoms(int component, std::vector<SketchLogic>& atoms) {
    const int host = sketch.components[component].allocation;
    if (host < 0) return;
    SketchLogic atom;
    atom.kind = SketchLogic::Kind::FROM_ALLOCATION;
    for (const SketchDeviation& exported : sketch.components[host].exported) {
      atom.text = exported.failureClass + "-" + exported.port;
      atoms.push_back(atom);
    }
    if (unconnected && dice.Chance(20)) {
      atom.text = dice.Pick(classes) + "-missing";
      atoms.push_back(atom);
    }
  }

  void AddJumpAtom(int component, std::vector<SketchLogic>& atoms) {
    std::vector<SketchLogic> jumps = LocalJumps(component);
    if (!finished.empty()) {
      const int target = dice.Pick(finished);
      for (SketchLogic& jump : GlobalJumps(target)) jumps.push_back(std::move(jump));
    }
    if (!jumps.empty()) atoms.push_back(dice.Pick(jumps));
  }

  // To the deviations that the component has so far, and to what leaves the components inside it.
  std::vector<SketchLogic> LocalJumps(int component) const {
    std::vector<SketchLogic> jumps;
    const SketchComponent& own = sketch.components[component];
    for (const SketchDeviation& deviation : own.deviations) {
      AddJump(SketchLogic::Kind::LOCAL_GOTO, deviation.failureClass, {component, deviation.port},
              jumps);
    }
    if (own.inside < 0) return jumps;
    for (const int inner : sketch.systems[own.inside].components) {
      for (const SketchPort& out : PortsOf(inner, "out")) {
        for (const std::string& failureClass : classes) {
          AddJump(SketchLogic::Kind::LOCAL_GOTO, failureClass, out, jumps);
        }
      }
    }
    return jumps;
  }

  std::vector<SketchLogic> GlobalJumps(int target) const {
    std::vector<SketchLogic> jumps;
    for (const SketchPort& out : PortsOf(target, "out")) {
      for (const std::string& failureClass : classes) {
        AddJump(SketchLogic::Kind::GLOBAL_GOTO, failureClass, out, jumps);
      }
    }
    for (const SketchDeviation& deviation : sketch.components[target].deviations) {
      if (deviation.label.empty()) continue;
      AddJump(SketchLogic::Kind::LABEL_GOTO, deviation.failureClass, {target, deviation.port},
              jumps);
    }
    // The full name of an exported deviation bears its perspective, and "DEFAULT" can't be written.
    if (sketch.perspectives[sketch.PerspectiveOf(target)].name == "DEFAULT") return jumps;
    for (const SketchDeviation& exported : sketch.components[target].exported) {
      SketchLogic jump;
      jump.kind = SketchLogic::Kind::EXPORT_GOTO;
      jump.text = exported.failureClass + "-" + exported.port;
      jump.component = target;
      jumps.push_back(jump);
    }
    return jumps;
  }

  void AddJump(SketchLogic::Kind kind, const std::string& failureClass, const SketchPort& target,
               std::vector<SketchLogic>& jumps) const {
    if (!unconnected &&
        !SketchSolution(sketch).Leaving(target.component, target.port, failureClass)) {
      return;
    }
    SketchLogic jump;
    jump.kind = kind;
    jump.text = failureClass;
    jump.component = target.component;
    jump.port = target.port;
    jumps.push_back(jump);
  }

  // ---------------------------------------------------------------------- lines
  void Connect(int system, const SketchPort& sink, const std::vector<SketchPort>& sources) {
    if (unconnected && dice.Chance(15)) return;
    if (sources.empty()) {
      if (dice.Chance(50)) AddLonelyEnd(system, sink);
      return;
    }
    if (!dice.Chance(30) || !JoinLine(system, sink)) AddLine(system, sink, sources);
    if (dice.Chance(12)) AddReferenceLine(system, sink, sources);
  }

  void AddLonelyEnd(int system, const SketchPort& sink) {
    SketchLine line;
    line.connections.push_back({sink.component, sink.port, "", Placeholder("ORPORT")});
    sketch.systems[system].lines.push_back(line);
  }

  // A further reader on a line that is there already.
  bool JoinLine(int system, const SketchPort& sink) {
    std::vector<SketchLine>& lines = sketch.systems[system].lines;
    if (lines.empty()) return false;
    SketchLine& line = lines[static_cast<std::size_t>(dice.Roll(static_cast<int>(lines.size())))];
    for (const SketchConnection& end : line.connections) {
      if (end.component == sink.component && end.port == sink.port) return false;
    }
    if (line.connections.size() < 2) return false;
    AddSink(line, sink, SinkPlaceholder(line));
    return true;
  }

  void AddLine(int system, const SketchPort& sink, const std::vector<SketchPort>& sources) {
    if (dice.Chance(20)) {
      AddReferenceLine(system, sink, sources);
      return;
    }
    SketchLine line;
    line.directed = dice.Chance(65);
    const std::vector<std::string> defaults = {"OR", "OR", "AND", "OUTPUT"};
    line.defaultOperator = dice.Pick(defaults);
    // On a directed line without a marked source every port is one.
    const bool marked = line.directed && dice.Chance(92);
    const std::vector<SketchPort> chosen = dice.PickSome(sources, dice.Between(1, 3));
    for (const SketchPort& source : chosen) {
      AddSource(line, source, marked ? OutputWord(line) : SinkPlaceholder(line).text);
    }
    SketchLogic expression = SinkPlaceholder(line);
    if (dice.Chance(12)) {
      const SketchPort& other = dice.Pick(sources);
      std::vector<SketchLogic> operands = {expression, PortLogic(other.component, other.port)};
      expression = dice.Chance(50) ? OrLogic(operands) : AndLogic(operands);
    }
    AddSink(line, sink, expression);
    sketch.systems[system].lines.push_back(line);
  }

  // A line on which the sink names its sources.
  void AddReferenceLine(int system, const SketchPort& sink,
                        const std::vector<SketchPort>& sources) {
    SketchLine line;
    line.directed = dice.Chance(50);
    std::vector<SketchLogic> references;
    for (const SketchPort& source : dice.PickSome(sources, dice.Between(1, 3))) {
      references.push_back(PortLogic(source.component, source.port));
      if (dice.Chance(30)) AddSource(line, source, "OUTPUTPORT");
    }
    AddSink(line, sink, references.size() == 1 ? references[0] : RandomLogic(references, 2));
    sketch.systems[system].lines.push_back(line);
  }

  static std::string OutputWord(const SketchLine& line) {
    return line.defaultOperator == "OUTPUT" ? "DEFAULT" : "OUTPUTPORT";
  }

  SketchLogic SinkPlaceholder(const SketchLine& line) {
    const std::vector<std::string> words = {"ANDPORT", "ORPORT", "DEFAULT"};
    const bool defaultReads = line.defaultOperator != "OUTPUT";
    return Placeholder(words[static_cast<std::size_t>(dice.Roll(defaultReads ? 3 : 2))]);
  }

  // For all classes, or, seldom, for some of them only.
  void AddSource(SketchLine& line, const SketchPort& source, const std::string& word) {
    if (dice.Chance(85)) {
      line.connections.push_back({source.component, source.port, "", Placeholder(word)});
      return;
    }
    for (const std::string& failureClass : dice.PickSome(classes, dice.Between(1, 2))) {
      line.connections.push_back({source.component, source.port, failureClass, Placeholder(word)});
    }
  }

  // For all classes, for one class, or with another expression for one class.
  void AddSink(SketchLine& line, const SketchPort& sink, const SketchLogic& expression) {
    const int roll = dice.Roll(100);
    if (roll < 85) {
      line.connections.push_back({sink.component, sink.port, "", WithClasses(expression, "")});
    }
    if (roll >= 75) {
      const std::string failureClass = dice.Pick(classes);
      const SketchLogic special = roll < 85 ? Placeholder("ORPORT") : expression;
      line.connections.push_back(
          {sink.component, sink.port, failureClass, WithClasses(special, failureClass)});
    }
  }

  // On a connection for one class every reference names a class, mostly the same; on one for all
  // classes hardly any does.
  SketchLogic WithClasses(SketchLogic logic, const std::string& failureClass) {
    for (SketchLogic& operand : logic.operands) operand = WithClasses(operand, failureClass);
    if (logic.kind != SketchLogic::Kind::PORT) return logic;
    logic.text = failureClass;
    if (dice.Chance(10)) logic.text = dice.Pick(classes);
    return logic;
  }

  // ----------------------------------------------------------------------- tops
  struct Top {
    int component;
    std::string port;
    std::string failureClass;
  };

  void AddTops() {
    if (dice.Chance(25)) MarkOutports();
    for (const int component : sketch.PresentComponents()) {
      for (const SketchDeviation& deviation : sketch.components[component].deviations) {
        if (deviation.systemOutport) return;
      }
    }
    AddHazards();
  }

  void MarkOutports() {
    int left = dice.Between(1, 3);
    for (SketchComponent& component : sketch.components) {
      for (SketchDeviation& deviation : component.deviations) {
        if (left == 0 || deviation.causes.empty() || dice.Chance(60)) continue;
        deviation.systemOutport = true;
        --left;
      }
    }
  }

  void AddHazards() {
    const std::vector<Top> tops = PossibleTops();
    if (tops.empty()) return;
    const int count = dice.Between(1, 3);
    for (int i = 1; i <= count; ++i) {
      std::vector<SketchLogic> leaves;
      for (const Top& top : dice.PickSome(tops, dice.Between(1, 3))) {
        leaves.push_back(TopLogic(top.failureClass, top.component, top.port));
      }
      SketchHazard hazard;
      hazard.name = "Hazard" + std::to_string(i);
      const int causes = dice.Chance(75) ? 1 : 2;
      for (int k = 0; k < causes; ++k) hazard.causes.push_back(RandomLogic(leaves, 2));
      sketch.hazards.push_back(hazard);
    }
  }

  std::vector<Top> PossibleTops() const {
    std::vector<Top> tops;
    SketchSolution solution(sketch);
    for (const int component : sketch.PresentComponents()) {
      if (sketch.components[component].block == SketchBlock::PROPAGATOR) continue;
      for (const SketchPort& out : PortsOf(component, "out")) {
        for (const std::string& failureClass : classes) {
          if (solution.Leaving(component, out.port, failureClass)) {
            tops.push_back({component, out.port, failureClass});
          }
        }
      }
    }
    return tops;
  }

  ModelSketch sketch;
  Dice dice;
  bool unconnected;
  int eventsLeft;
  int commonCauseCount = 0;
  int labelCount = 0;
  std::vector<std::string> classes;
  std::vector<int> hosts;     // In the first perspective, with exported deviations.
  std::vector<int> finished;  // Components whose failure data are complete.
};

}  // namespace

ModelSketch MakeRandomSketch(std::uint64_t seed, bool unconnected) {
  return SketchBuilder(seed, unconnected).Build();
}

}  // namespace FTS
