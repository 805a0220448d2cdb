#pragma once

#include <ostream>

namespace FTS {

/// What can write itself as indented lines of text, for people who inspect a model or a tree.
class IPrintable {
 public:
  virtual ~IPrintable() = default;

  /// Writes the object; each line starts with `Indent(stream, indent)`. Objects nested in it are
  /// written deeper: by 3 in a model, by 2 in a tree.
  virtual void Print(std::ostream& stream, int indent) const = 0;

  /// Writes one blank per level, and nothing for a count of 0 or less.
  virtual void Indent(std::ostream& stream, int count) const;
};

}  // namespace FTS
