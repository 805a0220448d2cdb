#include "faulttree/BasicEvent.h"

#include <utility>

#include "analysis/Prime.h"
#include "faulttree/DeviationProxies.h"
#include "faulttree/NodeRegistry.h"
#include "model/Component.h"

namespace FTS {

BasicEvent::BasicEvent(std::string initName, Model* initModel, bool takePrime, NodeType initType,
                       int initId)
    : FaultTreeNode(initType, std::move(initName), initModel, initId),
      eventNumber(TakeEventNumber()) {
  if (takePrime) prime = Prime::Instance().Next();
  CountOn(NodeCounters::Instance().eventsMade);
}

BasicEvent::BasicEvent(std::string initName, Model* initModel, bool takePrime, NodeType initType,
                       ExactId initId)
    : FaultTreeNode(initType, std::move(initName), initModel, initId),
      eventNumber(TakeEventNumber()) {
  if (takePrime) prime = Prime::Instance().Next();
  CountOn(NodeCounters::Instance().eventsMade);
}

BasicEvent::~BasicEvent() = default;

double BasicEvent::GetParameter(const std::string& parameter) const {
  const auto found = parameters.find(parameter);
  return found == parameters.end() ? -1.0 : found->second;
}

std::string BasicEvent::GetFullName() const {
  const std::shared_ptr<Component> component = owner.lock();
  return component ? component->GetFullNameText() + "." + name : name;
}

std::shared_ptr<ComplementEvent> BasicEvent::GetComplement() {
  if (!complement) complement = std::make_shared<ComplementEvent>(*this);
  return complement;
}

NormalEvent::NormalEvent(std::string initName, Model* initModel, bool takePrime, int initId)
    : BasicEvent(std::move(initName), initModel, takePrime, NodeType::Normal, initId) {}

// The sign of negation is one byte of Latin-1, the character set of all result texts. The id may
// well be -1, which elsewhere asks for a new one.
ComplementEvent::ComplementEvent(BasicEvent& initSource)
    : BasicEvent("\xAC" + initSource.name, initSource.model, true, NodeType::Complement,
                 ExactId{-initSource.GetId()}),
      source(&initSource) {
  owner = initSource.owner;
}

}  // namespace FTS
