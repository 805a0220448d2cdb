#include "model/CCF.h"

#include <utility>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "model/Perspective.h"
#include "model/PrintLine.h"

namespace FTS {

CCF::CCF(std::string initName, Model* initModel,
         const std::shared_ptr<Perspective>& initPerspective, bool takePrime, int initId)
    : BasicEvent(std::move(initName), initModel, takePrime, NodeType::ACCF, initId),
      perspective(initPerspective) {}

void CCF::Print(std::ostream& stream, int indent) const {
  PrintLine(stream, indent, "Common Cause Failure: " + name);
}

std::shared_ptr<BasicEvent> CCF::MakeSame(Model* target, int newId) {
  return std::make_shared<CCF>(name, target, perspective.lock(), false, newId);
}

}  // namespace FTS
