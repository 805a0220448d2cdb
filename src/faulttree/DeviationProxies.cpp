#include "faulttree/DeviationProxies.h"

#include <cassert>
#include <utility>

#include "faulttree/DeviationNodes.h"
#include "model/Component.h"
#include "model/Deviation.h"

namespace FTS {

InputDeviationProxy::InputDeviationProxy(std::string initName, Model* initModel, int initId)
    : ProxyNode(NodeType::InputDeviation, std::move(initName), initModel, initId) {}

InputDeviationProxy::InputDeviationProxy(const std::shared_ptr<InputDeviation>& initDeviation,
                                         Model* initModel, int initLine, int initId)
    : ProxyNode(NodeType::InputDeviation, initDeviation->GetFullName(), initModel, initId),
      deviation(initDeviation),
      line(initLine) {}

std::shared_ptr<BasicEvent> InputDeviationProxy::GetEventNode() {
  return deviation ? deviation->GetEventNode() : nullptr;
}

double InputDeviationProxy::GetCoverage(const std::string& hazard) const {
  if (!deviation) return 0.0;
  const auto found = deviation->coverage.find(hazard);
  return found == deviation->coverage.end() ? 0.0 : found->second;
}

void InputDeviationProxy::SetCoverage(const std::string& hazard, double value) {
  assert(deviation && "Coverage is that of a deviation.");
  deviation->coverage[hazard] = value;
}

bool InputDeviationProxy::HasCoverage(const std::string& hazard) const {
  return deviation && deviation->coverage.contains(hazard);
}

OutputDeviationProxy::OutputDeviationProxy(std::string initName, Model* initModel, int initLine,
                                           int initId)
    : ProxyNode(NodeType::OutputDeviation, std::move(initName), initModel, initId),
      line(initLine) {}

std::shared_ptr<BasicEvent> OutputDeviationProxy::GetEventNode() {
  if (!eventNode) {
    eventNode = std::make_shared<OutputDeviationNode>(name + UnconnectedSuffix, model);
    eventNode->owner = FindNamedOwner();
  }
  return eventNode;
}

ExportedDeviationProxy::ExportedDeviationProxy(std::string initName, Model* initModel,
                                               const std::shared_ptr<Component>& initOwner,
                                               int initLine, int initId)
    : ProxyNode(NodeType::ExternalDeviation, std::move(initName), initModel, initId),
      owner(initOwner),
      line(initLine) {}

std::shared_ptr<BasicEvent> ExportedDeviationProxy::GetEventNode() {
  if (!eventNode) {
    eventNode = std::make_shared<ExportedDeviationNode>(name + UnconnectedSuffix, model);
    eventNode->owner = FindNamedOwner();
  }
  return eventNode;
}

}  // namespace FTS
