#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "faulttree/Forward.h"
#include "model/Forward.h"

namespace FTS {

/// A connection's key "[class-][component.]port" in its parts; those that are missing are empty.
struct ConnectionKey {
  explicit ConnectionKey(const std::string& text);

  std::string failureClass;
  std::string component;  ///< Relative to the line's subsystem; empty for the component around it.
  std::string port;
};

/// The connections of a line with their keys resolved. Holds for one synthesis: the ports and
/// expressions are not owned, and the architecture must not change meanwhile.
class LineEnds {
 public:
  using Ports = std::vector<Port*>;

  struct End {
    std::string failureClass;  ///< Empty for a connection that speaks for all classes.
    Port* port;
    FaultTreeNode* expression;  ///< As written; may be null.
    bool output;                ///< On a directed line failures come from this port.
  };

  void Add(End end) { ends.push_back(std::move(end)); }
  const std::vector<End>& All() const { return ends; }
  /// The ports that the line joins for the class, each once, in the order of the keys.
  const Ports& PortsFor(const std::string& failureClass);
  /// Those of them that are outputs.
  const Ports& OutputsFor(const std::string& failureClass);
  void ForgetLists() { lists.clear(); }

 private:
  struct Lists {
    Ports all;
    Ports outputs;
  };
  const Lists& ListsFor(const std::string& failureClass);

  std::vector<End> ends;  // In the order of the keys.
  std::map<std::string, Lists>
      lists;  // Made on first use, or a star of n ports would cost n scans.
};

}  // namespace FTS
