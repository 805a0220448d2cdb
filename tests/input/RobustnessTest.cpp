// Damaged documents: whatever is in a file, reading ends with a model, an error of the document or
// one of our exceptions. Run under the sanitizers these tests also look for what only they see.

#include <gmock/gmock.h>

#include <optional>
#include <random>
#include <string>

#include "input/ModelTextTest.h"
#include "platform/FileSystem.h"
#include "support/CapturedStreams.h"
#include "support/TestPaths.h"

namespace FTS {
namespace {

using ::testing::IsEmpty;

enum class Outcome { Model, BrokenDocument, Exception };

/// How many documents were read with each outcome.
struct Tally {
  int models = 0;
  int brokenDocuments = 0;
  int exceptions = 0;
};

class RobustnessTest : public ModelTextTest {
 protected:
  RobustnessTest() : text(*ReadWholeFile(TestsFolder() + "/models/everything.xml")) {
    Config::Instance().runSilent = true;  // The log would only slow this down.
  }

  Outcome ReadDamaged(const std::string& damaged) {
    try {
      vtnxParser parser(folder.Write("damaged.xml", damaged));
      if (parser.HasXmlError()) return Outcome::BrokenDocument;
      return parser.Parse() ? Outcome::Model : Outcome::BrokenDocument;
    } catch (const VtnException&) {
      return Outcome::Exception;
    }
  }

  void Count(Outcome outcome) {
    if (outcome == Outcome::Model) ++tally.models;
    if (outcome == Outcome::BrokenDocument) ++tally.brokenDocuments;
    if (outcome == Outcome::Exception) ++tally.exceptions;
  }

  std::size_t Below(std::size_t limit) { return random() % limit; }

  /// Where an element's text or name stands, in part: damage to it leaves the document sound.
  std::size_t PlaceInText() {
    std::size_t place = text.find('>', Below(text.size()));
    while (place == std::string::npos || place + 1 >= text.size() || text[place + 1] == '<') {
      place = text.find('>', Below(text.size()));
    }
    return place + 1;
  }

  TemporaryFolder folder;
  std::string text;
  std::mt19937 random{20221017};
  Tally tally;
};

TEST_F(RobustnessTest, UndamagedModelIsReadWithoutAWord) {
  Config::Instance().runSilent = false;
  const CapturedStreams streams;
  model = ReadModelText(text);
  EXPECT_THAT(Errors(), IsEmpty());
  EXPECT_THAT(Warnings(), IsEmpty());
  EXPECT_EQ(streams.Output(), "");
  EXPECT_EQ(streams.Errors(), "");
  EXPECT_EQ(model->components.size(), 4U);
}

TEST_F(RobustnessTest, TruncatedDocumentsAreRefused) {
  const std::size_t end = text.find_last_of('>');
  for (std::size_t length = 0; length < end; length += 1 + Below(60)) {
    EXPECT_EQ(ReadDamaged(text.substr(0, length)), Outcome::BrokenDocument) << length;
  }
}

TEST_F(RobustnessTest, ChangedBytesDoNoHarm) {
  for (int i = 0; i < 300; ++i) {
    std::string damaged = text;
    for (std::size_t changes = 1 + Below(3); changes > 0; --changes) {
      damaged[Below(damaged.size())] = static_cast<char>(Below(256));
    }
    Count(ReadDamaged(damaged));
  }
  EXPECT_GT(tally.models, 0);
  EXPECT_GT(tally.brokenDocuments, 0);
}

TEST_F(RobustnessTest, StrangeTextsInElementsDoNoHarm) {
  constexpr const char* Pieces[] = {"(",  ")",    "-",         "+",           "*",   ".",
                                    ":",  "::",   "{",         "}",           ",",   "~",
                                    "\"", "7",    "Omission-", "DEFAULT",     " e ", "OUTPUT",
                                    "||", "&lt;", "\xFF",      "GlobalGoto(", "fire"};
  for (int i = 0; i < 600; ++i) {
    std::string damaged = text;
    damaged.insert(PlaceInText(), Pieces[Below(std::size(Pieces))]);
    Count(ReadDamaged(damaged));
  }
  EXPECT_GT(tally.models, 0);
  EXPECT_GT(tally.exceptions, 0);
  EXPECT_EQ(tally.brokenDocuments, 0);
}

TEST_F(RobustnessTest, EmptiedElementsDoNoHarm) {
  for (int i = 0; i < 300; ++i) {
    std::string damaged = text;
    const std::size_t start = PlaceInText();
    damaged.erase(start, damaged.find('<', start) - start);
    Count(ReadDamaged(damaged));
  }
  EXPECT_GT(tally.models, 0);
  EXPECT_GT(tally.exceptions, 0);
}

TEST_F(RobustnessTest, RenamedElementsDoNoHarm) {
  constexpr const char* Names[] = {"Component", "Current",   "System", "Name",
                                   "Port",      "Hazard",    "State",  "FailureExpression",
                                   "Causes",    "Connection"};
  for (int i = 0; i < 300; ++i) {
    std::string damaged = text;
    const std::string oldName = Names[Below(std::size(Names))];
    const std::string newName = Names[Below(std::size(Names))];
    // All elements of the one name behind some place take the other, which keeps tags in pairs.
    for (const std::string mark : {"<", "</"}) {
      const std::string from = mark + oldName + ">";
      const std::string to = mark + newName + ">";
      std::size_t place = damaged.find(from);
      while (place != std::string::npos) {
        damaged.replace(place, from.size(), to);
        place = damaged.find(from, place + to.size());
      }
    }
    Count(ReadDamaged(damaged));
  }
  EXPECT_GT(tally.models, 0);
  EXPECT_GT(tally.exceptions, 0);
}

TEST_F(RobustnessTest, BinaryGarbageIsRefused) {
  for (int i = 0; i < 100; ++i) {
    std::string garbage;
    for (std::size_t size = Below(500); size > 0; --size) {
      garbage += static_cast<char>(Below(256));
    }
    EXPECT_EQ(ReadDamaged(garbage), Outcome::BrokenDocument);
  }
}

TEST_F(RobustnessTest, RepeatedNamesDoNoHarm) {
  for (const char* name : {"Pump", "Tank", "Cpu", "Hardware", "Plant", "supply", "flow", "dear"}) {
    std::string damaged = text;
    std::size_t place = damaged.find("<Name>");
    while (place != std::string::npos) {
      const std::size_t start = place + std::string_view("<Name>").size();
      const std::size_t end = damaged.find('<', start);
      if (Below(3) == 0) damaged.replace(start, end - start, name);
      place = damaged.find("<Name>", start);
    }
    Count(ReadDamaged(damaged));
  }
  EXPECT_EQ(tally.brokenDocuments, 0);
}

}  // namespace
}  // namespace FTS
