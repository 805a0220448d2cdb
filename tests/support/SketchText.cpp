#include "support/SketchText.h"

#include <cstddef>
#include <locale>
#include <sstream>

#include "support/XmlText.h"

namespace FTS {
namespace {

std::string NumberOf(double value) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream.precision(17);
  stream << value;
  return stream.str();
}

const char* WordOf(SketchBlock block) {
  switch (block) {
    case SketchBlock::PROPAGATOR:
      return "Propagator";
    case SketchBlock::REFINED:
      return "Refined";
    case SketchBlock::NOT_REFINED:
      return "NotRefined";
    case SketchBlock::BOTH:
      return "Both";
  }
  return "";
}

/// Writes a sketch; one operation per kind of element.
class SketchWriter {
 public:
  explicit SketchWriter(const ModelSketch& initSketch) : sketch(initSketch) {}

  std::string Write() {
    {
      const XmlElementScope model(xml, "Model");
      xml.Leaf("Name", sketch.name);
      xml.Leaf("RiskTime", "1");
      WriteHazards();
      WritePerspectives();
    }
    return xml.Take();
  }

 private:
  void WriteHazards() {
    if (sketch.hazards.empty()) return;
    const XmlElementScope list(xml, "Hazards");
    for (const SketchHazard& hazard : sketch.hazards) {
      const XmlElementScope element(xml, "Hazard");
      xml.Leaf("Name", hazard.name);
      if (hazard.causes.size() == 1) {
        xml.Leaf("Logic", LogicText(hazard.causes[0], -1, -1));
      } else {
        WriteCauses(hazard.causes, -1);
      }
    }
  }

  void WritePerspectives() {
    if (sketch.perspectives.size() == 1 && sketch.perspectives[0].name == "DEFAULT") {
      WritePerspective(sketch.perspectives[0]);
      return;
    }
    const XmlElementScope list(xml, "Perspectives");
    for (const SketchPerspective& perspective : sketch.perspectives) {
      const XmlElementScope element(xml, "Perspective");
      xml.Leaf("Name", perspective.name);
      WritePerspective(perspective);
    }
  }

  void WritePerspective(const SketchPerspective& perspective) {
    if (!perspective.commonCauses.empty()) {
      const XmlElementScope list(xml, "ActualCCFs");
      for (const SketchEvent& cause : perspective.commonCauses) WriteEvent("ActualCCF", cause);
    }
    WriteSystem(perspective.system);
  }

  void WriteSystem(int index) {
    const SketchSystem& system = sketch.systems[index];
    const XmlElementScope element(xml, "System");
    {
      const XmlElementScope list(xml, "Components");
      for (const int component : system.components) WriteComponent(component);
    }
    if (system.lines.empty()) return;
    const XmlElementScope list(xml, "Lines");
    for (std::size_t i = 0; i < system.lines.size(); ++i) {
      WriteLine(system.lines[i], "L" + std::to_string(i + 1), system.owner);
    }
  }

  void WriteComponent(int index) {
    const SketchComponent& component = sketch.components[index];
    const XmlElementScope element(xml, "Component");
    xml.Leaf("Name", component.name);
    {
      const XmlElementScope list(xml, "Ports");
      for (const std::string& port : component.ports) {
        const XmlElementScope one(xml, "Port");
        xml.Leaf("Name", port);
      }
    }
    if (component.allocation >= 0) {
      const XmlElementScope allocations(xml, "Allocations");
      xml.Leaf("Current", sketch.FullName(component.allocation));
    }
    const XmlElementScope implementations(xml, "Implementations");
    {
      const XmlElementScope current(xml, "Current");
      WriteImplementation(index);
    }
    if (component.alternative) WriteAlternative(component);
  }

  void WriteImplementation(int index) {
    const SketchComponent& component = sketch.components[index];
    xml.Leaf("Name", "used");
    xml.Leaf("HBlockType", WordOf(component.block));
    if (component.block == SketchBlock::NOT_REFINED || component.block == SketchBlock::BOTH) {
      const XmlElementScope data(xml, "FailureData");
      WriteEvents(component.events, false);
      WriteEvents(component.events, true);
      WritePotentialCauses(component.commonCauses);
      WriteDeviations(index, component.deviations, true);
      WriteDeviations(index, component.exported, false);
    }
    if (component.block == SketchBlock::REFINED || component.block == SketchBlock::BOTH) {
      WriteSystem(component.inside);
    }
  }

  /// An implementation that is not the current one and must change nothing.
  void WriteAlternative(const SketchComponent& component) {
    const XmlElementScope alternatives(xml, "Alternatives");
    const XmlElementScope alternative(xml, "Alternative");
    xml.Leaf("Name", "spare");
    xml.Leaf("HBlockType", "NotRefined");
    const XmlElementScope data(xml, "FailureData");
    WriteEvents({{"spare_event", 0.5, false}}, false);
    const XmlElementScope list(xml, "OutputDeviations");
    for (const SketchDeviation& deviation : component.deviations) {
      const XmlElementScope element(xml, "OutputDeviation");
      xml.Leaf("Name", deviation.failureClass + "-" + deviation.port);
      xml.Leaf("FailureExpression", "spare_event");
    }
  }

  void WriteEvents(const std::vector<SketchEvent>& events, bool normal) {
    bool any = false;
    for (const SketchEvent& event : events) any |= event.normal == normal;
    if (!any) return;
    const XmlElementScope list(xml, normal ? "NormalEvents" : "BasicEvents");
    for (const SketchEvent& event : events) {
      if (event.normal == normal) WriteEvent(normal ? "NormalEvent" : "BasicEvent", event);
    }
  }

  void WriteEvent(const std::string& tag, const SketchEvent& event) {
    const XmlElementScope element(xml, tag);
    xml.Leaf("Name", event.name);
    const XmlElementScope formula(xml, "UnavailabilityFormula");
    const XmlElementScope fixed(xml, "Fixed");
    xml.Leaf("Unavailability", NumberOf(event.unavailability));
  }

  void WritePotentialCauses(const std::vector<std::string>& causes) {
    if (causes.empty()) return;
    const XmlElementScope list(xml, "PotentialCCFs");
    for (const std::string& cause : causes) {
      const XmlElementScope element(xml, "PotentialCCF");
      xml.Leaf("Name", PotentialName(cause));
      xml.Leaf("ACCF", cause);
    }
  }

  void WriteDeviations(int component, const std::vector<SketchDeviation>& deviations, bool output) {
    if (deviations.empty()) return;
    const XmlElementScope list(xml, output ? "OutputDeviations" : "ExportedPropagations");
    for (const SketchDeviation& deviation : deviations) {
      const XmlElementScope element(xml, output ? "OutputDeviation" : "ExportedPropagation");
      xml.Leaf("Name", deviation.failureClass + "-" + deviation.port);
      if (deviation.systemOutport) xml.Leaf("SystemOutport", "true");
      if (!deviation.label.empty()) xml.Leaf("GlobalLabel", deviation.label);
      if (deviation.causes.size() == 1) {
        xml.Leaf("FailureExpression", LogicText(deviation.causes[0], component, -1));
      } else if (!deviation.causes.empty()) {
        WriteCauses(deviation.causes, component);
      }
    }
  }

  void WriteCauses(const std::vector<SketchLogic>& causes, int component) {
    const XmlElementScope list(xml, "Causes");
    for (const SketchLogic& cause : causes) {
      const XmlElementScope element(xml, "Cause");
      xml.Leaf("FailureLogic", LogicText(cause, component, -1));
    }
  }

  void WriteLine(const SketchLine& line, const std::string& name, int owner) {
    const XmlElementScope element(xml, "Line");
    xml.Leaf("Name", name);
    xml.Leaf("Type", line.directed ? "Directed" : "Undirected");
    xml.Leaf("Default", line.defaultOperator);
    const XmlElementScope list(xml, "Connections");
    for (const SketchConnection& connection : line.connections) {
      const XmlElementScope one(xml, "Connection");
      xml.Leaf("Port", PortText(connection.component, connection.port, owner));
      if (!connection.failureClass.empty()) xml.Leaf("FailureClass", connection.failureClass);
      xml.Leaf("PortExpression", LogicText(connection.expression, -1, owner));
    }
  }

  /// A port as a line names it: by itself when it is on the boundary around the line.
  std::string PortText(int component, const std::string& port, int owner) const {
    if (component == owner) return port;
    return sketch.components[component].name + "." + port;
  }

  /// A port with its path. The first perspective can be left out, and "DEFAULT" has to be, since
  /// that word means something else in expressions.
  std::string GlobalPort(int component, const std::string& port) const {
    const std::string full = sketch.FullName(component) + "." + port;
    const std::string& perspective = sketch.perspectives[sketch.PerspectiveOf(component)].name;
    return perspective == "DEFAULT" ? full.substr(perspective.size() + 2) : full;
  }

  /// The target of a local goto, from the component that jumps.
  std::string LocalPort(const SketchLogic& logic, int component) const {
    const std::string own = sketch.FullName(component) + ".";
    return (sketch.FullName(logic.component) + "." + logic.port).substr(own.size());
  }

  std::string LogicText(const SketchLogic& logic, int component, int owner) const {
    switch (logic.kind) {
      case SketchLogic::Kind::OR:
      case SketchLogic::Kind::AND:
        return GateText(logic, component, owner);
      case SketchLogic::Kind::EVENT:
      case SketchLogic::Kind::PLACEHOLDER:
        return logic.text;
      case SketchLogic::Kind::INPUT:
        return logic.text + "-" + logic.port;
      case SketchLogic::Kind::FROM_ALLOCATION:
        return "FromAllocation(" + logic.text + ")";
      case SketchLogic::Kind::LOCAL_GOTO:
        return "LocalGoto(" + logic.text + "-" + LocalPort(logic, component) + ")";
      case SketchLogic::Kind::GLOBAL_GOTO:
        return "GlobalGoto(" + logic.text + "-" + GlobalPort(logic.component, logic.port) + ")";
      case SketchLogic::Kind::LABEL_GOTO:
        return "GlobalGoto(" + LabelOf(logic) + ")";
      case SketchLogic::Kind::EXPORT_GOTO: {
        const std::size_t split = logic.text.find('-');
        return "GlobalGoto(" + logic.text.substr(0, split + 1) +
               GlobalPort(logic.component, logic.text.substr(split + 1)) + ")";
      }
      case SketchLogic::Kind::PORT:
        return (logic.text.empty() ? "" : logic.text + "-") +
               PortText(logic.component, logic.port, owner);
      case SketchLogic::Kind::TOP:
        return logic.text + "-" + GlobalPort(logic.component, logic.port);
    }
    return "";
  }

  std::string LabelOf(const SketchLogic& logic) const {
    for (const SketchDeviation& deviation : sketch.components[logic.component].deviations) {
      if (deviation.failureClass == logic.text && deviation.port == logic.port) {
        return deviation.label;
      }
    }
    return "";
  }

  std::string GateText(const SketchLogic& gate, int component, int owner) const {
    static constexpr const char* OrWords[] = {" OR ", " or ", " + "};
    static constexpr const char* AndWords[] = {" AND ", " and ", " * "};
    const bool isOr = gate.kind == SketchLogic::Kind::OR;
    std::string text;
    for (const SketchLogic& operand : gate.operands) {
      if (!text.empty()) text += isOr ? OrWords[gate.spelling] : AndWords[gate.spelling];
      std::string inner = LogicText(operand, component, owner);
      // AND binds tighter. A gate directly below its like is kept apart from it.
      const bool needed = operand.kind == SketchLogic::Kind::OR || operand.kind == gate.kind;
      const bool isGate = needed || operand.kind == SketchLogic::Kind::AND;
      text += needed || (isGate && operand.parentheses) ? "(" + inner + ")" : inner;
    }
    return text;
  }

  const ModelSketch& sketch;
  XmlText xml;
};

}  // namespace

std::string SketchText(const ModelSketch& sketch) { return SketchWriter(sketch).Write(); }

}  // namespace FTS
