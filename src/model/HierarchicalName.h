#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace FTS {

/// Where a component or a port stands in the architecture, as text "perspective::a.b.c". The prefix
/// may be missing, which means the default perspective. A failure class is never part of it.
class HierarchicalName {
 public:
  /// The empty name.
  HierarchicalName() = default;

  /// Reads "perspective::a.b.c"; the last dotted part becomes the local name.
  explicit HierarchicalName(std::string_view text);

  /// Reads the full name of an owner, all of which becomes the path, for a thing called `initName`.
  HierarchicalName(std::string_view ownerName, std::string initName);

  /// The text from which the constructor reads the same name.
  std::string ToString() const;

  /// True when this stands strictly inside `scope`. Perspectives are not compared: what differs by
  /// the prefix alone counts as nested when the dotted paths nest.
  bool IsWithin(const HierarchicalName& scope) const;

  const std::vector<std::string>& Path() const { return path; }
  const std::string& Name() const { return name; }
  const std::string& Perspective() const { return perspective; }

 private:
  std::string name;
  std::vector<std::string> path;  // Outermost first.
  std::string perspective;
};

}  // namespace FTS
