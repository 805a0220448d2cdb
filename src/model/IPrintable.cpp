#include "model/IPrintable.h"

namespace FTS {

void IPrintable::Indent(std::ostream& stream, int count) const {
  for (int level = 0; level < count; ++level) stream << ' ';
}

}  // namespace FTS
