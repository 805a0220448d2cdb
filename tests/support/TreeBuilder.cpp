#include "support/TreeBuilder.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <set>
#include <stdexcept>
#include <utility>

#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GotoNode.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"
#include "model/GraphRelease.h"

namespace FTS {

namespace {

using Pointer = FaultTreeNode::Pointer;
using ProxyMaker = Pointer (*)(const std::string& name, Model* model);

struct GateWord {
  std::string_view word;
  NodeType type;
};

constexpr std::array<GateWord, 6> GateWords = {{{"AND", NodeType::And},
                                                {"OR", NodeType::Or},
                                                {"XOR", NodeType::XOr},
                                                {"PAND", NodeType::PAnd},
                                                {"SAND", NodeType::SAnd},
                                                {"POR", NodeType::POr}}};

struct ProxyWord {
  std::string_view word;
  NodeType type;
  ProxyMaker make;
};

const std::array<ProxyWord, 8> ProxyWords = {{
    {"NOT", NodeType::Not,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<NotGate>(name, model);
     }},
    {"PROXY", NodeType::NullOp,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<ProxyNode>(NodeType::NullOp, name, model);
     }},
    {"IN", NodeType::InputDeviation,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<InputDeviationProxy>(name, model);
     }},
    {"OUT", NodeType::OutputDeviation,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<OutputDeviationProxy>(name, model);
     }},
    {"EXPORTED", NodeType::ExternalDeviation,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<ExportedDeviationProxy>(name, model, nullptr);
     }},
    {"GOTO", NodeType::External,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<GotoNode>(name, model, nullptr);
     }},
    {"PCCF", NodeType::PCCF,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<PCCFProxy>(name, model);
     }},
    {"STATE", NodeType::State,
     [](const std::string& name, Model* model) -> Pointer {
       return std::make_shared<StateProxy>(name, model, nullptr);
     }},
}};

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// A gate or proxy of the word, null when no class has it.
Pointer MakeNode(std::string_view word, const std::string& name, Model* model) {
  for (const GateWord& gate : GateWords) {
    if (gate.word == word) return MakeGate(gate.type, name, model);
  }
  for (const ProxyWord& proxy : ProxyWords) {
    if (proxy.word == word) return proxy.make(name, model);
  }
  return nullptr;
}

std::string WordOf(const FaultTreeNode& node) {
  for (const GateWord& gate : GateWords) {
    if (gate.type == node.type) return std::string(gate.word);
  }
  for (const ProxyWord& proxy : ProxyWords) {
    if (proxy.type == node.type) return std::string(proxy.word);
  }
  return ToText(node.type);
}

}  // namespace

/// Reads `name=WORD(child, ...)`, `name` and `~name`.
class TreeBuilder::Reader {
 public:
  Reader(TreeBuilder& initBuilder, std::string_view initText)
      : builder(initBuilder), text(initText) {}

  Pointer ReadAll() {
    Pointer root = ReadNode();
    if (position != text.size()) Fail("something follows the tree");
    return root;
  }

 private:
  [[noreturn]] void Fail(const std::string& reason) const {
    throw std::invalid_argument("No tree (" + reason + "): " + std::string(text));
  }

  char Next() const { return position < text.size() ? text[position] : '\0'; }

  std::string ReadName() {
    const std::size_t end = std::min(text.find_first_of("(),=", position), text.size());
    const std::string_view name = Trimmed(text.substr(position, end - position));
    position = end;
    return std::string(name);
  }

  void SkipBlanks() {
    while (Next() == ' ') ++position;
  }

  Pointer ReadNode() {
    const std::string first = ReadName();
    if (Next() == '(') return ReadComposite(first, "");
    if (Next() != '=') return Mentioned(first);
    ++position;
    const std::string word = ReadName();
    if (Next() != '(') Fail("a name without a gate");
    return ReadComposite(word, first);
  }

  Pointer Mentioned(const std::string& name) {
    if (name.empty()) Fail("a name is missing");
    if (name.front() != '~') return builder.EventNamed(name);
    const Pointer event = builder.EventNamed(name.substr(1));
    if (!event->IsEvent()) Fail("the complement of something else than an event");
    return static_cast<BasicEvent&>(*event).GetComplement();
  }

  Pointer ReadComposite(const std::string& word, const std::string& name) {
    Pointer node = MakeNode(word, name, builder.model);
    if (!node) Fail("unknown word " + word);
    if (!name.empty() && !builder.named.emplace(name, node).second) Fail("defined twice: " + name);
    ++position;
    SkipBlanks();
    while (Next() != ')') {
      if (node->IsProxy() && node->GetChildCount() > 0) Fail("a proxy with two children");
      node->AddChild(ReadNode());
      if (Next() == ',') {
        ++position;
      } else if (Next() != ')') {
        Fail("a bracket is missing");
      }
    }
    ++position;
    SkipBlanks();
    return node;
  }

  TreeBuilder& builder;
  std::string_view text;
  std::size_t position = 0;
};

TreeBuilder::Pointer TreeBuilder::Tree(std::string_view text) {
  return Reader(*this, Trimmed(text)).ReadAll();
}

void TreeBuilder::Define(const std::string& name, Pointer node) { named[name] = std::move(node); }

TreeBuilder::Pointer TreeBuilder::Node(const std::string& name) const {
  const auto found = named.find(name);
  if (found == named.end()) throw std::invalid_argument("No node is named " + name);
  return found->second;
}

std::shared_ptr<BasicEvent> TreeBuilder::Event(const std::string& name) const {
  auto event = std::dynamic_pointer_cast<BasicEvent>(Node(name));
  if (!event) throw std::invalid_argument("No event is named " + name);
  return event;
}

TreeBuilder::Pointer TreeBuilder::EventNamed(const std::string& name) {
  Pointer& node = named[name];
  if (!node) node = std::make_shared<BasicEvent>(name, model, true);
  return node;
}

FaultTreeNode::Pointer Tree(std::string_view text, Model* model) {
  // The result shares the life of the builder, which holds the events as a model would.
  struct Kept {
    TreeBuilder builder;
    Pointer root;
  };
  const auto kept = std::make_shared<Kept>(Kept{TreeBuilder(model), nullptr});
  kept->root = kept->builder.Tree(text);
  return {kept, kept->root.get()};
}

namespace {

bool IsPlainWord(const std::string& name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
  });
}

class ShapeWriter {
 public:
  explicit ShapeWriter(const FaultTreeNode& root) { FindLabels(root); }

  void Write(const FaultTreeNode& node) {
    if (node.IsEvent()) {
      WriteEvent(static_cast<const BasicEvent&>(node));
      return;
    }
    if (labelled.contains(&node)) {
      text += LabelOf(node);
      if (!written.insert(&node).second) return;
      text += '=';
    } else if (node.IsProxy() && node.GetChildCount() == 0 && !node.name.empty()) {
      text += node.name + '=';
    }
    text += WordOf(node) + '(';
    for (int i = 0; i < node.GetChildCount(); ++i) {
      if (i > 0) text += ", ";
      Write(*node.GetChild(i));
    }
    text += ')';
  }

  std::string text;

 private:
  static std::string LabelOf(const FaultTreeNode& node) {
    return node.name.empty() ? "#" + std::to_string(node.GetId()) : node.name;
  }

  void WriteEvent(const BasicEvent& event) {
    if (event.type == NodeType::Complement) {
      text += '~' + static_cast<const ComplementEvent&>(event).source->name;
    } else {
      text += event.name;
    }
  }

  void FindLabels(const FaultTreeNode& node) {
    if (node.IsEvent()) return;
    if (!met.insert(&node).second) {
      if (onPath.contains(&node) || IsPlainWord(node.name)) labelled.insert(&node);
      return;
    }
    onPath.insert(&node);
    for (int i = 0; i < node.GetChildCount(); ++i) FindLabels(*node.GetChild(i));
    onPath.erase(&node);
  }

  std::set<const FaultTreeNode*> met;
  std::set<const FaultTreeNode*> onPath;
  std::set<const FaultTreeNode*> labelled;
  std::set<const FaultTreeNode*> written;
};

}  // namespace

std::string ShapeOf(const FaultTreeNode& root) {
  ShapeWriter writer(root);
  writer.Write(root);
  return writer.text;
}

std::string ShapeOf(const FaultTreeNode::Pointer& root) { return root ? ShapeOf(*root) : "null"; }

FaultTreeNode* FindNode(FaultTreeNode& root, const std::string& name) {
  std::set<FaultTreeNode*> met;
  std::vector<FaultTreeNode*> pending{&root};
  while (!pending.empty()) {
    FaultTreeNode* node = pending.back();
    pending.pop_back();
    if (!met.insert(node).second) continue;
    if (node->name == name) return node;
    for (int i = node->GetChildCount() - 1; i >= 0; --i) {
      pending.push_back(node->GetChild(i).get());
    }
  }
  return nullptr;
}

void ReleaseGraph(const FaultTreeNode::Pointer& root) {
  if (root) ReleaseGraphs({root});
}

}  // namespace FTS
