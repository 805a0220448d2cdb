#pragma once

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "analysis/CutSet.h"
#include "faulttree/BasicEvent.h"

namespace FTS {

/// The members' names in the order of their primes: "A B".
inline std::string MembersOf(const CutSet& cutSet) {
  std::string text;
  for (const BasicEvent* event : cutSet.events) text += (text.empty() ? "" : " ") + event->name;
  return text;
}

/// All cut sets of a gate or a tree, those that sort first as text in front: "A; B C".
inline std::string TextOf(const std::map<double, std::unique_ptr<CutSet>>& cutSets) {
  std::vector<std::string> texts;
  for (const auto& [key, cutSet] : cutSets) texts.push_back(MembersOf(*cutSet));
  std::sort(texts.begin(), texts.end());
  std::string all;
  for (const std::string& text : texts) all += (all.empty() ? "" : "; ") + text;
  return all;
}

}  // namespace FTS
