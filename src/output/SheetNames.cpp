#include "output/SheetNames.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "analysis/FaultTree.h"
#include "faulttree/FaultTreeNode.h"
#include "output/XmlEscape.h"

namespace FTS {
namespace {

constexpr std::size_t LongestName = 31;
constexpr std::string_view Ellipsis = "..";
constexpr std::string_view Refused = ":\\/?*[]";

std::string WithoutRefused(std::string name) {
  for (char& c : name) {
    const bool control = c >= '\0' && c < ' ';
    if (control || Refused.find(c) != std::string_view::npos) c = '_';
  }
  // In links a name stands between apostrophes, and none may begin with one.
  if (name.starts_with('\'')) name.front() = '_';
  return name;
}

std::string IdOf(const FaultTree& tree) {
  return tree.root ? "(" + std::to_string(tree.root->GetId()) + ")" : "";
}

/// The tree's title and the suffix, within the limit.
std::string Fitted(const FaultTree& tree, const std::string& suffix) {
  const std::string title = WithoutRefused(TreeTitle(tree));
  if (UnitsOf(title) + UnitsOf(suffix) <= LongestName) return title + suffix;
  const std::size_t left = LongestName - Ellipsis.size() - UnitsOf(suffix);
  return std::string(BeginningOf(title, left)).append(Ellipsis) + suffix;
}

std::string InSmallLetters(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

}  // namespace

std::string TreeTitle(const FaultTree& tree) { return tree.root ? tree.root->name : "?"; }

std::string SheetName(const FaultTree& tree) { return Fitted(tree, IdOf(tree)); }

SheetNames::SheetNames(const std::vector<std::shared_ptr<FaultTree>>& trees)
    : taken({"contents", "direct effects", "further effects", "summary"}) {
  for (const auto& tree : trees) {
    std::string given = SheetName(*tree);
    for (int copy = 2; !taken.insert(InSmallLetters(given)).second; ++copy) {
      given = Fitted(*tree, IdOf(*tree) + "~" + std::to_string(copy));
    }
    names[tree.get()] = given;
  }
}

}  // namespace FTS
