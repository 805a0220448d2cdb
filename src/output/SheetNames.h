#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "analysis/Forward.h"

namespace FTS {

/// What a tree is called in a workbook: its top node's name, "?" without one.
std::string TreeTitle(const FaultTree& tree);

/// The name of the tree's sheet: the title and, in parentheses, the top node's id; cut where it
/// would have more than 31 characters, the most that spreadsheet programs take. Characters that
/// they refuse are "_".
std::string SheetName(const FaultTree& tree);

/// The names of the sheets of one workbook, no two of which may be the same, whatever their case.
class SheetNames {
 public:
  explicit SheetNames(const std::vector<std::shared_ptr<FaultTree>>& trees);

  /// `SheetName` of a tree of the workbook; where another sheet has that name, one like it.
  const std::string& Of(const FaultTree& tree) const { return names.at(&tree); }

 private:
  std::map<const FaultTree*, std::string> names;  // Looked up only.
  std::set<std::string> taken;                    // In small letters.
};

}  // namespace FTS
