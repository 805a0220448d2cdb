// Node registry: the ids of nodes and numbers of events, the map from id to living node, and the
// counts of nodes made and destroyed. All of it is state of the process, since nodes of several
// models share one sequence of ids.

#include "faulttree/NodeRegistry.h"

#include <cstdint>
#include <limits>
#include <map>

#include "faulttree/BasicEvent.h"
#include "faulttree/FaultTreeNode.h"
#include "model/VtnException.h"

namespace FTS {

namespace {

struct Registry {
  std::map<int, FaultTreeNode*> byId;  // Not owned.
  int lastId = 0;
  std::uint32_t lastEventNumber = 0;
};

Registry& TheRegistry() {
  static Registry registry;
  return registry;
}

}  // namespace

int FaultTreeNode::TakeId() {
  int& last = TheRegistry().lastId;
  // Ids are not used again: nodes that outlive a synthesis would be taken for those of the next.
  if (last == std::numeric_limits<int>::max()) {
    throw VtnException(
        "No ids are left for further nodes. A search can go on from its last saved state.");
  }
  return ++last;
}

void ContinueNodeIdsBehind(int id) { TheRegistry().lastId = id; }

void FaultTreeNode::EnterRegistry() {
  // Nearly all ids are new ones, which belong at the end. A clone that keeps its source's id takes
  // the entry over.
  auto& byId = TheRegistry().byId;
  byId.insert_or_assign(byId.end(), id, this);
  CountOn(NodeCounters::Instance().nodesMade);
}

void FaultTreeNode::LeaveRegistry() {
  auto& byId = TheRegistry().byId;
  const auto entry = byId.find(id);
  // The entry may be that of another node with this id by now.
  if (entry != byId.end() && entry->second == this) byId.erase(entry);
  CountOn(NodeCounters::Instance().nodesDestroyed);
}

FaultTreeNode* FaultTreeNode::FindById(int wantedId) {
  const auto& byId = TheRegistry().byId;
  const auto entry = byId.find(wantedId);
  return entry == byId.end() ? nullptr : entry->second;
}

std::uint32_t BasicEvent::TakeEventNumber() { return ++TheRegistry().lastEventNumber; }

NodeCounters& NodeCounters::Instance() {
  static NodeCounters counters;
  return counters;
}

void NodeCounters::Reset() {
  Instance() = NodeCounters();
  TheRegistry() = Registry();
}

}  // namespace FTS
