#pragma once

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/DesignXml.h"
#include "support/EnvironmentVariable.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {

/// Searches by the built program over "plant.xml" in a temporary folder: two parts of three
/// choices each, cost against the unavailability of "Omission-A.out OR Omission-B.out". No viewer
/// is started.
class SearchRun : public ProcessStateTest {
 protected:
  SearchRun() : display("DISPLAY", std::nullopt), wayland("WAYLAND_DISPLAY", std::nullopt) {
    const auto part = [](const std::string& name) {
      return XmlDesignPart(name, {{"poor", 1.0, 0.2}, {"fair", 3.0, 0.05}, {"good", 8.0, 0.01}});
    };
    folder.Write("plant.xml",
                 XmlDesignModel({{XmlObjective("Cost"), XmlObjective("Unavailability")},
                                 {part("A"), part("B")},
                                 {"Omission-A.out OR Omission-B.out"},
                                 6,
                                 1}));
  }

  /// With a fixed seed and a small population, in front of the test's own options.
  ProgramRun Search(const std::vector<std::string>& options, const std::string& out = "out") const {
    std::vector<std::string> all = {"plant.xml",          "optimise=true",   "GAType=NSGA",
                                    "encodingType=FIXED", "randomSeed=814",  "populationSize=12",
                                    "maxGenerations=6",   "outputdir=" + out};
    all.insert(all.end(), options.begin(), options.end());
    return RunProgramWith(all, {folder.Path(), ""});
  }

  static std::string ResultsIn(const std::string& out) {
    return out + "/plant-OptimisationResults/";
  }
  /// Names of the result files, without the template.
  std::set<std::string> Files(const std::string& out = "out") const {
    std::set<std::string> names;
    const std::string path = folder.Path(ResultsIn(out));
    if (!std::filesystem::is_directory(path)) return names;
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      if (entry.is_regular_file()) names.insert(entry.path().filename());
    }
    return names;
  }
  /// All result files by name, without elapsed times.
  std::map<std::string, std::string> Contents(const std::string& out) const {
    static const std::regex Elapsed("(TimeElapsed>)[^<]*");
    std::map<std::string, std::string> contents;
    for (const std::string& name : Files(out)) {
      contents[name] = std::regex_replace(folder.Read(ResultsIn(out) + name), Elapsed, "$1");
    }
    return contents;
  }
  static std::string Stem(int generation, int run = 1) {
    return "GA(plant)_Generation" + std::to_string(generation) +
           "_PopulationLimit12_ChildPopulationSize12_Archive_FixedEncoding_RunNumber" +
           std::to_string(run);
  }
  std::string State(int generation, const std::string& out = "out") const {
    return folder.Read(ResultsIn(out) + Stem(generation) + ".xml");
  }
  /// Puts a state where a next search finds it, with the mark that lets it be taken up.
  void Keep(std::string state, const std::string& name = "state.xml") const {
    state.insert(state.rfind("</NSGA>"), "<UncheckedPopulation/>");
    folder.Write(name, state);
  }

  static bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
  }
  static int Count(const std::string& text, const std::string& part) {
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
      ++count;
    }
    return count;
  }
  /// What stands between the tags, at their first occurrence.
  static std::string Between(const std::string& text, const std::string& element) {
    const std::size_t begin = text.find("<" + element + ">");
    if (begin == std::string::npos) return "no " + element;
    const std::size_t inside = begin + element.size() + 2;
    return text.substr(inside, text.find("</" + element + ">", inside) - inside);
  }

  TemporaryFolder folder;

 private:
  EnvironmentVariable display;
  EnvironmentVariable wayland;
};

}  // namespace FTS
