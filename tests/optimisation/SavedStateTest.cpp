// What a search leaves for its user and for the next one, and how that one takes it up.

#include <gmock/gmock.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "model/Objective.h"
#include "optimisation/CoitGA.h"
#include "optimisation/EncodingText.h"
#include "optimisation/FixedEncoding.h"
#include "optimisation/Random.h"
#include "optimisation/SearchTest.h"
#include "support/CaseName.h"
#include "support/FixedClock.h"
#include "support/TemporaryFolder.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// A search of flat designs of one component with two slots, beside its state in a folder.
class SavedStateTest : public SearchTest {
 protected:
  SavedStateTest() {
    Config& config = Config::Instance();
    config.encodingType = EncodingType::Fixed;
    config.outputDir = folder.Path();
    config.populationSize = 5;
    config.childPopulationSize = 6;
    UseModel({{XmlObjective("Cost"), XmlObjective("Safety", "Maximise")},
              {XmlDesignPart("A", {{"cheap", 1.0}, {"good", 2.0}})}});
    search->generation = 3;
    search->totalTime = 12.5F;
  }

  std::unique_ptr<Individual> Flat(const std::vector<int>& genes, const Values& values) {
    auto made = std::make_unique<Individual>(
        *search, EncodingType::Fixed,
        EncodingFrom<FixedEncoding>(*model, "FixedEncoding", FlatDesign({{"DEFAULT::A", genes}})));
    made->evaluations = values;
    made->lastAlteredGeneration = 2;
    return made;
  }
  void AddFrontier(std::vector<std::unique_ptr<Individual>> members) {
    auto frontier = std::make_unique<NonDominatedPopulation>(*search);
    for (auto& one : members) frontier->members.emplace(one->individualId, std::move(one));
    search->frontiers.push_back(std::move(frontier));
  }
  void AddFrontier(std::unique_ptr<Individual> member) {
    std::vector<std::unique_ptr<Individual>> members;
    members.push_back(std::move(member));
    AddFrontier(std::move(members));
  }

  static constexpr const char* Stem =
      "model-OptimisationResults/GA(plant.v2)_Generation3_PopulationVariable5_ChildPopulationSize6_"
      "Archive_FixedEncoding_RunNumber1";
  std::string State() const { return folder.Read(std::string(Stem) + ".xml"); }

  /// An individual of the state document, without the blanks in front of its lines.
  static std::string IndividualText(int id, const std::string& choice, int gene,
                                    const std::string& cost) {
    const std::string index = std::to_string(gene);
    return "<Individual>\n<IndividualID>" + std::to_string(id) +
           "</IndividualID>\n<Encoding>\n<FixedEncoding>\n<EncodingNode>\n<Component>\n"
           "<Name>DEFAULT::A</Name>\n</Component>\n<Implementations>\n<Implementation>\n"
           "<Name>" +
           choice + "</Name>\n<Index>" + index +
           "</Index>\n</Implementation>\n<Implementation>\n<Name />\n<Index>0</Index>\n"
           "</Implementation>\n</Implementations>\n</EncodingNode>\n</FixedEncoding>\n"
           "</Encoding>\n<Evaluations>\n<Evaluation>\n<Name>Cost</Name>\n<Value>" +
           cost +
           "</Value>\n</Evaluation>\n</Evaluations>\n"
           "<LastAlteredGeneration>2</LastAlteredGeneration>\n</Individual>\n";
  }
  /// The state around that, up to the populations and behind them.
  static std::string Head(const std::string& seed) {
    return "<?xml version=\"1.0\" encoding=\"iso-8859-1\" ?>\n"
           "<Vel-Tarn_Results model=\"model\" build=\"Internal\" majorVersion=\"2\" "
           "minorVersion=\"5\" version=\"901\" versionDate=\"17 October 2022\">\n"
           "<NSGA>\n<ModelFileName>plant.v2.xml</ModelFileName>\n<RandomSeed>" +
           seed +
           "</RandomSeed>\n<Generation>3</Generation>\n<EncodingType>FixedEncoding</EncodingType>\n"
           "<TimeElapsed>12.5</TimeElapsed>\n<Objectives>\n"
           "<Objective>\n<Name>Cost</Name>\n<Goal>Minimise</Goal>\n</Objective>\n"
           "<Objective>\n<Name>Safety</Name>\n<Goal>Maximise</Goal>\n</Objective>\n"
           "</Objectives>\n";
  }
  static constexpr const char* Tail = "</NSGA>\n</Vel-Tarn_Results>\n";

  /// The text without the blanks that lines begin with.
  static std::string Flush(const std::string& text) {
    std::string flush;
    bool begin = true;
    for (const char c : text) {
      if (begin && c == ' ') continue;
      flush += c;
      begin = c == '\n';
    }
    return flush;
  }

  TemporaryFolder folder;
  FixedClock clock;
};

TEST_F(SavedStateTest, HoldsTheWholeSearch) {
  std::vector<std::unique_ptr<Individual>> first;
  first.push_back(Flat({1, 0}, {{"Cost", 1.0}}));
  first.push_back(Flat({2, 0}, {{"Cost", 0.0000019}}));
  search->archive->members.emplace(1, first[1]->Clone());
  AddFrontier(std::move(first));
  AddFrontier(Flat({2, 0}, {{"Cost", 1234567.5}}));
  SeedRandom(99);
  RandomUniform();
  RandomGenerator generator(99);
  generator.Uniform();
  search->WriteState();
  EXPECT_EQ(Flush(State()), Head(std::to_string(generator.State())) + "<NonDominatedPopulation>\n" +
                                IndividualText(0, "cheap", 1, "1.000000") +
                                IndividualText(1, "good", 2, "0.000002") +
                                "</NonDominatedPopulation>\n<OtherNonDominatedPopulations>\n"
                                "<NonDominatedPopulation>\n" +
                                IndividualText(2, "good", 2, "1234567.500000") +
                                "</NonDominatedPopulation>\n</OtherNonDominatedPopulations>\n"
                                "<ArchiveNonDominatedPopulations>\n<NonDominatedPopulation>\n" +
                                IndividualText(1, "good", 2, "0.000002") +
                                "</NonDominatedPopulation>\n</ArchiveNonDominatedPopulations>\n" +
                                Tail);
}

TEST_F(SavedStateTest, ChildrenAreIndented) {
  search->WriteState();
  EXPECT_THAT(State(), HasSubstr("\n    <NSGA>\n        <ModelFileName>plant.v2.xml<"));
}

TEST_F(SavedStateTest, EmptyArchiveIsLeftOut) {
  AddFrontier(Flat({1, 0}, {{"Cost", 1.0}}));
  search->WriteState();
  EXPECT_THAT(State(), Not(HasSubstr("Archive")));
  EXPECT_THAT(State(), HasSubstr("<OtherNonDominatedPopulations />"));
}

TEST_F(SavedStateTest, LevelsAreWrittenWithoutPlaces) {
  AddFrontier(Flat({1, 0}, {{"ASILCost", 1010.0}, {"ASILInvalids", 3.0}, {"Safety", 2.5}}));
  search->WriteState();
  EXPECT_THAT(State(), HasSubstr("<Value>1010</Value>"));
  EXPECT_THAT(State(), HasSubstr("<Value>3</Value>"));
  EXPECT_THAT(State(), HasSubstr("<Value>2.500000</Value>"));
}

struct TypeCase {
  const char* name;
  std::int32_t type;
  const char* text;
};

class StateTypeTest : public SavedStateTest, public ::testing::WithParamInterface<TypeCase> {};

TEST_P(StateTypeTest, IsNamed) {
  Config::Instance().encodingType = GetParam().type;
  search->WriteState();
  const std::string path = "model-OptimisationResults/" + search->GetRunName() + ".xml";
  EXPECT_THAT(folder.Read(path), HasSubstr(std::string("<EncodingType>") + GetParam().text + "<"));
}

INSTANTIATE_TEST_SUITE_P(Types, StateTypeTest,
                         ::testing::Values(TypeCase{"Tree", 0, "TreeEncoding"},
                                           TypeCase{"Fixed", 1, "FixedEncoding"},
                                           TypeCase{"FixedLevels", 2, "FixedASILEncoding"},
                                           TypeCase{"TreeLevels", 3, "FixedEncoding"}),
                         CaseName);

TEST_F(SavedStateTest, SecondOneReplacesTheFirst) {
  search->WriteState();
  const std::string first = State();
  AddFrontier(Flat({1, 0}, {{"Cost", 1.0}}));
  search->WriteState();
  EXPECT_NE(State(), first);
  std::set<std::string> names;
  for (const auto& entry :
       std::filesystem::directory_iterator(folder.Path("model-OptimisationResults"))) {
    names.insert(entry.path().extension());
  }
  EXPECT_THAT(names, ElementsAre(".js", ".xml")) << "nothing temporary stays";
}

TEST_F(SavedStateTest, ScriptHoldsTheSameText) {
  AddFrontier(Flat({1, 0}, {{"Cost", 1.0}}));
  search->WriteState();
  const std::string script = folder.Read(std::string(Stem) + ".js");
  ASSERT_THAT(script, ::testing::StartsWith("var OptimisationResults = '"));
  const std::size_t begin = script.find('\'') + 1;
  const std::size_t end = script.rfind("';");
  ASSERT_NE(end, std::string::npos);
  std::string text;
  for (std::size_t i = begin; i < end; ++i) {
    if (script[i] != '\\') {
      text += script[i];
    } else {
      ++i;
      text += script[i] == 'n' ? '\n' : script[i];
    }
  }
  EXPECT_EQ(text, State());
}

TEST_F(SavedStateTest, ScriptEscapesWhatWouldEndItsText) {
  model->objectives["It's a \\ path"] = Objective();
  search->WriteState();
  const std::string script = folder.Read(std::string(Stem) + ".js");
  const std::size_t begin = script.find('\'') + 1;
  const std::string inside = script.substr(begin, script.rfind("';") - begin);
  for (std::size_t i = 0; i < inside.size(); ++i) {
    EXPECT_NE(inside[i], '\n');
    EXPECT_NE(inside[i], '\'') << inside.substr(i > 20 ? i - 20 : 0, 40);
    if (inside[i] == '\\') ++i;
  }
}

/// States that are read again.
class ResumeTest : public SavedStateTest {
 protected:
  std::string Path() const { return folder.Path("state.xml"); }

  /// Writes a state document around these elements.
  void Write(const std::string& content, const std::string& kind = "NSGA") const {
    folder.Write("state.xml", Xml("Vel-Tarn_Results", Xml(kind, content)));
  }
  static std::string Basics(const std::string& type = "FixedEncoding") {
    return Xml("RandomSeed", "12345") + Xml("Generation", "3") + Xml("EncodingType", type) +
           Xml("TimeElapsed", "12.5");
  }
  static std::string Member(int id, const std::string& cost) {
    return IndividualText(id, "cheap", 1, cost);
  }
  static std::string Front(const std::string& members) {
    return Xml("NonDominatedPopulation", members);
  }
  static std::string Others(const std::string& frontiers = "") {
    return Xml("OtherNonDominatedPopulations", frontiers);
  }
  static constexpr const char* Unchecked = "<UncheckedPopulation/>";

  std::unique_ptr<NSGA> Load() {
    std::unique_ptr<GA> loaded = LoadState(*model, Path(), "/models/plant.v2.xml", 2);
    NSGA* const found = dynamic_cast<NSGA*>(loaded.get());
    EXPECT_TRUE(found);
    if (found) loaded.release();
    return std::unique_ptr<NSGA>(found);
  }
  std::string Message() {
    return ThrownMessage([this] { LoadState(*model, Path(), "/models/plant.v2.xml", 2); });
  }

  const CapturedStreams streams;
};

TEST_F(ResumeTest, TakesEverythingUp) {
  Write(Basics() + Unchecked + Front(Member(4, "1.500000") + Member(7, "2")) +
        Others(Front(Member(8, "3")) + Front(Member(9, "4"))) +
        Xml("ArchiveNonDominatedPopulations", Front(Member(7, "2"))));
  const auto loaded = Load();
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->generation, 3);
  EXPECT_EQ(loaded->runNumber, 2);
  EXPECT_EQ(loaded->totalTime, 12.5F);
  EXPECT_EQ(loaded->fileName, "plant.v2.xml");
  EXPECT_EQ(Config::Instance().randomSeed, 12345);
  EXPECT_THAT(loaded->uncheckedPopulation, IsEmpty());
  ASSERT_EQ(loaded->frontiers.size(), 3U);
  ASSERT_EQ(loaded->frontiers[0]->members.size(), 2U);
  const Individual& first = *loaded->frontiers[0]->members.at(4);
  EXPECT_EQ(first.evaluations, (Values{{"Cost", 1.5}}));
  EXPECT_EQ(first.lastAlteredGeneration, 2);
  EXPECT_EQ(GenesOf(*first.encoding), (std::vector<Genes>{{"DEFAULT::A", {1, 0}}}));
  EXPECT_TRUE(first.feasible && first.boundary);
  EXPECT_FALSE(first.archived);
  EXPECT_EQ(loaded->frontiers[1]->members.count(8), 1U);
  EXPECT_EQ(loaded->frontiers[2]->members.count(9), 1U);
  EXPECT_EQ(loaded->archive->members.count(7), 1U);
  EXPECT_EQ(loaded->archive->members.size(), 1U);
}

TEST_F(ResumeTest, TellsWhatItLoads) {
  Write(Basics() + Xml("UncheckedPopulation", Member(1, "1")) +
        Front(Member(4, "1.5") + Member(7, "2")) + Others());
  Load();
  const std::string output = streams.Output();
  EXPECT_THAT(output, HasSubstr("Individual loaded and added to new population.\n"));
  std::size_t told = 0;
  const std::string line = "Individual loaded and added to frontier rank 0.\n";
  for (std::size_t at = output.find(line); at != std::string::npos;
       at = output.find(line, at + 1)) {
    ++told;
  }
  EXPECT_EQ(told, 2U);
  EXPECT_THAT(output, HasSubstr("--------Stored population loaded--------\n"
                                "Time taken to load population: 0s.\n"
                                "Number of individuals loaded: 3\n"
                                "Number of undominated individuals: 2\n"
                                "Loaded generation:\t3\n"
                                "Time taken to reach generation: 12.5s.\n"
                                "----------------------------------------\n"));
}

TEST_F(ResumeTest, LaterIdsFollowTheLoadedOnes) {
  Write(Basics() + Xml("UncheckedPopulation", Member(41, "1")) + Others());
  const auto loaded = Load();
  ASSERT_EQ(loaded->uncheckedPopulation.size(), 1U);
  EXPECT_EQ(loaded->uncheckedPopulation[0]->individualId, 41);
  EXPECT_EQ(Candidate({})->individualId, 42);
}

TEST_F(ResumeTest, SmallerIdsDoNotSetTheCountBack) {
  for (int i = 0; i < 9; ++i) Candidate({});
  Write(Basics() + Xml("UncheckedPopulation", Member(3, "1")) + Others());
  Load();
  EXPECT_EQ(Candidate({})->individualId, 9);
}

TEST_F(ResumeTest, KeepsTheRateOfMutation) {
  Config::Instance().mutationRate = 0.25;
  Write(Basics() + Unchecked + Others());
  Load();
  EXPECT_EQ(Config::Instance().mutationRate, 0.25);
}

TEST_F(ResumeTest, WithoutSeedTheOptionsSeedStays) {
  Write(Xml("Generation", "3") + Xml("EncodingType", "FixedEncoding") + Xml("TimeElapsed", "1") +
        Unchecked + Others());
  Load();
  EXPECT_EQ(Config::Instance().randomSeed, 4711);
}

TEST_F(ResumeTest, NamesTheMissingMark) {
  Write(Basics() + Front(Member(1, "1")) + Others());
  EXPECT_EQ(Message(), "Missing element UncheckedPopulation in saved state: " + Path());
}

TEST_F(ResumeTest, NamesTheMissingFrontiers) {
  Write(Basics() + Unchecked + Front(Member(1, "1")));
  EXPECT_THAT(Message(), HasSubstr("Missing element OtherNonDominatedPopulations"));
}

struct UnreadableCase {
  const char* name;
  const char* text;
};

class UnreadableStateTest : public ResumeTest,
                            public ::testing::WithParamInterface<UnreadableCase> {};

TEST_P(UnreadableStateTest, IsToldWithItsPath) {
  folder.Write("state.xml", GetParam().text);
  EXPECT_THAT(Message(), HasSubstr(Path()));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, UnreadableStateTest,
    ::testing::Values(UnreadableCase{"Empty", ""}, UnreadableCase{"NoXml", "what is this"},
                      UnreadableCase{"CutOff", "<Vel-Tarn_Results><NSGA><Generation>3</Gen"},
                      UnreadableCase{"OtherDocument", "<Model><Name>x</Name></Model>"},
                      UnreadableCase{"NoSearch", "<Vel-Tarn_Results></Vel-Tarn_Results>"}),
    CaseName);

TEST_F(ResumeTest, StateThatIsNotThereIsToldWithItsPath) {
  EXPECT_THAT(Message(), HasSubstr(Path()));
}

TEST_F(ResumeTest, MembersThatDoNotFitAreLeftOut) {
  std::string broken = Member(5, "1");
  broken.replace(broken.find("DEFAULT::A"), 10, "DEFAULT::Z");
  Write(Basics() + Xml("UncheckedPopulation", broken + Member(6, "1")) + Others());
  const auto loaded = Load();
  ASSERT_EQ(loaded->uncheckedPopulation.size(), 1U);
  EXPECT_EQ(loaded->uncheckedPopulation[0]->individualId, 6);
  EXPECT_THAT(streams.Output(), HasSubstr("Error loading individual. Not added"));
}

TEST_F(ResumeTest, SavedTypeGoesBeforeTheOption) {
  Config::Instance().encodingType = EncodingType::Tree;
  Write(Basics() + Xml("UncheckedPopulation", Member(6, "1")) + Others());
  const auto loaded = Load();
  EXPECT_EQ(Config::Instance().encodingType, EncodingType::Fixed);
  EXPECT_EQ(loaded->uncheckedPopulation.size(), 1U);
  EXPECT_THAT(streams.Output(),
              HasSubstr("Warning encoding type in saved state is different from program argument, "
                        "using saved type\n"));
}

TEST_F(ResumeTest, EqualTypesAreNotWarnedOf) {
  Write(Basics() + Unchecked + Others());
  Load();
  EXPECT_THAT(streams.Output(), Not(HasSubstr("Warning")));
}

TEST_F(ResumeTest, UnknownTypeIsTold) {
  Write(Basics("Something") + Unchecked + Others());
  Load();
  EXPECT_THAT(streams.Output(), HasSubstr("ERROR OF Encoding TYPE"));
}

// A state of levels along the hierarchy reads "FixedEncoding"; the option knows better.
TEST_F(ResumeTest, LevelsAlongTheHierarchyAreWarnedOfAndStay) {
  Config::Instance().decomposeSILs = true;
  Config::Instance().encodingType = EncodingType::TreeAsil;
  model->Synthesise();
  Write(Basics() + Unchecked + Others());
  Load();
  EXPECT_EQ(Config::Instance().encodingType, EncodingType::TreeAsil);
  EXPECT_THAT(streams.Output(), HasSubstr("Warning encoding type in saved state is different"));
}

TEST_F(ResumeTest, SearchGoesOnFromItsOwnState) {
  std::vector<std::unique_ptr<Individual>> first;
  first.push_back(Flat({1, 0}, {{"Cost", 1.0}}));
  search->archive->members.emplace(0, first[0]->Clone());
  AddFrontier(std::move(first));
  AddFrontier(Flat({2, 0}, {{"Cost", 2.0}}));
  search->WriteState();
  std::string text = State();
  text.insert(text.find("</NSGA>"), Unchecked);
  folder.Write("state.xml", text);
  const auto loaded = Load();
  loaded->WriteState();
  const std::string again =
      folder.Read("model-OptimisationResults/" + loaded->GetRunName() + ".xml");
  const auto populations = [](const std::string& state) {
    return state.substr(state.find("<NonDominatedPopulation>"));
  };
  EXPECT_EQ(populations(again), populations(State()));
}

TEST_F(ResumeTest, PenaltyStateIsTakenUpByAPenaltySearch) {
  const auto member = [](int id, const std::string& cost) {
    std::string text = Member(id, cost);
    text.replace(text.find("<Name>Cost<"), 11, "<Name>ASILCost<");
    return text;
  };
  Write(Basics() + Xml("UncheckedPopulation", member(3, "30")) +
            Xml("Population", member(4, "20") + member(5, "10")),
        "CoitGA");
  const auto loaded = LoadState(*model, Path(), "/models/plant.xml", 1);
  const CoitGA* const coit = dynamic_cast<CoitGA*>(loaded.get());
  ASSERT_TRUE(coit);
  EXPECT_EQ(coit->generation, 3);
  ASSERT_EQ(coit->uncheckedPopulation.size(), 1U);
  EXPECT_EQ(coit->uncheckedPopulation[0]->asilCost, 30.0);
  ASSERT_EQ(coit->frontiers.size(), 2U);
  std::set<double> costs;
  for (const auto& one : coit->frontiers) costs.insert(one->asilCost);
  EXPECT_THAT(costs, ElementsAre(10.0, 20.0));
}

TEST_F(SavedStateTest, PenaltyStateHoldsOnePopulation) {
  std::unique_ptr<CoitGA> coit;
  {
    const CapturedStreams streams;
    coit = std::make_unique<CoitGA>(*model, "/models/plant.v2.xml", 1);
  }
  coit->frontiers.push_back(Flat({1, 0}, {{"Cost", 1.0}}));
  coit->WriteState();
  const std::string text =
      Flush(folder.Read("model-OptimisationResults/" + coit->GetRunName() + ".xml"));
  EXPECT_THAT(text, HasSubstr("\n<CoitGA>\n<ModelFileName>"));
  EXPECT_THAT(
      text, HasSubstr("</Objectives>\n<Population>\n" + IndividualText(0, "cheap", 1, "1.000000") +
                      "</Population>\n</CoitGA>\n</Vel-Tarn_Results>\n"));
}

TEST_F(SavedStateTest, FolderThatCannotBeMadeEndsTheRun) {
  folder.Write("model-OptimisationResults", "a file in its place");
  EXPECT_THROW(search->WriteState(), std::filesystem::filesystem_error);
}

}  // namespace
}  // namespace FTS
