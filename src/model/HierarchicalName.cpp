#include "model/HierarchicalName.h"

#include <utility>

namespace FTS {
namespace {

constexpr std::string_view PerspectiveSeparator = "::";
constexpr char PathSeparator = '.';

/// Moves the text before the first "::" of `text` to `perspective`.
std::string_view CutPerspective(std::string_view text, std::string& perspective) {
  const std::size_t end = text.find(PerspectiveSeparator);
  if (end == std::string_view::npos) return text;
  perspective = text.substr(0, end);
  return text.substr(end + PerspectiveSeparator.size());
}

/// Moves all dotted parts of `text` but the last to `path`, and returns the last.
std::string_view CutPath(std::string_view text, std::vector<std::string>& path) {
  for (std::size_t end = text.find(PathSeparator); end != std::string_view::npos;
       end = text.find(PathSeparator)) {
    path.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return text;
}

}  // namespace

HierarchicalName::HierarchicalName(std::string_view text) {
  name = CutPath(CutPerspective(text, perspective), path);
}

HierarchicalName::HierarchicalName(std::string_view ownerName, std::string initName)
    : name(std::move(initName)) {
  const std::string_view last = CutPath(CutPerspective(ownerName, perspective), path);
  if (!last.empty()) path.emplace_back(last);
}

std::string HierarchicalName::ToString() const {
  std::string text;
  if (!perspective.empty()) text.append(perspective).append(PerspectiveSeparator);
  for (const std::string& part : path) text.append(part) += PathSeparator;
  return text + name;
}

bool HierarchicalName::IsWithin(const HierarchicalName& scope) const {
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (i == scope.path.size()) return path[i] == scope.name;
    if (path[i] != scope.path[i]) return false;
  }
  return false;
}

}  // namespace FTS
