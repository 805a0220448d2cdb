#pragma once

#include <memory>
#include <ostream>
#include <string>

#include "faulttree/BasicEvent.h"

namespace FTS {

/// A common cause failure declared on a perspective. It strikes everything that refers to it.
class CCF : public BasicEvent {
 public:
  CCF(std::string initName, Model* initModel, const std::shared_ptr<Perspective>& initPerspective,
      bool takePrime, int initId = NewId);
  void Accept(Visitor& visitor) override;
  std::string GetTypeName() const override { return "CCF"; }
  void Print(std::ostream& stream, int indent) const override;

  std::weak_ptr<Perspective> perspective;

 protected:
  std::shared_ptr<BasicEvent> MakeSame(Model* target, int newId) override;
};

}  // namespace FTS
