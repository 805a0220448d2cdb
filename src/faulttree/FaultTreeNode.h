#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Enumerations.h"
#include "model/Forward.h"
#include "model/IPrintable.h"
#include "model/IVisitable.h"

namespace FTS {

class FTPlusProject;
class Workbook;
class XmlOutputElement;

/// The name of the state whose children hold the tree as synthesised, and of the state in which
/// contraction works.
inline constexpr const char* DefaultState = "default";
inline constexpr const char* ContractedState = "contracted";

/// How `FaultTreeNode::Clone` treats identity. Events that belong to the model they are cloned for
/// are one object wherever they occur: modes `KeepIdentity` and `NewNodes` return the event itself
/// then, and make a new object, with its id, prime, event number and figures carried over, only for
/// another model.
enum class CloneMode : int {
  KeepIdentity = 0,  ///< Gates and proxies keep their id.
  NewIdentity = 1,   ///< Everything takes a new id, events a new prime and event number too.
  NewNodes = 2       ///< Gates and proxies take a new id; events stay what they are.
};

/// One node of a failure expression or a fault tree: a gate, a proxy or an event. Nodes form a
/// directed graph that is held together by shared pointers from parent to child; a node may have
/// several parents, and until loops are cut the graph may hold cycles.
///
/// The operations are those that synthesis, refinement, analysis and output need from a node
/// without caring what it is. Each group names the source file that holds the operation for all
/// node classes.
class FaultTreeNode : public IPrintable,
                      public IVisitable,
                      public std::enable_shared_from_this<FaultTreeNode> {
 public:
  using Pointer = std::shared_ptr<FaultTreeNode>;

  /// Passed as `initId` to take the next value of the process-wide id counter.
  static constexpr int NewId = -1;

  /// `initModel` may be null for nodes outside a model; it is not owned. Every node enters the id
  /// registry (`FindById`) and leaves it when it dies.
  FaultTreeNode(NodeType initType, std::string initName, Model* initModel, int initId);
  ~FaultTreeNode() override;
  FaultTreeNode(const FaultTreeNode&) = delete;
  FaultTreeNode& operator=(const FaultTreeNode&) = delete;

  // Printing: faulttree/Printing.cpp

  /// One line "<type text>: <name>(<id>) = <number of cut sets> # <state>", then the children in
  /// braces at `indent` + 2. A node that lies on the path already is written without its children.
  void Print(std::ostream& stream, int indent) const override;
  /// The name, or "Gate" (for gates) or "Event" when it is empty, then " [", the id and "]". The id
  /// makes it unique in a file, as names are not.
  std::string GetDisplayName() const;
  /// The class as result files name it, for instance "BasicEvent".
  virtual std::string GetTypeName() const = 0;

  // Children: the class's own source

  virtual int GetChildCount() const { return 0; }
  /// The i-th child of the current state, 0 <= i < `GetChildCount`.
  virtual const Pointer& GetChild(int index) const;
  /// A gate appends; a proxy replaces what it has; an event ignores the call.
  virtual void AddChild(const Pointer& node);
  /// Puts `node` in the place of the i-th child; null empties a proxy. Events ignore the call.
  virtual void ReplaceChild(int index, const Pointer& node);
  /// Removes the first child with the id of `node`. True when there was one.
  virtual bool RemoveChild(const FaultTreeNode& node);
  /// Empties the list of the current state.
  virtual void ClearChildren() {}
  /// True when a child has the id of `node`, or is an event with the prime of the event `node`.
  bool HasChild(const FaultTreeNode& node) const;

  virtual bool IsEvent() const { return false; }
  virtual bool IsGate() const { return false; }
  virtual bool IsProxy() const { return false; }
  int GetId() const { return id; }

  // Cloning: faulttree/Cloning.cpp

  /// A copy of the graph below this node, memoised in `clone` so that two parents of one node get
  /// one copy. Call `ClearClones` on the source afterwards (or use `CloneTemplate`, which does).
  /// With `copyStates` false gates and proxies come without children. `context`, when set, becomes
  /// the owner of gotos and exported deviation proxies, and chooses the component whose input
  /// deviation records the cloned input deviation proxies take.
  virtual Pointer Clone(Model* target, CloneMode mode, bool copyStates,
                        const std::shared_ptr<Component>& context) = 0;

  // States: faulttree/States.cpp

  /// Makes the children of the named state current in the whole graph; a state that a node does not
  /// know is made, without children.
  void SetCurrentState(const std::string& value);
  /// Gives every gate of the graph that has no children list of the named state a copy of its
  /// current one, every proxy its current child in that state, and makes that state current.
  void CopyChildrenToState(const std::string& value);

  // Loops: faulttree/Circles.cpp, faulttree/CrazyLoops.cpp are passes over the whole graph.

  // Contraction: faulttree/Contraction.cpp is a pass over the whole graph.

  // Marks and collection: faulttree/Marks.cpp, faulttree/Collection.cpp

  /// Clear one field in the whole graph, each node once, cycles included.
  void ClearVisited();
  void ClearResolved();
  void ClearContradiction();
  /// Enters every node below and including this one by id, parents first; a node whose id stands
  /// there already is passed by, with all that is below it.
  void CollectNodes(std::map<int, FaultTreeNode*>& nodes);
  /// Enters every event below and including this one by prime.
  void CollectEvents(std::map<double, BasicEvent*>& events);
  /// Enters the events of the graph in `Model::basicEvents`, each unless its prime stands there.
  void RegisterBasicEvents(Model& target);
  /// What `RegisterBasicEvents` does at this one node, without its children.
  virtual void RegisterSelf(Model& target);

  // Contradictions: faulttree/Contradictions.cpp

  /// Removes branches that can never be true, and marks what is dead as `contradictory`; each
  /// marked node is reported as a warning. Each node is worked on once.
  virtual void FindContradictions(OnceMarks& marks) = 0;

  // Diagnostic coverage: analysis/FailureModels.cpp

  /// Tells the events below that `mechanism` (null at the root) covers them for the hazard. Below a
  /// proxy that covers the hazard the proxy is the mechanism.
  void ApplyDiagnosticCoverage(const Hazard& hazard,
                               const std::shared_ptr<InputDeviationProxy>& mechanism);
  /// What the walk does at this one node; it enters each node once per mechanism.
  virtual void TakeCoverage(CoverageWalk& walk,
                            const std::shared_ptr<InputDeviationProxy>& mechanism) = 0;

  // Negation: analysis/Negation.cpp

  /// Rewrites the graph below without negations. The result is the node to put in this one's place,
  /// null when the node stays as it is; with `negate` the result stands for its negation. Needs an
  /// acyclic graph.
  Pointer Dualise(bool negate);
  /// What the walk does at this one node; it enters each node once per polarity, and changes lists
  /// only when it has seen all.
  virtual Pointer DualiseWithin(NegationWalk& walk, bool negate) = 0;

  // Variable order: analysis/OrderWeights.cpp

  /// Hands weights down: child i of n gets weight * 0.5 + (n - i) * 0.001. Larger means nearer to
  /// the root. An event that several paths reach keeps the weight of the last. The event of a
  /// module takes the weight of its gate, and what lies below a module is left alone.
  void AssignOrderWeight(float weight);

  // Modules: analysis/Modules.cpp

  /// Takes the graph back to the state before the search: no dates, modules and cut sets.
  void ResetModules();
  /// Dates the visits of every node of the graph, depth first from `date` on (at least 1); a gate
  /// is descended into once. Returns the last date given.
  int AssignVisitNumbersAlt(int date);
  /// Marks the gates that are modules, gives them their events and appends them, inner ones first.
  /// Needs the dates.
  void FindModulesDeep(std::vector<std::shared_ptr<FaultTreeGate>>& modules);
  /// Puts the cut sets of modules in the place of module events in this node's cut sets, as far as
  /// they stay within the order limit. Returns the highest order that came of it, of those left out
  /// too; 0 when there was nothing to expand.
  virtual int ExpandModuleCutSets() { return 0; }

  // Decision diagrams: analysis/BDDGeneration.cpp

  /// A private copy of the node's diagram, null for a node that nothing is known to cause. Other
  /// nodes meet a module as one variable; `asRoot` builds what is below it.
  virtual std::unique_ptr<BDDParent> BuildBDD(bool asRoot) = 0;
  /// Drops the memoised diagrams of the graph, without those below inner modules.
  void ClearBDD();

  // Cut sets: analysis/CutSetGeneration.cpp

  /// Fills `cutSets` bottom-up; a node that is done already only answers. Returns `maxOrder`.
  virtual int GenerateCutSets() = 0;
  /// Takes the cut set in unless it is refused; `skipCheck` leaves the subsumption test out. False
  /// when it was refused (and destroyed).
  virtual bool AddCutSet(std::unique_ptr<CutSet> cutSet, bool skipCheck);
  /// Adds a copy of each of this node's cut sets to `target`.
  void CopyCutSetsTo(FaultTreeNode& target) const;
  /// Drops cut sets, index and the done mark in the whole graph, each node once.
  void ResetCutSets();
  /// What `ResetCutSets` does at this one node.
  virtual void ResetOwnCutSets();
  bool IsTruncated() const { return truncated; }

  // FMEA: analysis/FMEAEntries.cpp

  /// Enters the effects of this node's own cut sets for the tree.
  virtual void AddToFMEA(FMEA& fmea, const std::shared_ptr<FaultTree>& tree) = 0;

  // Open-PSA document: output/OpenPSANodes.cpp

  /// Appends the definitions of this node and everything below it to the tree's element, each node
  /// once and parents first.
  void WriteOpenPSA(const XmlOutputElement& tree);
  /// What the walk does at this one node.
  virtual void DefineInOpenPSA(const XmlOutputElement& tree) const = 0;

  // Workbook: output/CutSetRows.cpp

  /// Writes this node's cell in the rows of one cut set, of which it is member `place` of `size`,
  /// from 0 on; `column` as in a `Cell`. Events are members, other nodes write nothing.
  virtual void WriteCutSetRows(Workbook& /*stream*/, int /*place*/, int /*size*/,
                               int /*column*/) const {}

  // FaultTree+ project: output/FTPlusNodes.cpp

  /// The name with the id in parentheses, which is what the tool knows the node by: at most 32
  /// characters, of which a longer name loses its end to "..".
  std::string GetFTPlusName() const;
  /// As much of the description as the tool takes, 119 characters.
  std::string GetFTPlusDescription() const;
  /// Makes the records of this node and everything below it, each node once in all trees. False,
  /// with a warning, when the library cannot do that.
  bool ExportFTPlusNode(FTPlusProject& project);
  /// Makes the children's records inputs of their parents', with further gates where one has too
  /// many. False likewise. Needs all records.
  bool ExportFTPlusLinks(FTPlusProject& project);
  /// What the first walk does at this one node.
  virtual void MakeFTPlusRecord(FTPlusProject& project);

  // Process-wide counters and the registry: faulttree/NodeRegistry.cpp

  /// The living node of that id, null when there is none.
  static FaultTreeNode* FindById(int wantedId);

  // Fields. They are plain data that the passes above work on.

  std::shared_ptr<CircleNode> circle;  ///< The event that stands for loops closing here, or null.
  std::string state = DefaultState;    ///< The state whose children are current.
  std::map<double, std::unique_ptr<CutSet>> cutSets;  ///< By prime product; owned.
  std::string description;
  std::string name;
  Model* model;                              ///< Not owned; null outside a model.
  std::unique_ptr<ModuleEvent> moduleEvent;  ///< Stands for this gate while it `isModule`.
  std::unique_ptr<BDDParent> bdd;            ///< The memoised diagram, null until built.
  Pointer clone;                             ///< The memoised result of `Clone`.
  mutable std::uint64_t lastWalk = 0;        ///< Belongs to `OnceMarks`.
  const int id;
  NodeType type;
  int maxOrder = 0;  ///< The largest order of a cut set held, 0 without cut sets.
  // Dates of visits, 0 until set: the node's own, and the extremes of its graph.
  int firstVisit = 0;
  int secondVisit = 0;
  int lastVisit = 0;
  int minVisit = 0;  ///< Also tells that the search for modules is done with the node.
  int maxVisit = 0;
  bool contradictory = false;  ///< The node can never be true.
  bool isModule = false;       ///< The graph below shares no node with the rest of its tree.
  bool cutSetsDone = false;
  bool resolved = false;         ///< Synthesis has walked this node.
  mutable bool visited = false;  ///< On the path of a walk; belongs to `OnPathMark`.
  bool truncated = false;        ///< An order limit has taken cut sets from the list.
  /// A limit, in a product with a module too, or mutual exclusion has taken cut sets from the list:
  /// when it is empty, the node is no hole but something that takes more, or can't be.
  bool incomplete = false;

 protected:
  /// An id that is taken as it stands, negative ones too.
  struct ExactId {
    int value;
  };
  FaultTreeNode(NodeType initType, std::string initName, Model* initModel, ExactId initId);

  // What the walks of States.cpp do at one node.
  virtual void SelectState(const std::string& value) { state = value; }
  virtual void CopyListToState(const std::string& value) { state = value; }

  /// Appends the nodes that `Clone` of this one has cloned in their turn, for `ClearClones`.
  virtual void AppendCloned(std::vector<FaultTreeNode*>& nodes) const;

 private:
  friend void ClearClones(FaultTreeNode& node);

  // faulttree/NodeRegistry.cpp
  static int TakeId();
  void EnterRegistry();
  void LeaveRegistry();
};

/// Drops the memoised clones that `Clone` has left in the graph below `node`, all states included.
void ClearClones(FaultTreeNode& node);

/// `Clone` with all states, followed by the `ClearClones` that must follow.
FaultTreeNode::Pointer CloneTemplate(FaultTreeNode& source, Model* target, CloneMode mode,
                                     const std::shared_ptr<Component>& context = nullptr);

/// True when the graph below holds a negation.
bool ContainsNot(FaultTreeNode& node);

/// How many nodes have been made and destroyed in this process, by group.
struct NodeCounters {
  int gatesMade = 0;
  int proxiesMade = 0;
  int eventsMade = 0;
  int nodesDestroyed = 0;
  int nodesMade = 0;
  int kludgeGatesMade = 0;  ///< Records of FaultTree+ that stand for no node.

  static NodeCounters& Instance();
  /// Restarts the id and event number counters too. Only for tests, with no node alive.
  static void Reset();
};

}  // namespace FTS
