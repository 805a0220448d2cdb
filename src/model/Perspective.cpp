#include "model/Perspective.h"

#include <utility>

#include "analysis/CutSet.h"
#include "analysis/ModuleEvent.h"
#include "model/CCF.h"
#include "model/Model.h"
#include "model/PrintLine.h"
#include "model/Subsystem.h"

namespace FTS {

Perspective::Perspective(std::string initName, Model* initModel)
    : model(initModel), name(std::move(initName)) {}

Perspective::~Perspective() = default;

void Perspective::Print(std::ostream& stream, int indent) const {
  PrintRule(stream, indent);
  PrintLine(stream, indent, "PERSPECTIVE: " + name);
  PrintLine(stream, indent, "numCCFs: " + std::to_string(ccfs.size()));
  if (rootSubsystem) rootSubsystem->Print(stream, indent + NestedIndent);
  PrintLine(stream, indent, "END PERSPECTIVE");
  PrintRule(stream, indent);
}

void Perspective::AddCCF(const std::shared_ptr<CCF>& ccf) {
  ccfs[ccf->name] = ccf;
  model->ccfs[ccf->name] = ccf;
}

std::shared_ptr<CCF> Perspective::FindCCF(const std::string& ccfName) const {
  const auto found = ccfs.find(ccfName);
  return found == ccfs.end() ? nullptr : found->second;
}

std::shared_ptr<Perspective> Perspective::Clone(Model* target) const {
  auto copy = std::make_shared<Perspective>(name, target);
  copy->description = description;
  copy->riskTime = riskTime;
  copy->defaultGenerated = defaultGenerated;
  for (const auto& [ccfName, ccf] : ccfs) {
    const auto added =
        std::static_pointer_cast<CCF>(CloneTemplate(*ccf, target, CloneMode::KeepIdentity));
    added->perspective = copy;
    copy->AddCCF(added);
  }
  if (rootSubsystem) {
    copy->rootSubsystem = rootSubsystem->Clone(target, copy, nullptr, CloneMode::KeepIdentity);
    copy->rootSubsystem->Reconnect(*rootSubsystem);
  }
  return copy;
}

void Perspective::RebuildFrom(const Perspective& source) {
  if (rootSubsystem && source.rootSubsystem) rootSubsystem->RebuildFrom(*source.rootSubsystem);
}

}  // namespace FTS
