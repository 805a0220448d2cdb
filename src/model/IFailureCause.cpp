#include "model/IFailureCause.h"

#include <utility>

#include "faulttree/Gates.h"
#include "model/NumberText.h"
#include "model/PrintLine.h"

namespace FTS {

Cause::Cause(std::string initName, Model* initModel, double initProbability,
             std::shared_ptr<FaultTreeNode> initExpression)
    : name(std::move(initName)),
      model(initModel),
      probability(initProbability),
      expression(std::move(initExpression)) {}

Cause::~Cause() = default;

void Cause::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "Cause: " + name + " (p=" + FormatDouble(probability) + ")");
}

IFailureCause::~IFailureCause() = default;

void IFailureCause::AddCause(std::unique_ptr<Cause> cause, Model* model) {
  if (!expression) expression = std::make_shared<OrGate>(GetCauseName(), model);
  if (cause->expression) MergeExpression(cause->expression, model);
  causes.push_back(std::move(cause));
}

// The cause and the expression share nodes: neither is ever changed, and in a large model the
// copies would take more memory than the components. Only a gate that takes in what stood before
// is one of our own.
void IFailureCause::MergeExpression(const FaultTreeNode::Pointer& logic, Model* model) {
  const bool intoOr = expression->type == NodeType::Or;
  const bool fromOr = logic->type == NodeType::Or;
  if (intoOr && fromOr) {
    for (int i = 0; i < logic->GetChildCount(); ++i) expression->AddChild(logic->GetChild(i));
  } else if (intoOr) {
    expression->AddChild(logic);
  } else {
    const auto either = fromOr ? CloneTemplate(*logic, model, CloneMode::KeepIdentity)
                               : std::make_shared<OrGate>("", model);
    const FaultTreeNode::Pointer& last = fromOr ? expression : logic;
    if (!fromOr) either->AddChild(expression);
    either->AddChild(last);
    expression = either;
  }
}

}  // namespace FTS
