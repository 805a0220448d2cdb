// Port expressions: what a line says about the failures that reach each of its ports.
// Works in two steps. `Line::BuildPortExpressions` finds the ports that the keys of the connections
// name and ties the line to them, so that all mistakes of the model show. `MakePortExpression` then
// makes the template of one connection for one failure class when synthesis asks for it. Raw
// expressions are never changed: each template is a clone, in which
//   - placeholders, at any depth, get a gate over the other ports of the line, and
//   - references to ports are replaced by the proxies that all lines share, kept on the ports; in
//     a list of children they move behind what else is there.

#include <optional>
#include <unordered_set>
#include <utility>

#include "app/DiagnosticLog.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "model/Component.h"
#include "model/DeviationName.h"
#include "model/Line.h"
#include "model/LineEnds.h"
#include "model/Model.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

using Pointer = FaultTreeNode::Pointer;

// Up to here a line's lists of ports are made anew each time: nearly all lines are that short, and
// their lists would fill the memory.
constexpr std::size_t FewEnds = 8;

bool IsReference(const FaultTreeNode& node) {
  return node.type == NodeType::OutputDeviation && node.IsProxy() &&
         static_cast<const OutputDeviationProxy&>(node).reference;
}

bool CanBePlaceholder(const FaultTreeNode& node) {
  return node.IsGate() || (node.IsProxy() && node.type == NodeType::NullOp);
}

/// The gate that joins the other ports at this node; nothing when the node is no such placeholder.
std::optional<NodeType> JoiningGate(const FaultTreeNode& node, LineOperator defaultOperator) {
  if (!CanBePlaceholder(node)) return std::nullopt;
  if (node.name == Placeholder::AndPort) return NodeType::And;
  if (node.name == Placeholder::OrPort) return NodeType::Or;
  if (node.name != Placeholder::Default) return std::nullopt;
  switch (defaultOperator) {
    case LineOperator::AND:
      return NodeType::And;
    case LineOperator::OR:
      return NodeType::Or;
    case LineOperator::OUTPUT:
      return std::nullopt;
  }
  return std::nullopt;
}

/// The placeholder for what leaves the line at this port; also called DEFAULT where that is the
/// line's default.
bool StandsForOutput(const FaultTreeNode& node, LineOperator defaultOperator) {
  if (!CanBePlaceholder(node)) return false;
  return node.name == Placeholder::OutputPort ||
         (node.name == Placeholder::Default && defaultOperator == LineOperator::OUTPUT);
}

int CountJoins(const FaultTreeNode& node, LineOperator defaultOperator) {
  if (JoiningGate(node, defaultOperator)) return 1;
  int count = 0;
  for (int i = 0; i < node.GetChildCount(); ++i) {
    count += CountJoins(*node.GetChild(i), defaultOperator);
  }
  return count;
}

/// The component in which a connection's port lies; null when there is none. A component's own
/// name may hold points, and so the names inside the subsystem are tried last.
std::shared_ptr<Component> FindEndComponent(const Subsystem& subsystem, const ConnectionKey& key) {
  if (key.component.empty()) return subsystem.GetOwnerComponent();
  if (key.component.find('.') != std::string::npos) {
    const std::shared_ptr<Component> around = subsystem.GetOwnerComponent();
    const std::string scope = around ? around->GetFullNameText() + "." : subsystem.GetQualifier();
    if (auto found = subsystem.GetModel()->FindComponent(scope + key.component)) return found;
  }
  const auto found = subsystem.components.find(key.component);
  return found == subsystem.components.end() ? nullptr : found->second;
}

/// Throws for a connection to nothing.
[[noreturn]] void RefuseEnd(const Line& line, const std::string& connection,
                            const std::string& message) {
  const auto fileLine = line.fileLines.find(connection);
  if (fileLine == line.fileLines.end()) throw VtnException(message);
  throw ParseException(message, fileLine->second);
}

std::shared_ptr<Port> FindEndPort(const Line& line, const Subsystem& subsystem,
                                  const std::string& connection) {
  const ConnectionKey key(connection);
  const std::shared_ptr<Component> component = FindEndComponent(subsystem, key);
  std::shared_ptr<Port> port = component ? component->FindPort(key.port) : nullptr;
  if (port) return port;
  std::string place = " in model top layer; may not be locally qualified";
  if (component) {
    place = " in component: " + component->GetFullNameText() + " on line";
  } else if (const std::shared_ptr<Component> around = subsystem.GetOwnerComponent()) {
    place = " in component: " + around->GetFullNameText() + " may not be locally qualified";
  }
  RefuseEnd(line, connection,
            "Error! Cannot find port: " + key.port + " on line: " + line.GetName() + place);
}

/// Finishes the clone of one connection's expression for one class.
class PortExpression {
 public:
  PortExpression(const Line& initLine, LineEnds& initEnds, Port& initTarget,
                 const std::string& initFailureClass)
      : line(initLine), ends(initEnds), target(initTarget), failureClass(initFailureClass) {}

  /// The node that takes the place of `node`: the shared proxy for a reference, else itself.
  Pointer Finish(const Pointer& node) {
    if (IsReference(*node)) return ChooseProxy(node);
    if (const auto type = JoiningGate(*node, line.defaultOperator)) {
      Join(*node, *type);
    } else if (StandsForOutput(*node, line.defaultOperator)) {
      node->name = Placeholder::OutputPort;
    } else {
      FinishChildren(*node);
    }
    return node;
  }

 private:
  void FinishChildren(FaultTreeNode& node) {
    std::vector<Pointer> others;
    std::vector<Pointer> references;
    for (int i = 0; i < node.GetChildCount(); ++i) {
      const Pointer& child = node.GetChild(i);
      (IsReference(*child) ? references : others).push_back(Finish(child));
    }
    if (references.empty()) return;
    node.ClearChildren();
    for (const Pointer& child : others) node.AddChild(child);
    for (const Pointer& child : references) node.AddChild(child);
  }

  void Join(FaultTreeNode& placeholder, NodeType type) {
    const auto gate = MakeGate(type, placeholder.name, line.model);
    placeholder.AddChild(gate);
    if (line.directed) Connect(*gate, ends.OutputsFor(failureClass));
    if (gate->GetChildCount() == 0) Connect(*gate, ends.PortsFor(failureClass));
  }

  void Connect(FaultTreeNode& gate, const LineEnds::Ports& sources) {
    for (Port* source : sources) {
      if (source != &target) gate.AddChild(ProxyAt(*source, failureClass));
    }
  }

  Pointer ChooseProxy(const Pointer& node) {
    auto& reference = static_cast<OutputDeviationProxy&>(*node);
    if (reference.classless) reference.name = failureClass + "-" + reference.name;
    reference.classless = false;
    const std::shared_ptr<Port> source = line.model->FindPort(PortOf(reference.name));
    return source ? ProxyAt(*source, FailureClassOf(reference.name)) : node;
  }

  /// A failure comes out of a component beside or inside the target's; out of one around it, it
  /// comes in at the boundary.
  Pointer ProxyAt(Port& source, const std::string& sourceClass) const {
    const HierarchicalName& from = source.GetOwner()->fullName;
    const HierarchicalName& to = target.GetOwner()->fullName;
    if (from.IsWithin(to) || !to.IsWithin(from)) return source.GetOrMakeOutputProxy(sourceClass);
    return source.GetOrMakeInputProxy(sourceClass);
  }

  const Line& line;
  LineEnds& ends;
  Port& target;
  const std::string& failureClass;
};

void WarnOfMissingOutputs(const Line& line, LineEnds& ends, const LineEnds::End& end,
                          const std::string& failureClass, int joins) {
  for (const Port* output : ends.OutputsFor(failureClass)) {
    if (output != end.port) return;
  }
  for (int i = 0; i < joins; ++i) {
    DiagnosticLog::Instance().AddWarning(
        "BuildPortExpression Error. No output ports on directed line \"" + line.GetName() +
        "\"; treating all ports as outputs instead.");
  }
}

/// Warns once for each expression of a directed line that finds no other port to come from. Told
/// here, and not where expressions are made, so that a model's warnings do not depend on what its
/// hazards reach.
void WarnOfMissingOutputs(const Line& line, LineEnds& ends) {
  for (const LineEnds::End& end : ends.All()) {
    const int joins = end.expression ? CountJoins(*end.expression, line.defaultOperator) : 0;
    if (joins == 0) continue;
    if (!end.failureClass.empty()) {
      WarnOfMissingOutputs(line, ends, end, end.failureClass, joins);
      continue;
    }
    for (const std::string& failureClass : line.model->failureClasses) {
      WarnOfMissingOutputs(line, ends, end, failureClass, joins);
    }
  }
  ends.ForgetLists();  // Few of the classes are ever asked for.
}

}  // namespace

ConnectionKey::ConnectionKey(const std::string& text) : port(text) {
  if (text.find('-') != std::string::npos) {
    failureClass = FailureClassOf(text);
    port = PortOf(text);
  }
  const std::size_t point = port.rfind('.');
  if (point == std::string::npos) return;
  component = port.substr(0, point);
  port.erase(0, point + 1);
}

const LineEnds::Lists& LineEnds::ListsFor(const std::string& failureClass) {
  const auto [entry, fresh] = lists.try_emplace(failureClass);
  Lists& result = entry->second;
  if (!fresh) return result;
  std::unordered_set<const Port*> known;  // Membership only.
  std::unordered_set<const Port*> knownOutputs;
  for (const End& end : ends) {
    if (!end.failureClass.empty() && end.failureClass != failureClass) continue;
    if (known.insert(end.port).second) result.all.push_back(end.port);
    if (end.output && knownOutputs.insert(end.port).second) result.outputs.push_back(end.port);
  }
  return result;
}

const LineEnds::Ports& LineEnds::PortsFor(const std::string& failureClass) {
  return ListsFor(failureClass).all;
}

const LineEnds::Ports& LineEnds::OutputsFor(const std::string& failureClass) {
  return ListsFor(failureClass).outputs;
}

void Line::BuildPortExpressions() {
  const std::shared_ptr<Subsystem> subsystem = GetOwner();
  ends = std::make_unique<LineEnds>();
  for (const auto& [text, expression] : connections) {
    const ConnectionKey key(text);
    const std::shared_ptr<Port> port = FindEndPort(*this, *subsystem, text);
    const bool inside = port->GetOwner()->GetSubsystem() == subsystem;
    if (expression) {
      port->AddLineEnd(shared_from_this(), ends->All().size(), key.failureClass, inside);
    }
    ends->Add({key.failureClass, port.get(), expression.get(),
               expression && StandsForOutput(*expression, defaultOperator)});
  }
  if (directed) WarnOfMissingOutputs(*this, *ends);
}

std::shared_ptr<FaultTreeNode> Line::MakePortExpression(std::size_t connection,
                                                        const std::string& failureClass) {
  if (!ends) return nullptr;
  const LineEnds::End& end = ends->All()[connection];
  const Pointer expression = CloneTemplate(*end.expression, model, CloneMode::KeepIdentity);
  PortExpression work(*this, *ends, *end.port, failureClass);
  const Pointer root = work.Finish(expression);
  if (ends->All().size() <= FewEnds) ends->ForgetLists();
  // A root that is a reference is shared by others, and its name leads to the port it stands for.
  const bool shared = root != expression || IsReference(*root);
  if (!shared && root->name != Placeholder::OutputPort) {
    root->name = failureClass + "-" + end.port->GetFullNameText();
  }
  return root;
}

}  // namespace FTS
