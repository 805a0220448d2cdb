#pragma once

#include <deque>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <unordered_set>
#include <vector>

#include "analysis/Forward.h"
#include "faulttree/Forward.h"
#include "model/Forward.h"
#include "model/IVisitable.h"
#include "model/SafetyAllocation.h"
#include "platform/XmlDocument.h"

namespace FTS {

class Encoding;
class Workbook;
class XmlOutput;

/// Everything that a model file describes and that a run derives from it. A reader fills it,
/// `Synthesise` grows fault trees in it, `Analyse` works on them, `OutputResults` writes them;
/// `ClearSynthesis` takes it back to what the reader left. All other model objects reach it by a
/// plain pointer: it outlives them.
class Model : public IVisitable {
 public:
  /// `path` is split into `directory` and `fileName`. Throws `VtnException` "Invalid file name:
  /// ..." when it cannot be made absolute.
  Model(int initMode, const std::string& path, std::string initName, std::string initDescription,
        float initVersionNumber, double initRiskTime);
  ~Model() override;
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;

  void Accept(Visitor& visitor) override;
  /// A summary and every perspective, to the file of that name, or to standard output when it is
  /// empty.
  virtual void Print(int indent, const std::string& fileName) const;

  // Phases, in this order.

  /// Grows and refines the trees: faulttree/Synthesis.cpp, Resolution.cpp, Gotos.cpp,
  /// Refinement.cpp. Throws `VtnException` for what the model does not connect.
  virtual void Synthesise();
  /// Cut sets and figures of every tree: analysis/AnalysisDriver.cpp.
  virtual void Analyse(bool useBDDs);
  /// Makes the FMEA table from the trees' cut sets: analysis/AnalysisDriver.cpp.
  virtual void BuildFMEA();
  /// Runs the writers that the options ask for: output/OutputDriver.cpp.
  virtual void OutputResults();

  virtual void SynthesiseFromSystemOutports();
  virtual void SynthesiseFromHazards();
  /// One tree for each failed state that can be reached; prints the logic of each, as built and as
  /// resolved: faulttree/FailedStates.cpp. Throws like `StateMachine::Link`.
  virtual void SynthesiseFromStateMachine();

  // Building: model/Model.cpp

  /// Appends unless it is there.
  void AddFailureClass(const std::string& failureClass);
  void AddComponent(const std::shared_ptr<Component>& component);
  void AddEvent(const std::shared_ptr<BasicEvent>& event);
  void AddFaultTree(const std::shared_ptr<FaultTree>& tree);
  /// Nothing when the tree is not there.
  void RemoveFaultTree(const FaultTree& tree);
  void AddPerspective(const std::shared_ptr<Perspective>& perspective);
  void AddConfigurableComponent(const std::shared_ptr<Component>& component);
  void AddHazard(const std::shared_ptr<Hazard>& hazard);
  bool HasFailureClass(const std::string& failureClass) const;

  // Looking up: model/Lookup.cpp

  /// By full name; without a prefix in the perspective whose name sorts first. Null when there is
  /// no such thing. Throws `VtnException` "ERROR: Perspective not found: ..." (and logs it), or "No
  /// current implementation found for component: ...".
  std::shared_ptr<Port> FindPort(const std::string& fullName) const;
  std::shared_ptr<Component> FindComponent(const std::string& fullName) const;
  /// Null when there is none of that name.
  std::shared_ptr<Hazard> FindHazard(const std::string& hazardName) const;
  /// The name of the state in which deviations are being resolved.
  const std::string& GetCurrentStateName() const;

  virtual std::string GetComponentName(int index) const;
  virtual int GetImplementationCount(int index) const;
  virtual int GetCurrentImplementationIndex(int index) const;
  /// The position of the first tree whose root has that name, -1 when there is none.
  virtual int FindFaultTreeIndex(const std::string& treeName) const;
  virtual const std::string& GetFileName() const { return fileName; }
  virtual const std::string& GetDirectory() const { return directory; }
  virtual int GetCutSetCount() const { return cutSetCount; }
  virtual int GetPrimeCount() const;
  /// Null when there is none of that name.
  virtual const Objective* GetObjective(const std::string& objective) const;
  /// 0.0 when the index is out of range.
  virtual double GetFaultTreeUnavailability(int index) const;
  virtual double GetFaultTreeSeverity(int index) const;
  virtual int CountAnnotatedComponents() const;
  virtual int GetComponentCount() const { return static_cast<int>(configurableComponents.size()); }
  virtual int GetFaultTreeCount() const { return static_cast<int>(faultTrees.size()); }
  virtual int GetObjectiveCount() const { return static_cast<int>(objectives.size()); }
  virtual std::map<std::string, Objective>::const_iterator ObjectivesBegin() const;
  virtual std::map<std::string, Objective>::const_iterator ObjectivesEnd() const;
  int GetMaxGenerations() const { return maxGenerations; }
  const std::string& GetName() const { return name; }
  /// The model file's name without its last extension; names result folders and files.
  std::string GetFileStem() const;
  /// The folder of results as the options have it, with a separator at its end.
  std::string OutputDirectory() const;

  // Designs: model/Model.cpp

  /// Sums over the current implementations.
  virtual double EvaluateCost() const;
  virtual double EvaluateWeight() const;
  /// The sum of `CostOfSafetyLevel` over all events.
  virtual double EvaluateASILCost() const;
  /// The sum over the hazards.
  virtual int CountRequirementViolations() const;
  /// `selections` is a "|" separated list, one element per configurable component.
  virtual void WriteImplementations(const std::string& selections, std::ostream& stream) const;
  virtual void ReindexConfigurableComponents();
  /// Selects the first implementation everywhere, clears and re-indexes.
  void ResetImplementations();
  virtual void SetPrimeIndex(int index);

  // Encodings of designs: optimisation/ModelEncodings.cpp

  /// Random ones of this model.
  virtual std::unique_ptr<Encoding> CreateFixedEncoding();
  virtual std::unique_ptr<Encoding> CreateFixedASILEncoding();
  virtual std::unique_ptr<Encoding> CreateTreeASILEncoding();
  virtual std::unique_ptr<Encoding> CreateTreeEncoding();
  /// From their elements in a saved search. Throw `VtnException` when these do not fit the model.
  virtual std::unique_ptr<Encoding> LoadTreeEncoding(XmlElement element);
  virtual std::unique_ptr<Encoding> LoadFixedEncoding(XmlElement element);
  virtual std::unique_ptr<Encoding> LoadFixedASILEncoding(XmlElement element);
  /// Puts a design into this model, or with `copy` into a clone of it, and returns the one it went
  /// into. The caller keeps the clone in `clone`.
  virtual Model* EvaluateInClone(const Encoding& encoding, bool copy,
                                 std::unique_ptr<Model>& clone);
  /// Builds the redundant implementations of a "|" separated list of selections, one per
  /// configurable component, synthesises and analyses; in a clone on demand. False at the first
  /// selection that leaves a component empty, and nothing is analysed then.
  virtual bool ApplyAndEvaluate(const std::string& selections, bool inClone);

  // Spreadsheet workbooks: output/ExcelWorkbook.cpp, output/ISO26262Workbook.cpp; and figures for
  // scripts on standard output: output/EPMBlock.cpp

  /// Contents, the two tables of effects and a sheet for each tree. A file that cannot be written
  /// is an error in the log. Throws std::filesystem::filesystem_error when the folder cannot be
  /// made.
  void WriteExcelWorkbook();
  /// The hardware metrics of ISO 26262, one sheet for all trees and one for each. Fails likewise.
  void WriteISO26262Workbook();
  /// Makes the file, whose name holds `word` unless it is empty, and writes what is in front of the
  /// sheets. Null when the file cannot be written; fails likewise.
  std::unique_ptr<Workbook> WriteWorkbookHead(const std::string& word) const;
  void WriteEPMBlock() const;

  // Open-PSA document: output/OpenPSADocument.cpp

  /// The structure of the trees in their current state, without those that are unbreakable.
  std::unique_ptr<XmlOutput> MakeOpenPSADocument() const;
  /// Writes the document into the folder of results. Throws std::filesystem::filesystem_error when
  /// the folder cannot be made, `VtnException` when the file cannot be written.
  void SaveOpenPSADocument(const XmlOutput& document) const;

  // Life cycle: model/ModelCloning.cpp

  /// Back to what the reader left: templates stay, and a further `Synthesise` gives the same trees.
  void ClearSynthesis();
  /// A copy in the parsed state, identities of events kept.
  std::unique_ptr<Model> Clone() const;
  /// Lets the perspectives of the same name in `target` rebuild from this model's.
  void CopyPerspectives(Model& target) const;

  // Resolution, for synthesis: faulttree/Resolution.cpp, faulttree/Gotos.cpp

  /// Hangs the logic of the output deviations under the leaves of a hazard's expression. Throws
  /// `VtnException` "Invalid leaf node in hazard expression: ..." or "Invalid output deviation:
  /// ...".
  void ResolveHazardExpression(FaultTreeNode& node);
  /// Hangs logic under the input deviations, gotos and allocations of a deviation's expression.
  void ResolveDeviation(FaultTreeNode& node);
  /// Follows a line expression to the deviations at its other ends. `from` is the component whose
  /// port's expression is walked; `descending` tells that it is an expression of the lines inside
  /// it. False stops the branch: the walk has come back into where it set out.
  bool ResolveConnection(FaultTreeNode& node, const Component& from, bool descending);

  std::map<double, std::shared_ptr<BasicEvent>> basicEvents;  ///< By prime: every event of a tree.
  std::map<std::string, std::shared_ptr<CCF>> ccfs;
  std::map<std::string, std::shared_ptr<Component>>
      components;  ///< By full name, of all perspectives.
  std::vector<std::shared_ptr<Component>> configurableComponents;  ///< In reader order.
  std::deque<std::shared_ptr<State>> stateStack;  ///< Its back names the state being resolved.
  /// By class and port: the event that stands for a deviation nothing connects, one in a synthesis.
  std::map<std::string, std::shared_ptr<BasicEvent>> unconnectedEvents;
  std::map<std::string, int> failureClassAssignments;
  std::string description;
  std::vector<std::string> failureClasses;  ///< Unique, in the order of first mention.
  std::vector<std::shared_ptr<FaultTree>> faultTrees;
  std::map<int, int> faultTreePlusIds;  ///< From node id to the record of the exchange file.
  std::string fileName;                 ///< Name and extension.
  std::string directory;                ///< With a separator at its end.
  std::shared_ptr<FMEA> fmea;
  std::map<std::string, std::shared_ptr<Deviation>>
      gotoTargets;  ///< By label, or exported full name.
  std::map<std::string, std::shared_ptr<Hazard>> hazards;
  int cutSetCount = 0;
  int mode;
  std::string name;
  std::map<std::string, Objective> objectives;
  std::map<std::string, std::shared_ptr<Perspective>> perspectives;
  double riskTime;  ///< The mission time at which figures are computed, in the model's unit.
  /// In the order in which results number them from 0. A run fills none: they are for programs that
  /// link this library and bring allocations of their own into the results.
  std::vector<SafetyAllocation> safetyAllocations;
  float versionNumber;
  int maxGenerations = 0;
  int defaultMaxReplicants = 0;
  std::shared_ptr<StateMachine> stateMachine;  ///< Never null; has the state "default".
  std::vector<std::shared_ptr<OutputDeviation>> systemOutports;

 private:
  void RefineTrees();
  std::shared_ptr<Component> WalkPath(const HierarchicalName& target,
                                      const std::string& resolving) const;
  void CopyReferencesTo(Model& target) const;

  std::unordered_set<std::string> knownFailureClasses;  // Membership only; order is the vector's.
};

}  // namespace FTS
