#pragma once

#include <string>

#include "model/Forward.h"
#include "output/VisitorProblog.h"

namespace FTS {

/// "exportedPropagation(class, place)", with "none" for an empty class.
std::string ExportedTerm(const std::string& failureClass, const std::string& place);
/// The same for a deviation, whose place is its component's full name, ".", its subject: the same
/// name may be exported by several hosts.
std::string ExportedTerm(const ExportedDeviation& deviation);

/// While it lives the visitor puts the body of a rule together.
class VisitorProblog::Rule {
 public:
  explicit Rule(VisitorProblog& initVisitor)
      : visitor(initVisitor), outerBody(visitor.body), wasInside(visitor.insideRule) {
    visitor.body.clear();
    visitor.insideRule = true;
  }
  ~Rule() {
    visitor.body = outerBody;
    visitor.insideRule = wasInside;
  }
  Rule(const Rule&) = delete;
  Rule& operator=(const Rule&) = delete;

 private:
  VisitorProblog& visitor;
  const std::string outerBody;
  const bool wasInside;
};

}  // namespace FTS
