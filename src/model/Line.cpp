#include "model/Line.h"

#include <sstream>
#include <utility>

#include "faulttree/FaultTreeNode.h"
#include "model/LineEnds.h"
#include "model/PrintLine.h"
#include "model/Subsystem.h"

namespace FTS {

namespace {

std::vector<std::string> SplitAtCommas(const std::string& text) {
  std::vector<std::string> parts;
  std::istringstream stream(text);
  for (std::string part; std::getline(stream, part, ',');) parts.push_back(part);
  return parts;
}

}  // namespace

Line::Line(std::string initName, const std::shared_ptr<Subsystem>& initOwner, Model* initModel)
    : messages(SplitAtCommas(initName)),
      name(std::move(initName)),
      owner(initOwner),
      model(initModel) {}

Line::~Line() = default;

void Line::Print(std::ostream& stream, int indent) const {
  PrintRule(stream, indent);
  PrintLine(stream, indent, "LINE: " + name);
  PrintLine(stream, indent, "numConnections: " + std::to_string(connections.size()));
  PrintLine(stream, indent, "numMessages: " + std::to_string(messages.size()));
  PrintLine(stream, indent, directed ? "Directed: Yes" : "Directed: No");
  PrintLine(stream, indent, "Default: " + ToText(defaultOperator));
  PrintLine(stream, indent, "Connections:");
  for (const auto& [key, expression] : connections) {
    PrintLine(stream, indent, "Port: " + key);
    if (expression) expression->Print(stream, indent + NestedIndent);
  }
  PrintLine(stream, indent, "END LINE");
}

void Line::AddConnection(const std::string& key, std::shared_ptr<FaultTreeNode> expression) {
  connections[key] = std::move(expression);
  Untie();
}

void Line::Untie() { ends.reset(); }

void Line::CopyExpressions(Line& target) const {
  target.connections.clear();
  target.Untie();
  for (const auto& [key, expression] : connections) {
    target.AddConnection(
        key,
        expression ? CloneTemplate(*expression, target.model, CloneMode::KeepIdentity) : nullptr);
  }
  target.messages = messages;
  target.fileLines = fileLines;
}

std::shared_ptr<Line> Line::Clone(const std::shared_ptr<Subsystem>& newOwner) const {
  auto copy = std::make_shared<Line>(name, newOwner, newOwner->GetModel());
  copy->defaultOperator = defaultOperator;
  copy->description = description;
  copy->directed = directed;
  return copy;
}

}  // namespace FTS
