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
  if (cause->expression) MergeExpression(*cause->expression, model);
  causes.push_back(std::move(cause));
}

void IFailureCause::MergeExpression(FaultTreeNode& logic, Model* model) {
  const FaultTreeNode::Pointer added = CloneTemplate(logic, model, CloneMode::KeepIdentity);
  const bool intoOr = expression->type == NodeType::Or;
  const bool fromOr = added->type == NodeType::Or;
  if (intoOr && fromOr) {
    for (int i = 0; i < added->GetChildCount(); ++i) expression->AddChild(added->GetChild(i));
  } else if (intoOr) {
    expression->AddChild(added);
  } else if (fromOr) {
    added->AddChild(expression);
    expression = added;
  } else {
    const auto either = std::make_shared<OrGate>("", model);
    either->AddChild(expression);
    either->AddChild(added);
    expression = either;
  }
}

}  // namespace FTS
