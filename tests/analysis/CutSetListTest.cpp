#include <gmock/gmock.h>

#include "analysis/CutSet.h"
#include "analysis/CutSetList.h"
#include "faulttree/BasicEvent.h"
#include "support/CutSetText.h"
#include "support/ProcessStateTest.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Cut sets over the events A, B, C, ... whose primes and numbers ascend with the alphabet.
class CutSetListTest : public ProcessStateTest {
 protected:
  CutSetListTest() {
    for (const char* name : {"A", "B", "C", "D", "E"}) builder.Tree(name);
  }

  BasicEvent& Event(const std::string& name) { return *builder.Event(name); }

  /// A cut set that lives as long as the test, one letter per event.
  CutSet& Set(const std::string& letters) {
    sets.push_back(std::make_unique<CutSet>());
    for (const char letter : letters) sets.back()->AddEvent(Event(std::string(1, letter)));
    return *sets.back();
  }

  static std::vector<std::string> Texts(const std::vector<CutSet*>& cutSets) {
    std::vector<std::string> texts;
    for (const CutSet* cutSet : cutSets) texts.push_back(MembersOf(*cutSet));
    return texts;
  }

  TreeBuilder builder;
  std::vector<std::unique_ptr<CutSet>> sets;
  std::vector<CutSet*> redundant;
};

TEST_F(CutSetListTest, ForeignCutSetsStandInFrontLatestFirst) {
  CutSetList list(2);
  list.Append(Set("BC"));
  list.Prepend(Set("AB"));
  list.Append(Set("BD"));
  list.Prepend(Set("AB"));
  list.Prepend(Set("BE"));
  EXPECT_THAT(Texts(list.All()), ElementsAre("B E", "A B", "A B", "B C", "B D"));
  EXPECT_THAT(Texts(list.Own()), ElementsAre("B C", "B D"));
  EXPECT_EQ(list.GetCount(), 5);
  EXPECT_EQ(list.GetOwnCount(), 2);
}

TEST_F(CutSetListTest, EmptyListHasNoOwnCutSets) {
  const CutSetList list(2);
  EXPECT_THAT(list.Own(), IsEmpty());
  EXPECT_EQ(list.GetCount(), 0);
  EXPECT_EQ(list.prime, 1.0);
  EXPECT_EQ(list.GetPrimeType(), "CUTSETLIST");
}

TEST_F(CutSetListTest, ProductFollowsWhatIsListed) {
  CutSetList list(1);
  CutSet& a = Set("A");
  list.Append(a);
  list.Prepend(Set("B"));
  EXPECT_EQ(list.prime, 15.0);
  list.Remove(a);
  EXPECT_EQ(list.prime, 5.0);
}

TEST_F(CutSetListTest, FirstOwnCutSetCanGo) {
  CutSetList list(2);
  CutSet& first = Set("BC");
  list.Prepend(Set("AB"));
  list.Append(first);
  list.Append(Set("BD"));
  list.Remove(first);
  EXPECT_THAT(Texts(list.All()), ElementsAre("A B", "B D"));
  EXPECT_THAT(Texts(list.Own()), ElementsAre("B D"));
}

TEST_F(CutSetListTest, CutSetThatIsNotListedIsNotRemoved) {
  CutSetList list(2);
  list.Append(Set("BC"));
  list.Remove(Set("BC"));
  EXPECT_THAT(Texts(list.All()), ElementsAre("B C"));
}

TEST_F(CutSetListTest, SubsetMakesTheCandidateRedundant) {
  CutSetList list(1);
  list.Append(Set("A"));
  EXPECT_TRUE(list.CheckSubsumption(Set("AB"), false, redundant));
  EXPECT_THAT(redundant, IsEmpty());
}

TEST_F(CutSetListTest, EqualCutSetMakesTheCandidateRedundant) {
  CutSetList list(2);
  list.Append(Set("AB"));
  EXPECT_TRUE(list.CheckSubsumption(Set("AB"), true, redundant));
  EXPECT_THAT(redundant, IsEmpty());
}

TEST_F(CutSetListTest, SupersetsAreReportedUpToTheFirstSubset) {
  CutSetList list(0);
  list.Append(Set("ABC"));
  list.Append(Set("A"));
  list.Append(Set("ABD"));
  EXPECT_TRUE(list.CheckSubsumption(Set("AB"), false, redundant));
  EXPECT_THAT(Texts(redundant), ElementsAre("A B C"));
}

TEST_F(CutSetListTest, LatestForeignCutSetIsComparedFirst) {
  CutSetList list(0);
  list.Prepend(Set("ABC"));
  list.Prepend(Set("A"));
  EXPECT_TRUE(list.CheckSubsumption(Set("AB"), false, redundant));
  EXPECT_THAT(redundant, IsEmpty());
}

TEST_F(CutSetListTest, OwnSearchLeavesTheForeignOut) {
  CutSetList list(0);
  list.Prepend(Set("A"));
  list.Append(Set("BC"));
  EXPECT_FALSE(list.CheckSubsumption(Set("AB"), true, redundant));
  EXPECT_TRUE(list.CheckSubsumption(Set("AB"), false, redundant));
}

class CutSetIndexTest : public CutSetListTest {
 protected:
  CutSet& Add(const std::string& letters) {
    CutSet& cutSet = Set(letters);
    index.Add(cutSet);
    return cutSet;
  }

  std::vector<std::string> Listed(const std::string& event, int size) {
    const CutSetList* list = index.Find(Event(event).prime, size);
    return list ? Texts(list->All()) : std::vector<std::string>{"no list"};
  }

  CutSetIndex index;
};

TEST_F(CutSetIndexTest, CutSetStandsInTheListsOfItsEvents) {
  Add("AB");
  Add("BC");
  EXPECT_THAT(Listed("A", 2), ElementsAre("A B"));
  EXPECT_THAT(Listed("B", 2), ElementsAre("A B", "B C"));
  EXPECT_THAT(Listed("C", 2), ElementsAre("B C"));
  EXPECT_THAT(Listed("A", 1), ElementsAre("no list"));
  EXPECT_THAT(Texts(index.Find(Event("B").prime, 2)->Own()), ElementsAre("B C"));
  EXPECT_EQ(index.Find(Event("B").prime, 2)->order, 2);
}

TEST_F(CutSetIndexTest, RemovalLeavesEmptyLists) {
  index.Remove(Add("AB"));
  EXPECT_THAT(Listed("A", 2), IsEmpty());
  EXPECT_THAT(Listed("B", 2), IsEmpty());
}

TEST_F(CutSetIndexTest, PruningLeavesNoEmptyListsAndEvents) {
  CutSet& cutSet = Add("AB");
  Add("B");
  index.RemoveAndPrune(cutSet);
  EXPECT_EQ(index.lists.size(), 1U);
  EXPECT_EQ(index.lists.at(Event("B").prime).size(), 1U);
  EXPECT_THAT(Listed("B", 1), ElementsAre("B"));
}

TEST_F(CutSetIndexTest, RemovalAmongManyKeepsTheOrderOfTheRest) {
  std::vector<CutSet*> added;
  std::vector<std::string> kept;
  for (int i = 0; i < 200; ++i) {
    const std::string name = "X" + std::to_string(i);
    builder.Tree(name);
    CutSet& cutSet = Set("A");
    cutSet.AddEvent(Event(name));
    index.Add(cutSet);
    added.push_back(&cutSet);
  }
  for (std::size_t i = 0; i < added.size(); ++i) {
    if (i % 5 == 2) {
      kept.push_back(MembersOf(*added[i]));
    } else {
      index.Remove(*added[i]);
    }
  }
  EXPECT_EQ(Listed("A", 2), kept);
  EXPECT_THAT(Listed("X7", 2), ElementsAre("A X7"));
  EXPECT_THAT(Listed("X8", 2), IsEmpty());
}

TEST_F(CutSetIndexTest, SubsetIsFoundByItsLowestEvent) {
  Add("BC");
  EXPECT_TRUE(index.IsSubsumed(Set("ABC"), redundant));
  EXPECT_FALSE(index.IsSubsumed(Set("ABD"), redundant));
}

TEST_F(CutSetIndexTest, SupersetsAreFoundInTheListsOfTheFirstEvent) {
  Add("ABC");
  Add("BCD");
  Add("ABD");
  EXPECT_FALSE(index.IsSubsumed(Set("BC"), redundant));
  EXPECT_THAT(Texts(redundant), ::testing::UnorderedElementsAre("A B C", "B C D"));
}

TEST_F(CutSetIndexTest, OnlyCutSetsThatShareAnEventAreCompared) {
  Event("E").eventNumber = Event("A").eventNumber + CutSet::SignatureBits;
  Add("A");
  EXPECT_FALSE(index.IsSubsumed(Set("E"), redundant));
  EXPECT_THAT(redundant, IsEmpty());
}

TEST_F(CutSetIndexTest, CutSetsThatShareAnEventAreComparedBySignatureAlone) {
  Event("E").eventNumber = Event("A").eventNumber + CutSet::SignatureBits;
  Add("BE");
  EXPECT_TRUE(index.IsSubsumed(Set("AB"), redundant))
      << "B is the first event of both, and the others' numbers share a bit.";
}

TEST_F(CutSetIndexTest, LargerCutSetsAreNotComparedThroughFurtherEvents) {
  // B and E share a bit, so that the larger B, D, E lies in the candidate by signature; but it does
  // not hold the candidate's first event.
  Event("E").eventNumber = Event("B").eventNumber + CutSet::SignatureBits;
  Add("BDE");
  EXPECT_TRUE(index.IsSubsumed(Set("ABD"), redundant)) << "As large as the candidate.";
  Event("C").eventNumber = Event("D").eventNumber + CutSet::SignatureBits;
  index.Clear();
  Add("BCDE");
  EXPECT_FALSE(index.IsSubsumed(Set("ABD"), redundant));
}

TEST_F(CutSetIndexTest, EmptyIndexSubsumesNothing) {
  EXPECT_FALSE(index.IsSubsumed(Set("A"), redundant));
}

TEST_F(CutSetIndexTest, DigestsDecideMostComparisons) {
  builder.Tree("Z");
  CutSet& candidate = Set("A");
  candidate.AddEvent(Event("Z"));
  for (int i = 0; i < 1000; ++i) {
    const std::string name = "X" + std::to_string(i);
    builder.Tree(name);
    CutSet& cutSet = Set("A");
    cutSet.AddEvent(Event(name));
    index.Add(cutSet);
  }
  const CutSetList::Counters before = CutSetList::Cost();
  EXPECT_FALSE(index.IsSubsumed(candidate, redundant));
  EXPECT_EQ(CutSetList::Cost().entriesMet - before.entriesMet, 1000U);
  EXPECT_LE(CutSetList::Cost().comparisons - before.comparisons, 20U);
}

}  // namespace
}  // namespace FTS
