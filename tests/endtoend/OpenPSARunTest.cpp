// The Open-PSA document as users get it: whole runs of the program.

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "support/Dice.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/ProgramRun.h"
#include "support/TemporaryFolder.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// One fault tree of a document, read back: enough of the format to compute with it.
class ReadTree {
 public:
  /// `lines` are those between the start and the end of the tree's element.
  explicit ReadTree(const std::vector<std::string>& lines) {
    static const std::regex element("^ *<(/?)([a-z-]+)(?: name=\"([^\"]*)\")?( ?/?)>$");
    std::string open;
    for (const std::string& line : lines) {
      std::smatch match;
      if (!std::regex_match(line, match, element)) {
        ADD_FAILURE() << "not understood: " << line;
        continue;
      }
      const std::string tag = match[2];
      if (match[1].length() > 0) continue;  // Everything is told by start tags.
      if (tag == "define-basic-event") {
        Define(match[3]);
        events.insert(match[3]);
      } else if (tag == "define-gate") {
        open = match[3];
        Define(open);
        if (top.empty()) top = open;
      } else if (tag == "gate" || tag == "basic-event") {
        inputs[open].push_back(match[3]);
      } else {
        connective[open] = tag;
      }
    }
  }

  const std::set<std::string>& Events() const { return events; }

  /// Whether the top event occurs when exactly the given events do. A gate without inputs is a hole
  /// and counts for nothing.
  bool Occurs(const std::set<std::string>& occurred) const {
    std::map<std::string, std::optional<bool>> known;
    return Value(top, occurred, known).value_or(false);
  }

 private:
  void Define(const std::string& name) {
    EXPECT_TRUE(defined.insert(name).second) << name << " is defined twice";
  }

  std::optional<bool> Value(const std::string& name, const std::set<std::string>& occurred,
                            std::map<std::string, std::optional<bool>>& known) const {
    EXPECT_TRUE(defined.contains(name)) << name << " is not defined";
    if (events.contains(name)) return occurred.contains(name);
    if (const auto found = known.find(name); found != known.end()) return found->second;
    std::vector<bool> values;
    if (const auto found = inputs.find(name); found != inputs.end()) {
      for (const std::string& input : found->second) {
        if (const auto value = Value(input, occurred, known)) values.push_back(*value);
      }
    }
    return known[name] = Joined(name, values);
  }

  std::optional<bool> Joined(const std::string& name, const std::vector<bool>& values) const {
    if (values.empty()) return std::nullopt;
    const auto found = connective.find(name);
    const std::string word = found == connective.end() ? "" : found->second;
    const auto isTrue = [](bool value) { return value; };
    if (word == "and") return std::all_of(values.begin(), values.end(), isTrue);
    if (word == "or") return std::any_of(values.begin(), values.end(), isTrue);
    EXPECT_EQ(values.size(), 1U) << name << ": " << word;
    return word == "not" ? !values[0] : values[0];
  }

  std::set<std::string> defined;
  std::set<std::string> events;
  std::map<std::string, std::vector<std::string>> inputs;
  std::map<std::string, std::string> connective;
  std::string top;
};

std::map<std::string, ReadTree> ReadDocument(const std::string& text) {
  std::map<std::string, ReadTree> trees;
  std::vector<std::string> lines;
  std::string name;
  std::size_t start = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
    const std::string line = text.substr(start, end - start);
    start = end + 1;
    if (line.starts_with("    <define-fault-tree")) {
      name = line.substr(29, line.size() - 31);  // Between the quotes.
      lines.clear();
    } else if (line == "    </define-fault-tree>") {
      trees.emplace(name, ReadTree(lines));
    } else {
      lines.push_back(line);
    }
  }
  return trees;
}

class OpenPSARunTest : public ProcessStateTest {
 protected:
  static constexpr const char* File = "m-FMEAOutput/m.xml";

  ProgramRun Run(const std::string& model, std::vector<std::string> options) const {
    options.insert(options.begin(), {folder.Write("m.xml", model), "outputdir=" + folder.Path()});
    const ProgramRun run = RunProgramWith(options);
    EXPECT_EQ(run.exitStatus, 0);
    return run;
  }

  static std::string Relay(const std::string& name) {
    return XmlLeaf(name, {"in", "out"},
                   {{XmlEvent("stuck")}, {XmlDeviation("Omission-out", "stuck + Omission-in")}});
  }
  static std::string Loop() {
    return XmlModel(
        {XmlHazard("H", "Omission-A.out")},
        XmlSystem({Relay("A"), Relay("B")}, {XmlWire("A.out", "B.in"), XmlWire("B.out", "A.in")}));
  }

  TemporaryFolder folder;
};

TEST_F(OpenPSARunTest, DocumentHoldsTheTreeAsSynthesised) {
  const ProgramRun run =
      Run(XmlModel({XmlHazard("H", "Omission-A.out")},
                   XmlSystem({XmlLeaf("A", {"out"},
                                      {{XmlEvent("stuck"), XmlEvent("worn")},
                                       {XmlDeviation("Omission-out", "stuck * (worn * stuck)")}})},
                             {})),
          {"outputtype=OPENPSA"});
  EXPECT_EQ(run.errors, "");
  const std::string text = folder.Read(File);
  // The deviation of the hazard leads to the logic at the port: a gate in a gate, which contraction
  // would have folded.
  EXPECT_TRUE(std::regex_match(
      text, std::regex("<\\?xml version=\"1.0\" encoding=\"iso-8859-1\" \\?>\n"
                       "<opsa-mef>\n"
                       "    <define-fault-tree name=\"H\">\n"
                       "        <define-gate name=\"H \\[\\d+\\]\">\n"
                       "            <gate name=\"[^\"]* \\[\\d+\\]\" />\n"
                       "        </define-gate>\n"
                       "[^]*"
                       "            <and>\n"
                       "                <basic-event name=\"stuck \\[\\d+\\]\" />\n"
                       "                <gate name=\"[^\"]* \\[\\d+\\]\" />\n"
                       "            </and>\n"
                       "[^]*"
                       "    </define-fault-tree>\n"
                       "</opsa-mef>\n")))
      << text;
}

TEST_F(OpenPSARunTest, IsToldBetweenRefinementAndTheEndOfSynthesis) {
  const ProgramRun run = Run(Loop(), {"outputtype=OPENPSA"});
  EXPECT_THAT(run.output, HasSubstr("\nContracting H\nOutputting to OpenPSA\n"
                                    "Full synthesis complete in "));
}

TEST_F(OpenPSARunTest, SilentRunWritesTheFile) {
  const ProgramRun run = Run(Loop(), {"outputtype=OPENPSA", "runSilent=true"});
  EXPECT_THAT(run.output, Not(HasSubstr("OpenPSA")));
  EXPECT_TRUE(folder.Contains(File));
}

TEST_F(OpenPSARunTest, NothingElseIsWrittenAndNothingWithoutTheWord) {
  Run(Loop(), {"outputtype=OPENPSA"});
  EXPECT_FALSE(folder.Contains("m-FMEAOutput/FaultTrees.xml"));
  Run(Loop(), {"outputtype=RESULTS", "outputdir=" + folder.Path("other")});
  EXPECT_FALSE(folder.Contains("other/m-FMEAOutput"));
}

TEST_F(OpenPSARunTest, IsWrittenWithoutAnalysisToo) {
  Run(Loop(), {"outputtype=OPENPSA", "analyse=false"});
  EXPECT_TRUE(folder.Contains(File));
}

TEST_F(OpenPSARunTest, LoopIsCutInTheDocument) {
  Run(Loop(), {"outputtype=OPENPSA"});
  const std::string text = folder.Read(File);
  EXPECT_TRUE(std::regex_search(
      text, std::regex("<basic-event name=\"CIRCLE TO Omission-DEFAULT::A.out \\[\\d+\\]\" />")))
      << text;
}

TEST_F(OpenPSARunTest, TreeWithUnbreakableLoopsIsLeftOut) {
  const auto hub = [](const std::string& name) {
    return XmlLeaf(
        name, {"a", "b", "out"},
        {{XmlEvent("f")}, {XmlDeviation("Omission-out", "f + Omission-a * Omission-b")}});
  };
  const ProgramRun run = Run(
      XmlModel(
          {XmlHazard("Crazy", "Omission-A.out"), XmlHazard("Sane", "Omission-R.out")},
          XmlSystem({hub("A"), hub("B"), hub("C"), Relay("R")},
                    {XmlWire("A.out", "B.a"), XmlWire("A.out", "C.a"), XmlWire("B.out", "A.a"),
                     XmlWire("B.out", "C.b"), XmlWire("C.out", "A.b"), XmlWire("C.out", "B.b")})),
      {"outputtype=OPENPSA"});
  ASSERT_THAT(run.output, HasSubstr("Crazy contains unbreakable loops and cannot be analysed."));
  const std::string text = folder.Read(File);
  EXPECT_THAT(text, HasSubstr("<define-fault-tree name=\"Sane\">"));
  EXPECT_THAT(text, Not(HasSubstr("<define-fault-tree name=\"Crazy\">")));
}

TEST_F(OpenPSARunTest, SharedLogicIsAsSynthesisedInEveryTree) {
  // Contraction of the first tree removes what is unconnected, also from what the second shares.
  Run(XmlModel({XmlHazard("H1", "Omission-A.out"), XmlHazard("H2", "Omission-A.out")},
               XmlSystem({Relay("A")}, {})),
      {"outputtype=OPENPSA"});
  const std::string text = folder.Read(File);
  const std::regex hole("<define-gate name=\"Omission-DEFAULT::A.in \\[\\d+\\]\" />");
  EXPECT_EQ(
      std::distance(std::sregex_iterator(text.begin(), text.end(), hole), std::sregex_iterator()),
      2)
      << text;
}

TEST_F(OpenPSARunTest, SearchWritesNone) {
  // Every design of this model can be evaluated, whichever the search makes.
  const ProgramRun run = RunProgramWith(
      {ExamplesFolder() + "/sensor-network/sensor-network.xml", "outputdir=" + folder.Path(),
       "optimise=true", "GAType=NSGA", "maxGenerations=1", "populationSize=2", "randomSeed=1",
       "openBrowser=false", "outputtype=OPENPSA"});
  ASSERT_THAT(run.output, HasSubstr("Starting Genetic Algorithm run number 1"));
  EXPECT_EQ(run.errors, "");
  EXPECT_TRUE(folder.Contains("sensor-network-OptimisationResults"));
  EXPECT_FALSE(folder.Contains("sensor-network-FMEAOutput"));
}

// The same logic as in the results: the top event occurs exactly when a minimal cut set does.

class OpenPSALogicTest : public OpenPSARunTest, public ::testing::WithParamInterface<const char*> {
 protected:
  /// Ids of the members; the id of a complement is that of its event, negated.
  static std::vector<std::vector<int>> ReadCutSets(const std::string& text) {
    static const std::regex cutSet("<CutSet>(.*?)</CutSet>");
    static const std::regex member("<Event ID=\"(-?\\d+)\" />");
    std::vector<std::vector<int>> cutSets;
    for (std::sregex_iterator i(text.begin(), text.end(), cutSet), end; i != end; ++i) {
      const std::string members = (*i)[1];
      std::vector<int> ids;
      for (std::sregex_iterator m(members.begin(), members.end(), member); m != end; ++m) {
        ids.push_back(std::stoi((*m)[1]));
      }
      cutSets.push_back(ids);
    }
    return cutSets;
  }

  static bool Holds(const std::vector<int>& cutSet, const std::set<int>& occurred) {
    return std::all_of(cutSet.begin(), cutSet.end(), [&](int id) {
      return id < 0 ? !occurred.contains(-id) : occurred.contains(id);
    });
  }

  /// Compares over random combinations of the tree's events, likely ones and rare ones.
  static void Compare(const ReadTree& tree, const std::vector<std::vector<int>>& cutSets) {
    ASSERT_FALSE(cutSets.empty());
    Dice dice(2022);
    int occurrences = 0;
    for (int trial = 0; trial < 2000; ++trial) {
      std::set<std::string> names;
      std::set<int> ids;
      for (const std::string& name : tree.Events()) {
        if (!dice.Chance(5 + trial % 90)) continue;
        names.insert(name);
        ids.insert(std::stoi(name.substr(name.rfind('[') + 1)));
      }
      const bool expected = std::any_of(cutSets.begin(), cutSets.end(),
                                        [&](const auto& cutSet) { return Holds(cutSet, ids); });
      ASSERT_EQ(tree.Occurs(names), expected) << ::testing::PrintToString(names);
      occurrences += expected ? 1 : 0;
    }
    EXPECT_GT(occurrences, 0);
    EXPECT_LT(occurrences, 2000);
  }
};

TEST_P(OpenPSALogicTest, AgreesWithTheCutSets) {
  const std::string name = GetParam();
  const ProgramRun run = RunProgramWith({ExamplesFolder() + "/" + name + "/" + name + ".xml",
                                         "outputdir=" + folder.Path(), "outputtype=OPENPSA,XML"});
  ASSERT_EQ(run.exitStatus, 0);
  const auto trees = ReadDocument(folder.Read(name + "-FMEAOutput/" + name + ".xml"));
  ASSERT_FALSE(trees.empty());

  // Members of cut sets are named by their ids, which the document puts into brackets.
  const std::string faultTrees = folder.Read(name + "-FMEAOutput/FaultTrees.xml");
  static const std::regex top("<FaultTree ID=\"(\\d+)\"><Name>([^<]*)</Name>");
  std::size_t compared = 0;
  for (std::sregex_iterator i(faultTrees.begin(), faultTrees.end(), top), end; i != end; ++i) {
    const auto tree = trees.find((*i)[2]);
    ASSERT_NE(tree, trees.end()) << (*i)[2];
    SCOPED_TRACE((*i)[2].str());
    ++compared;
    Compare(tree->second,
            ReadCutSets(folder.Read(name + "-FMEAOutput/CutSets(" + (*i)[1].str() + ").xml")));
  }
  EXPECT_EQ(compared, trees.size());
}

INSTANTIATE_TEST_SUITE_P(Examples, OpenPSALogicTest,
                         ::testing::Values("avionics-supply", "brake-by-wire",
                                           "consensus-interlock", "control-loop", "process-plant",
                                           "pumping-station", "silent-alarm",
                                           "software-on-hardware", "standby-switch-over"),
                         [](const auto& row) {
                           std::string name = row.param;
                           std::replace(name.begin(), name.end(), '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace FTS
