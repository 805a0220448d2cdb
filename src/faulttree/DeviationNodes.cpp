#include "faulttree/DeviationNodes.h"

#include <utility>

#include "model/Deviation.h"

namespace FTS {

InputDeviationNode::InputDeviationNode(std::string initName, Model* initModel,
                                       const std::shared_ptr<InputDeviation>& initDeviation,
                                       int initId)
    : BasicEvent(std::move(initName), initModel, false, NodeType::InputDeviation, initId),
      deviation(initDeviation) {}

OutputDeviationNode::OutputDeviationNode(std::string initName, Model* initModel, int initId)
    : BasicEvent(std::move(initName), initModel, false, NodeType::OutputDeviation, initId) {}

ExportedDeviationNode::ExportedDeviationNode(std::string initName, Model* initModel, int initId)
    : BasicEvent(std::move(initName), initModel, false, NodeType::ExternalDeviation, initId) {}

}  // namespace FTS
