#pragma once

namespace FTS {

class Visitor;

/// What a walk over the analysed model can meet. `Accept` hands the object to the visitor's
/// `Visit` of the object's own class.
class IVisitable {
 public:
  virtual ~IVisitable() = default;

  virtual void Accept(Visitor& visitor) = 0;
};

}  // namespace FTS
