#include "support/ModelBuilder.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "analysis/FaultTree.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GotoNode.h"
#include "model/CCF.h"
#include "model/Component.h"
#include "model/Deviation.h"
#include "model/DeviationName.h"
#include "model/Hazard.h"
#include "model/Implementation.h"
#include "model/Line.h"
#include "model/Perspective.h"
#include "model/Port.h"
#include "model/Subsystem.h"
#include "support/TreeBuilder.h"

namespace FTS {

namespace {

using Pointer = FaultTreeNode::Pointer;

/// Logic as written: an operator with operands, or a leaf.
struct Term {
  std::string head;
  std::vector<Term> operands;
};

class TermReader {
 public:
  explicit TermReader(const std::string& initText) : text(initText) {}

  Term Read() {
    Term term;
    while (at < text.size() && text[at] == ' ') ++at;
    while (at < text.size() && std::string("(),").find(text[at]) == std::string::npos) {
      term.head += text[at++];
    }
    if (at == text.size() || text[at] != '(') return term;
    do {
      ++at;
      term.operands.push_back(Read());
    } while (at < text.size() && text[at] == ',');
    if (at == text.size()) throw std::invalid_argument("Missing ) in " + text);
    ++at;
    return term;
  }

 private:
  const std::string& text;
  std::size_t at = 0;
};

struct Operator {
  const char* word;
  NodeType type;
};

constexpr std::array Operators = {
    Operator{"OR", NodeType::Or},     Operator{"AND", NodeType::And},
    Operator{"XOR", NodeType::XOr},   Operator{"PAND", NodeType::PAnd},
    Operator{"SAND", NodeType::SAnd}, Operator{"POR", NodeType::POr},
};

/// Makes gates; what a leaf is differs between outputs, lines and hazards.
class LogicMaker {
 public:
  LogicMaker(Model* initModel, std::string initLabel)
      : model(initModel), label(std::move(initLabel)) {}
  virtual ~LogicMaker() = default;

  Pointer Make(const std::string& text) { return Make(TermReader(text).Read()); }

 protected:
  virtual Pointer MakeLeaf(const Term& term) = 0;

  Pointer Make(const Term& term) {
    if (term.head == "NOT") {
      auto gate = std::make_shared<NotGate>("NOT [" + label + "]", model);
      gate->AddChild(Make(term.operands.at(0)));
      return gate;
    }
    for (const Operator& op : Operators) {
      if (term.head != op.word) continue;
      const auto gate = MakeGate(op.type, std::string(op.word) + " [" + label + "]", model);
      for (const Term& operand : term.operands) gate->AddChild(Make(operand));
      return gate;
    }
    return MakeLeaf(term);
  }

  Model* model;
  std::string label;
};

class OutputLogic : public LogicMaker {
 public:
  OutputLogic(Implementation& initImplementation, const std::string& initLabel)
      : LogicMaker(initImplementation.model, initLabel), implementation(initImplementation) {}

 protected:
  Pointer MakeLeaf(const Term& term) override {
    const std::shared_ptr<Component> component = implementation.GetOwner();
    if (term.head == "GOTO") {
      return std::make_shared<GotoNode>(term.operands.at(0).head, model, component);
    }
    if (term.head == "ALLOC") {
      return std::make_shared<ExportedDeviationProxy>(term.operands.at(0).head, model, component);
    }
    if (term.head.find('-') != std::string::npos) return MakeInput(term.head, component);
    const auto common = implementation.ccfNodes.find(term.head);
    if (common != implementation.ccfNodes.end()) return common->second;
    return implementation.basicEvents.at(term.head);
  }

 private:
  Pointer MakeInput(const std::string& name, const std::shared_ptr<Component>& component) {
    const std::string failureClass = FailureClassOf(name);
    model->AddFailureClass(failureClass);
    std::shared_ptr<InputDeviation>& record = implementation.inputDeviationRecords[name];
    if (!record) record = std::make_shared<InputDeviation>(component, failureClass, PortOf(name));
    auto proxy = std::make_shared<InputDeviationProxy>(record, model, 1);
    implementation.AddInputDeviationProxy(proxy);
    return proxy;
  }

  Implementation& implementation;
};

class LineLogic : public LogicMaker {
 public:
  LineLogic(const Line& initLine, const std::string& initLabel)
      : LogicMaker(initLine.model, initLabel), line(initLine) {}

 protected:
  Pointer MakeLeaf(const Term& term) override {
    const std::string& name = term.head;
    if (name == Placeholder::OutputPort) return MakeProxy(name);
    if (name == Placeholder::AndPort) return MakeGate(NodeType::And, name, model);
    if (name == Placeholder::OrPort) return MakeGate(NodeType::Or, name, model);
    if (name != Placeholder::Default) return MakeReference(name);
    switch (line.defaultOperator) {
      case LineOperator::AND:
        return MakeGate(NodeType::And, name, model);
      case LineOperator::OR:
        return MakeGate(NodeType::Or, name, model);
      case LineOperator::OUTPUT:
        break;
    }
    return MakeProxy(name);
  }

 private:
  Pointer MakeProxy(const std::string& name) const {
    return std::make_shared<ProxyNode>(NodeType::NullOp, name, model);
  }

  Pointer MakeReference(const std::string& text) const {
    const std::string failureClass = FailureClassOf(text);
    const std::string path = failureClass.empty() ? text : PortOf(text);
    const std::size_t point = path.find('.');
    const std::shared_ptr<Subsystem> around = line.GetOwner();
    const auto component = point == std::string::npos
                               ? around->GetOwnerComponent()
                               : around->components.at(path.substr(0, point));
    const auto port = component->ports.at(path.substr(point + 1));
    const std::string prefix = failureClass.empty() ? "" : failureClass + "-";
    auto proxy = std::make_shared<OutputDeviationProxy>(prefix + port->GetFullNameText(), model, 1);
    proxy->reference = true;
    proxy->classless = failureClass.empty();
    return proxy;
  }

  const Line& line;
};

class HazardLogic : public LogicMaker {
 public:
  using LogicMaker::LogicMaker;

 protected:
  Pointer MakeLeaf(const Term& term) override {
    return std::make_shared<OutputDeviationProxy>(term.head, model, -1);
  }
};

}  // namespace

ModelBuilder::ModelBuilder()
    : model(std::make_unique<Model>(0, "/models/model.xml", "A model", "", 1.0F, 1000.0)) {
  Perspective("DEFAULT");
}

ModelBuilder::~ModelBuilder() = default;
ModelBuilder::ModelBuilder(ModelBuilder&&) noexcept = default;

ModelBuilder& ModelBuilder::Perspective(const std::string& name) {
  // The one of the constructor goes when it was not used.
  if (perspective && byPath.empty()) model->perspectives.erase(perspective->name);
  perspective = std::make_shared<FTS::Perspective>(name, model.get());
  perspective->rootSubsystem = std::make_shared<Subsystem>(model.get());
  perspective->rootSubsystem->perspective = perspective;
  model->AddPerspective(perspective);
  byPath.clear();
  return *this;
}

FTS::Component& ModelBuilder::At(const std::string& path) const { return *byPath.at(path); }

FTS::Implementation& ModelBuilder::Filled(const std::string& path) {
  const auto alternative = alternatives.find(&At(path));
  return alternative == alternatives.end() ? At(path).GetCurrentImplementation()
                                           : *alternative->second;
}

std::shared_ptr<FTS::Subsystem> ModelBuilder::Inside(const std::string& path) {
  if (path.empty()) return perspective->rootSubsystem;
  Implementation& implementation = Filled(path);
  if (!implementation.subsystem) {
    implementation.subsystem = std::make_shared<Subsystem>(model.get());
    implementation.subsystem->owner = implementation.shared_from_this();
    implementation.hBlockType = HBlockType::REFINED;
  }
  return implementation.subsystem;
}

ModelBuilder& ModelBuilder::Component(const std::string& path,
                                      std::initializer_list<const char*> ports) {
  const std::size_t point = path.rfind('.');
  const std::string around = point == std::string::npos ? "" : path.substr(0, point);
  const std::shared_ptr<Subsystem> subsystem = Inside(around);
  const auto component =
      std::make_shared<FTS::Component>(path.substr(point + 1), subsystem, model.get());
  subsystem->AddComponent(component);
  model->AddComponent(component);
  byPath[path] = component;
  for (const char* port : ports) {
    component->AddPort(std::make_shared<Port>(port, component, model.get()));
  }
  const auto implementation = std::make_shared<Implementation>("impl", component, model.get());
  implementation->hBlockType = HBlockType::NOT_REFINED;
  component->AddImplementation(implementation);
  component->SelectImplementation(0);
  return *this;
}

ModelBuilder& ModelBuilder::Alternative(const std::string& path, const std::string& name) {
  FTS::Component& component = At(path);
  const auto implementation =
      std::make_shared<Implementation>(name, component.shared_from_this(), model.get());
  implementation->hBlockType = HBlockType::NOT_REFINED;
  component.AddImplementation(implementation);
  alternatives[&component] = implementation;
  return *this;
}

ModelBuilder& ModelBuilder::Block(const std::string& path, HBlockType type) {
  Filled(path).hBlockType = type;
  return *this;
}

ModelBuilder& ModelBuilder::Event(const std::string& path, const std::string& name) {
  const auto event = std::make_shared<BasicEvent>(name, model.get(), true);
  event->owner = byPath.at(path);
  Filled(path).AddBasicEvent(event);
  return *this;
}

ModelBuilder& ModelBuilder::NormalEvent(const std::string& path, const std::string& name) {
  const auto event = std::make_shared<FTS::NormalEvent>(name, model.get(), true);
  event->owner = byPath.at(path);
  Filled(path).AddBasicEvent(event);
  return *this;
}

ModelBuilder& ModelBuilder::CommonCause(const std::string& name) {
  perspective->AddCCF(std::make_shared<CCF>(name, model.get(), perspective, true));
  return *this;
}

ModelBuilder& ModelBuilder::PotentialCommonCause(const std::string& path, const std::string& name,
                                                 const std::string& actual) {
  const auto proxy = std::make_shared<PCCFProxy>(name, model.get());
  proxy->owner = byPath.at(path);
  if (!actual.empty()) proxy->Activate(perspective->FindCCF(actual));
  Filled(path).AddPCCF(proxy);
  return *this;
}

std::shared_ptr<OutputDeviation> ModelBuilder::AddOutput(const std::string& path,
                                                         const std::string& deviation,
                                                         const std::string& logic,
                                                         const std::string& state) {
  const std::string failureClass = FailureClassOf(deviation);
  model->AddFailureClass(failureClass);
  auto output = std::make_shared<OutputDeviation>(byPath.at(path), failureClass, PortOf(deviation));
  Implementation& implementation = Filled(path);
  if (!logic.empty()) {
    output->AddCause(std::make_unique<Cause>(logic, model.get(), 1.0,
                                             OutputLogic(implementation, deviation).Make(logic)),
                     model.get());
  }
  implementation.AddOutputDeviation(output, state);
  return output;
}

ModelBuilder& ModelBuilder::Output(const std::string& path, const std::string& deviation,
                                   const std::string& logic, const std::string& state) {
  AddOutput(path, deviation, logic, state);
  return *this;
}

ModelBuilder& ModelBuilder::SystemOutput(const std::string& path, const std::string& deviation,
                                         const std::string& logic) {
  AddOutput(path, deviation, logic, DefaultState)->SetSystemOutput(true);
  return *this;
}

ModelBuilder& ModelBuilder::Label(const std::string& label, const std::string& path,
                                  const std::string& deviation) {
  model->gotoTargets[label] = Filled(path).GetOutputDeviation(deviation, DefaultState);
  return *this;
}

ModelBuilder& ModelBuilder::Export(const std::string& path, const std::string& deviation,
                                   const std::string& logic) {
  const std::string failureClass = FailureClassOf(deviation);
  model->AddFailureClass(failureClass);
  const auto exported =
      std::make_shared<ExportedDeviation>(byPath.at(path), failureClass, PortOf(deviation));
  Implementation& implementation = Filled(path);
  exported->AddCause(std::make_unique<Cause>(logic, model.get(), 1.0,
                                             OutputLogic(implementation, deviation).Make(logic)),
                     model.get());
  implementation.AddExportedDeviation(exported, DefaultState);
  return *this;
}

ModelBuilder& ModelBuilder::Allocate(const std::string& path, const std::string& host) {
  At(path).allocations.push_back(host);
  At(path).currentAllocation = host;
  return *this;
}

ModelBuilder& ModelBuilder::Configurable(const std::string& path) {
  At(path).includeInOptimisation = true;
  return *this;
}

ModelBuilder& ModelBuilder::Line(const LineText& text) {
  const std::shared_ptr<Subsystem> subsystem = Inside(text.inside);
  const auto line = std::make_shared<FTS::Line>(text.name, subsystem, model.get());
  line->directed = text.directed;
  line->defaultOperator = text.defaultOperator;
  for (const auto& [key, logic] : text.connections) {
    if (const std::string failureClass = FailureClassOf(key); !failureClass.empty()) {
      model->AddFailureClass(failureClass);
    }
    line->AddConnection(key, LineLogic(*line, key).Make(logic));
  }
  subsystem->AddLine(line);
  return *this;
}

ModelBuilder& ModelBuilder::Line(const std::string& from, const std::string& to) {
  LineText text;
  text.connections = {{from, "OUTPUTPORT"}, {to, "DEFAULT"}};
  text.directed = true;
  text.name = from + " to " + to;
  return Line(text);
}

ModelBuilder& ModelBuilder::Hazard(const std::string& logic) { return Hazard(logic, logic); }

ModelBuilder& ModelBuilder::Hazard(const std::string& name, const std::string& logic) {
  const auto hazard = std::make_shared<FTS::Hazard>(name, model.get());
  hazard->expression = HazardLogic(model.get(), name).Make(logic);
  model->AddHazard(hazard);
  return *this;
}

ModelBuilder& ModelBuilder::FailureClass(const std::string& name) {
  model->AddFailureClass(name);
  return *this;
}

std::unique_ptr<Model> ModelBuilder::Build() { return std::move(model); }

ChainBuilder::ChainBuilder(std::vector<std::string> initNames) : names(std::move(initNames)) {}

ChainBuilder& ChainBuilder::Event(const std::string& component, const std::string& name) {
  events[component].push_back(name);
  return *this;
}

ChainBuilder& ChainBuilder::Hazard(const std::string& logic) {
  hazards.push_back(logic);
  return *this;
}

std::unique_ptr<Model> ChainBuilder::Build() {
  ModelBuilder builder;
  for (const std::string& name : names) {
    builder.Component(name, {"in", "out"});
    std::string logic = "OR(";
    for (const std::string& event : events[name]) {
      builder.Event(name, event);
      logic += event + ", ";
    }
    builder.Output(name, "Omission-out", logic + "Omission-in)");
  }
  for (std::size_t i = 1; i < names.size(); ++i) {
    builder.Line(names[i - 1] + ".out", names[i] + ".in");
  }
  for (const std::string& hazard : hazards) builder.Hazard(hazard);
  return builder.Build();
}

ChainBuilder Chain(std::vector<std::string> names) { return ChainBuilder(std::move(names)); }

std::string TreesText(const Model& model) {
  std::string text;
  for (const auto& tree : model.faultTrees) {
    text += tree->GetName() + "=" + (tree->root ? ShapeOf(tree->root) : "") + "\n";
  }
  return text;
}

}  // namespace FTS
