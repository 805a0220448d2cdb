#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "model/Forward.h"
#include "optimisation/Forward.h"
#include "platform/XmlDocument.h"
#include "platform/XmlOutput.h"

namespace FTS {

/// The frame of a search for designs over one model: the run from generation to generation, the
/// commands that reach it from outside, and its reports. A search of a kind says how candidates
/// are bred, ranked and dropped. Progress goes to standard output, in silent runs too: the texts of
/// a search are what its user watches.
class GA {
 public:
  /// A new search; `runNumber` counts the searches of this process from 1. The mutation rate in the
  /// options becomes one over the number of genes, whatever it was: on average one gene changes.
  GA(Model& initModel, const std::string& modelPath, std::int32_t initRunNumber);
  GA(const GA&) = delete;
  GA& operator=(const GA&) = delete;
  virtual ~GA();

  /// Cuts the population to its size.
  virtual void TrimPopulation() = 0;
  /// Runs to the last generation. Throws `VtnException` when a design cannot be analysed, or none
  /// can be built, and std::filesystem::filesystem_error when the folder of results cannot be made.
  virtual void Evolve();
  /// Fills `uncheckedPopulation`.
  virtual void CreateOffspring() = 0;
  /// Moves `uncheckedPopulation` into the ranked population.
  virtual void RankPopulation() = 0;
  /// Writes the state document into the folder of results, and the same text as a script beside it,
  /// for the pages.
  virtual void WriteState();
  virtual void AssignCrowding() = 0;
  /// What a missed bound is multiplied with, 0 or less; see `Individual::GetPenalty`.
  virtual double GetPenaltyWeight() const { return 0.0; }

  /// Fills `uncheckedPopulation` with random designs. Throws `VtnException` after `MostTries`
  /// designs in a row that cannot be built.
  void InitialisePopulation();
  /// Obeys and removes "commandFile.txt" in the folder of results beside the model. It is read as
  /// one run of characters: anything between commands, line ends too, hides those behind it.
  void ReadCommandFile();
  /// The state and the page, unless the options open no browser: then nothing at all is written,
  /// which scripts that only watch the search rely on.
  void OutputOptimisationResults();
  /// Makes the folder of results and unpacks the template of the pages into it. Returns the folder.
  std::string MakeResultsFolder() const;
  /// The stem of the names of all files of this run and generation.
  std::string GetRunName() const;

  /// How many designs in a row may turn out to be none before the search gives up.
  static constexpr int MostTries = 10'000;

  std::string fileName;  ///< The model file's name with its extension.
  std::string folder;    ///< Of the model file, with a separator at its end.
  std::int32_t generation = 0;
  std::int32_t maxGenerations;
  std::vector<std::unique_ptr<Individual>> uncheckedPopulation;  ///< Evaluated, not yet ranked.
  bool outputConfiguration = false;  ///< Set by a command; nothing asks for it yet.
  std::int32_t runNumber;
  bool monitorStatus = true;     ///< A line for every generation.
  bool reportStatus = false;     ///< The same by another command, and never taken back.
  bool quit = false;             ///< Stops behind the generation.
  bool storeState = false;       ///< Set by a command; nothing asks for it yet.
  Model* model;                  ///< Not owned.
  std::uint32_t basePrimeCount;  ///< Where every evaluation starts to number its events.
  float totalTime = 0.0F;        ///< Seconds, over all sessions of a resumed search.

 protected:
  /// What is special to the kind of search.

  /// One generation behind the making of its candidates.
  virtual void AdvanceGeneration() = 0;
  /// What the first generation does with candidates that a saved search has brought along. They
  /// are enough for the one kind; the other one breeds on.
  virtual void JoinGivenCandidates() {}
  virtual bool WantsStatus() const { return true; }
  /// Lines behind the status line, and at the end of the run.
  virtual void PrintStatusDetails() const {}
  virtual void PrintEndDetails() const = 0;
  /// The element that bears the name of the kind.
  virtual std::string GetKind() const = 0;
  virtual void PopulationToXML(XmlOutputElement parent) const = 0;

  /// The same candidate by candidate: adds a random design that can be built.
  void AddRandomIndividual();
  /// Where the reading of a saved search is.
  struct StateReading {
    std::string path;
    std::size_t held = 0;     ///< Individuals met.
    std::size_t refused = 0;  ///< Of these.
  };
  /// Reads what all kinds share of a saved search. Throws `VtnException` naming what is missing.
  void ReadState(XmlElement element, StateReading& reading);
  /// Adds the members of the element, telling each; nothing for no element. Those that cannot be
  /// read or do not fit the model are told and left out, and so are those of another form than the
  /// first one: they could not be crossed with it.
  std::vector<std::unique_ptr<Individual>> ReadIndividuals(XmlElement element,
                                                           const std::string& place,
                                                           StateReading& reading);
  /// Throws `VtnException` when there were individuals and none of them was taken.
  static void FinishReading(const StateReading& reading);
  void ReportLoaded(long long start, std::size_t individuals, std::size_t undominated) const;
  /// Counts tries that gave no design, and throws `VtnException` with what was wrong with the last
  /// one at the limit.
  static void CountFailure(int& failures, const Encoding& last);
  /// Tells components of which a flat design, handed to the model with one digit per replica, is
  /// ambiguous. Every constructor of a kind calls it when the type of encodings is known.
  void WarnOfAmbiguousGenes() const;

 private:
  void CheckForm(XmlElement individual) const;
  void RunGenerations(long long sessionStart);
  void PrintStatus(long long generationStart, long long sessionStart) const;
  void PrintEnd(float sessionTime) const;
  std::string CommandFolder() const;
  std::string ResultsFolder() const;
  void WriteResultsPage(const std::string& resultsFolder) const;
  void WriteModelScript() const;

  /// The type of the individuals of a saved search, which is then that of random ones, too.
  std::optional<std::int32_t> savedType;
};

/// The search that a saved state describes, of the kind that wrote it. Throws `VtnException` when
/// the file cannot be read or does not fit the model.
std::unique_ptr<GA> LoadState(Model& model, const std::string& statePath,
                              const std::string& modelPath, std::int32_t runNumber);

}  // namespace FTS
