// Saved searches that do not fit the model or the search that is to go on from them.

#include <gmock/gmock.h>

#include "endtoend/SearchRun.h"
#include "support/CaseName.h"

namespace FTS {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

constexpr const char* Unfit = "Encoding in saved state does not fit the model: ";

class UnfitStateTest : public SearchRun {
 protected:
  /// "state.xml" becomes that of generation 3 of a search of that encoding.
  void Save(const std::string& encoding) {
    Search({"maxGenerations=3", "encodingType=" + encoding}, encoding);
    for (const std::string& name : Files(encoding)) {
      if (name.ends_with(".xml")) Keep(folder.Read(ResultsIn(encoding) + name));
    }
  }
  void Replace(const std::string& pattern, const std::string& replacement, bool all = true) const {
    const std::string before = folder.Read("state.xml");
    using namespace std::regex_constants;
    const std::string after = std::regex_replace(before, std::regex(pattern), replacement,
                                                 all ? format_default : format_first_only);
    ASSERT_NE(before, after) << pattern;
    folder.Write("state.xml", after);
  }
  ProgramRun Resume(const std::string& encoding) const {
    return Search({"previousStateFileName=state.xml", "encodingType=" + encoding});
  }
  /// The run could not start its search: told, nothing written, and ended in good order.
  void ExpectRefused(const ProgramRun& run, const std::string& message) const {
    EXPECT_EQ(run.exitStatus, 0);
    EXPECT_THAT(run.errors, HasSubstr("VtnException: " + message));
    EXPECT_THAT(run.errors, HasSubstr("state.xml\n"));
    EXPECT_THAT(run.output, Not(HasSubstr("Starting evolution")));
    EXPECT_THAT(run.output, HasSubstr("Genetic Algorithm finished: deleting\n"));
    EXPECT_THAT(Files(), IsEmpty());
  }
  static constexpr const char* NoneFits = "No individual of the saved state fits the model: ";
};

struct UnfitCase {
  const char* name;
  const char* encoding;
  const char* pattern;  // Of the state, everywhere or once.
  const char* replacement;
  const char* reason;
};

class UnfitDesignTest : public UnfitStateTest, public ::testing::WithParamInterface<UnfitCase> {};

TEST_P(UnfitDesignTest, OfAllIndividualsEndsTheSearch) {
  const UnfitCase& unfit = GetParam();
  Save(unfit.encoding);
  Replace(unfit.pattern, unfit.replacement);
  const std::string state = folder.Read("state.xml");
  const ProgramRun run = Resume(unfit.encoding);
  ExpectRefused(run, NoneFits);
  EXPECT_THAT(run.errors, HasSubstr(unfit.reason));
  EXPECT_EQ(Count(run.output, "Error loading individual. Not added\n"),
            Count(state, "<Individual>"));
  EXPECT_EQ(folder.Read("state.xml"), state);
}

TEST_P(UnfitDesignTest, OfOneIndividualLeavesItOut) {
  const UnfitCase& unfit = GetParam();
  Save(unfit.encoding);
  const int members = Count(folder.Read("state.xml"), "<Individual>");
  Replace(unfit.pattern, unfit.replacement, false);
  const ProgramRun run = Resume(unfit.encoding);
  EXPECT_EQ(Count(run.output, "Error loading individual. Not added\n"), 1);
  EXPECT_GT(members, 1);
  EXPECT_EQ(Count(run.errors, "\n"), 1) << run.errors;
  EXPECT_THAT(run.errors,
              AllOf(HasSubstr(unfit.reason), HasSubstr("line "), HasSubstr("state.xml\n")));
  EXPECT_THAT(run.output, HasSubstr("Generation: 6/6 completed in"));
}

INSTANTIATE_TEST_SUITE_P(
    States, UnfitDesignTest,
    ::testing::Values(
        UnfitCase{"FlatDesignOfAnotherComponent", "FIXED", "DEFAULT::A<", "DEFAULT::Q<",
                  "DEFAULT::Q stands in the place of DEFAULT::A"},
        UnfitCase{"FlatDesignOfTooManyGenes", "FIXED", "<Implementations>",
                  "<Implementations><Implementation><Name/><Index>1</Index></Implementation>",
                  "it has 3 genes of DEFAULT::A, the model 2"},
        UnfitCase{"FlatDesignWithoutGenes", "FIXED", "<Implementations>[^]*?</Implementations>",
                  "<Implementations/>", "it has 0 genes of DEFAULT::A, the model 2"},
        UnfitCase{"FlatDesignWithNegativeGenes", "FIXED", "<Index>[0-9]</Index>",
                  "<Index>-1</Index>", "a gene of DEFAULT::A is negative"},
        UnfitCase{"FlatDesignWithoutNumbers", "FIXED", "<Index>[0-9]</Index>", "<Index>two</Index>",
                  "No number in element Index of saved state: two"},
        UnfitCase{"HierarchyOfAnotherOrder", "TREE", "DEFAULT::A<([^]*?)DEFAULT::B<",
                  "DEFAULT::B<$1DEFAULT::A<", "DEFAULT::B stands in the place of DEFAULT::A"},
        UnfitCase{"HierarchyBeyondTheChoices", "TREE", "<Index>[0-9]</Index>", "<Index>9</Index>",
                  "DEFAULT::A has no implementation 9"},
        UnfitCase{"EmptyHierarchy", "TREE", "<TreeEncoding>[^]*?</TreeEncoding>", "<TreeEncoding/>",
                  "it has 0 components, the model 2"},
        UnfitCase{"HierarchyOnUnknownHosts", "TREE", "<SubNodes />",
                  "<Allocation>Nowhere</Allocation><SubNodes />",
                  "DEFAULT::A cannot be allocated to \"Nowhere\""},
        UnfitCase{"NoFormOfEncoding", "TREE", "<TreeEncoding>([^]*?)</TreeEncoding>",
                  "<OtherEncoding>$1</OtherEncoding>",
                  "Missing element FixedEncoding, TreeEncoding, FixedASILEncoding or "
                  "TreeASILEncoding in saved state (in Encoding, line "},
        UnfitCase{"LastIdOfAll", "FIXED", "<IndividualID>[0-9]*<", "<IndividualID>2147483647<",
                  "Number out of range in element IndividualID of saved state: 2147483647 (in "
                  "Individual, line "}),
    CaseName);

TEST_F(UnfitStateTest, DesignOfAnotherFormThanTheFirstIsLeftOut) {
  Save("TREE");
  const std::string tree = folder.Read("state.xml");
  const std::size_t begin = tree.find("<Individual>");
  const std::string individual = tree.substr(begin, tree.find("</Individual>") + 13 - begin);
  Save("FIXED");
  std::string state = folder.Read("state.xml");
  state.insert(state.find("</NonDominatedPopulation>"), individual);
  folder.Write("state.xml", state);
  const ProgramRun run = Resume("FIXED");
  EXPECT_EQ(Count(run.output, "Error loading individual. Not added\n"), 1);
  EXPECT_THAT(run.errors,
              HasSubstr(std::string(Unfit) + "TreeEncoding among individuals of another form (in "
                                             "Encoding, line "));
  EXPECT_THAT(run.output, HasSubstr("Generation: 6/6 completed in"));
}

// Whatever the head of the file says, new designs are of the form of those that it holds.
TEST_F(UnfitStateTest, RandomDesignsAreOfTheFormOfTheSavedOnes) {
  Save("FIXED");
  Replace("<EncodingType>.*</EncodingType>", "<EncodingType>TreeEncoding</EncodingType>");
  Replace("<Generation>3<", "<Generation>0<");
  const ProgramRun run = Resume("FIXED");
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(run.output, HasSubstr("Population initialised"));
  EXPECT_THAT(run.output, HasSubstr("Generation: 6/6 completed in"));
}

// XML folds runs of blanks when it is read; only names in CDATA, and those of text models, hold
// them.
TEST_F(UnfitStateTest, NamesWithRunsOfBlanksFit) {
  const std::string hosts =
      std::string(XmlIncluded) +
      "<Allocations><Allocation><![CDATA[H::h  1]]></Allocation></Allocations>";
  folder.Write("plant.xml",
               XmlDesignModel({{XmlObjective("Cost")},
                               {XmlDesignPart("A", {{"a"}, {"b", 1.0}}),
                                XmlDesignPart("<![CDATA[ B  b ]]>", {{"a"}, {"b", 1.0}}, hosts)},
                               {"Omission-A.out"},
                               6,
                               1}));
  for (const char* option : {"encodingType=FIXED", "encodingType=TREE", "decomposeSILs"}) {
    const ProgramRun made = Search({"maxGenerations=3", option}, option);
    ASSERT_EQ(made.errors, "") << option;
    for (const std::string& name : Files(option)) {
      if (name.ends_with(".xml")) Keep(folder.Read(ResultsIn(option) + name));
    }
    const ProgramRun run = Search({"previousStateFileName=state.xml", option});
    EXPECT_EQ(run.errors, "") << option;
    EXPECT_THAT(run.output, HasSubstr("Individual loaded and added")) << option;
    EXPECT_THAT(run.output, HasSubstr("Generation: 6/6 completed in")) << option;
  }
}

TEST_F(UnfitStateTest, SeedsOfTheWholeRangeAreTaken) {
  Save("FIXED");
  Replace("<RandomSeed>[^<]*<", "<RandomSeed>4294967295<");
  EXPECT_EQ(Resume("FIXED").errors, "");
}

TEST_F(UnfitStateTest, DesignsHaveNoLevels) {
  Save("TREE");
  ExpectRefused(Search({"previousStateFileName=state.xml", "decomposeSILs"}), NoneFits);
}

TEST_F(UnfitStateTest, EmptyStateStartsAtRandom) {
  Save("FIXED");
  Replace("<Individual>[^]*?</Individual>", "");
  const ProgramRun run = Resume("FIXED");
  EXPECT_EQ(run.errors, "");
  EXPECT_THAT(run.output, AllOf(HasSubstr("Number of individuals loaded: 0\n"),
                                HasSubstr("Generation: 6/6 completed in")));
}

struct HeadCase {
  const char* name;
  const char* pattern;
  const char* replacement;
  const char* message;
};

class UnfitHeadTest : public UnfitStateTest, public ::testing::WithParamInterface<HeadCase> {};

TEST_P(UnfitHeadTest, EndsTheSearch) {
  Save("FIXED");
  Replace(GetParam().pattern, GetParam().replacement);
  ExpectRefused(Resume("FIXED"), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    States, UnfitHeadTest,
    ::testing::Values(
        HeadCase{"NoKind", "(</?)NSGA>", "$1Search>",
                 "Missing element NSGA or CoitGA in saved state: "},
        HeadCase{"NoGeneration", "<Generation>3</Generation>", "",
                 "Missing element Generation in saved state: "},
        HeadCase{"GenerationWithText", "<Generation>3<", "<Generation>4xyz<",
                 "No number in element Generation of saved state: 4xyz (in NSGA, line 3): "},
        HeadCase{"NegativeGeneration", "<Generation>3<", "<Generation>-3<",
                 "Negative number in element Generation of saved state: -3 (in NSGA, line 3): "},
        HeadCase{"GenerationBeyondAllNumbers", "<Generation>3<", "<Generation>99999999999<",
                 "Number out of range in element Generation of saved state: 99999999999 (in NSGA, "
                 "line 3): "},
        HeadCase{"SeedBeyondTheRange", "<RandomSeed>[^<]*<", "<RandomSeed>4294967296<",
                 "Number out of range in element RandomSeed of saved state: 4294967296 (in NSGA, "
                 "line 3): "},
        HeadCase{"TimeThatIsNone", "<TimeElapsed>[^<]*<", "<TimeElapsed>x<",
                 "No number in element TimeElapsed of saved state: x (in NSGA, line 3): "},
        HeadCase{"ArchiveOfSomethingElse",
                 "(<ArchiveNonDominatedPopulations>)[^]*(</ArchiveNonDominatedPopulations>)",
                 "$1<Note/>$2",
                 "Missing element NonDominatedPopulation in saved state (in "
                 "ArchiveNonDominatedPopulations, line "}),
    CaseName);

TEST_F(UnfitStateTest, ArchiveIsFoundBehindSomethingElse) {
  Save("FIXED");
  const std::string before = folder.Read("state.xml");
  Replace("<ArchiveNonDominatedPopulations>", "<ArchiveNonDominatedPopulations><Note/>");
  const ProgramRun run = Resume("FIXED");
  EXPECT_EQ(run.errors, "");
  ASSERT_GT(Count(Between(before, "ArchiveNonDominatedPopulations"), "<Individual>"), 0);
  EXPECT_THAT(run.output, HasSubstr("Number of individuals loaded: " +
                                    std::to_string(Count(before, "<Individual>")) + "\n"));
}

}  // namespace
}  // namespace FTS
