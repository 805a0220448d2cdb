#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "model/NumberText.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr unsigned Seed = 20221017;

class NumberTextTest : public ProcessStateTest {};

std::string StreamText(double value) {
  std::ostringstream stream;
  stream.imbue(std::locale::classic());
  stream << value;
  return stream.str();
}

double StreamNumber(const std::string& text) {
  std::istringstream stream(text);
  stream.imbue(std::locale::classic());
  double value = 0.0;
  stream >> value;
  return value;
}

/// Doubles of every magnitude, by random bits; infinities and what is no number among them.
std::vector<double> AnyDoubles(int count) {
  std::mt19937_64 random(Seed);
  std::vector<double> values;
  for (int i = 0; i < count; ++i) values.push_back(std::bit_cast<double>(random()));
  return values;
}

TEST_F(NumberTextTest, DoublesAreFormattedAsByAStreamInItsDefaultState) {
  for (const double value : {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.1,
                             0.0001,
                             0.00001,
                             1e-05,
                             1.2e-05,
                             123456.0,
                             1234567.0,
                             999999.5,
                             1e5,
                             1e6,
                             1e100,
                             1e-100,
                             0.0025,
                             3.14159265,
                             100.0,
                             Infinity,
                             -Infinity,
                             4.9406564584124654e-324,
                             1.7976931348623157e308}) {
    EXPECT_EQ(FormatDouble(value), StreamText(value));
  }
}

TEST_F(NumberTextTest, RandomDoublesAreFormattedAsByAStreamInItsDefaultState) {
  for (const double value : AnyDoubles(20000)) {
    if (std::isnan(value)) continue;  // A stream tells its sign.
    ASSERT_EQ(FormatDouble(value), StreamText(value)) << "seed " << Seed;
  }
}

TEST_F(NumberTextTest, FormatHasSixSignificantDigits) {
  EXPECT_EQ(FormatDouble(0.0), "0");
  EXPECT_EQ(FormatDouble(-0.0), "-0");
  EXPECT_EQ(FormatDouble(1.0 / 3.0), "0.333333");
  EXPECT_EQ(FormatDouble(0.000012), "1.2e-05");
  EXPECT_EQ(FormatDouble(1e-5), "1e-05");
  EXPECT_EQ(FormatDouble(1234567.0), "1.23457e+06");
  EXPECT_EQ(FormatDouble(Infinity), "inf");
  EXPECT_EQ(FormatDouble(-Infinity), "-inf");
  EXPECT_EQ(FormatDouble(NotANumber), "nan");
}

TEST_F(NumberTextTest, WhatIsNoNumberHasNoSign) {
  const double negative = std::copysign(NotANumber, -1.0);
  ASSERT_TRUE(std::signbit(negative));
  EXPECT_EQ(FormatDouble(negative), "nan");
  EXPECT_EQ(FormatSortKey(negative), "nan");
  EXPECT_EQ(FormatDouble(std::copysign(NotANumber, 1.0)), "nan");
}

struct SortKeyCase {
  const char* name;
  double value;
  std::string text;
};

class SortKeyTest : public ProcessStateTest, public ::testing::WithParamInterface<SortKeyCase> {};

TEST_P(SortKeyTest, ReadsAs) { EXPECT_EQ(FormatSortKey(GetParam().value), GetParam().text); }

INSTANTIATE_TEST_SUITE_P(
    Values, SortKeyTest,
    ::testing::Values(SortKeyCase{"Zero", 0.0, "0.0"}, SortKeyCase{"NegativeZero", -0.0, "-0.0"},
                      SortKeyCase{"One", 1.0, "1.0"}, SortKeyCase{"Hundred", 100.0, "100.0"},
                      SortKeyCase{"ShortestDigits", 0.0025, "0.0025"},
                      SortKeyCase{"TenthIsNotItsBinaryExpansion", 0.1, "0.1"},
                      SortKeyCase{"Negative", -12.5, "-12.5"},
                      SortKeyCase{"AllDigits", 1.0 / 3.0, "0.3333333333333333"},
                      SortKeyCase{"Small", 1.5e-10, "0.00000000015"},
                      SortKeyCase{"Great", 1e22, "10000000000000000000000.0"},
                      SortKeyCase{"DigitsAcrossThePoint", 123.456, "123.456"},
                      SortKeyCase{"LastPlace", 1e-200, "0." + std::string(199, '0') + "1"},
                      SortKeyCase{"RoundedToTheLastPlace", 1.76e-199,
                                  "0." + std::string(198, '0') + "18"},
                      SortKeyCase{"BehindTheLastPlace", 1e-250, "0.0"},
                      SortKeyCase{"NegativeBehindTheLastPlace", -1e-250, "-0.0"},
                      SortKeyCase{"Infinity", Infinity, "inf"},
                      SortKeyCase{"NotANumber", NotANumber, "nan"}),
    CaseName);

TEST_F(NumberTextTest, SortKeyReadsBackAsTheValue) {
  std::mt19937_64 random(Seed);
  for (int i = 0; i < 5000; ++i) {
    const double value = std::ldexp(std::generate_canonical<double, 53>(random), -(i % 500));
    ASSERT_EQ(StreamNumber(FormatSortKey(value)), value) << "seed " << Seed;
  }
}

const char* const NumberTexts[] = {
    "0",
    "1",
    "-1",
    "+1",
    "12.5",
    ".5",
    "5.",
    "-.5",
    "1e3",
    "1E3",
    "1e+3",
    "1e-3",
    " 7",
    "\t\n 7",
    "7 8",
    "7abc",
    "12.5.6",
    "1e5e6",
    "007",
    "1,000",
    "",
    " ",
    "abc",
    ".",
    "-",
    "+",
    "+-5",
    "--5",
    "e5",
    "1e400",
    "-1e400",
    "1e-400",
    "-1e-400",
    "0e400",
    "-0",
    "0.1",
    "2.5e-310",
    "5x",
    "- 5",
    "1_000",
    "1.0e+05 ",
    "1e99999999999",
    "1e-99999999999",
    "0.000000000000000000000000000000000000001e300",
    "1000000000000000000000000000000000000000000000000000000000000000000000000e-340"};

TEST_F(NumberTextTest, DoublesAreParsedAsByAStream) {
  for (const char* text : NumberTexts) {
    const double parsed = ParseDouble(text);
    EXPECT_EQ(parsed, StreamNumber(text)) << '"' << text << '"';
    EXPECT_EQ(std::signbit(parsed), std::signbit(StreamNumber(text))) << '"' << text << '"';
  }
}

TEST_F(NumberTextTest, CharactersThatAStreamTakesInVainGiveZero) {
  for (const char* text : {"1e", "1e+", "2.5E-", "1ex"}) {
    EXPECT_EQ(ParseDouble(text), 0.0) << text;
    EXPECT_EQ(StreamNumber(text), 0.0) << text;
  }
}

TEST_F(NumberTextTest, WordsAndHexadecimalDigitsAreNoNumbers) {
  for (const char* text : {"inf", "nan", "infinity", "-inf", "0x10"}) {
    EXPECT_EQ(ParseDouble(text), 0.0) << text;
    EXPECT_EQ(ParseDoubleLikeAtof(text), 0.0) << text;
  }
}

TEST_F(NumberTextTest, RandomDoublesReadBackAsFormatted) {
  for (const double value : AnyDoubles(5000)) {
    if (!std::isfinite(value)) continue;
    const std::string text = StreamText(value);
    ASSERT_EQ(ParseDouble(text), StreamNumber(text)) << text << ", seed " << Seed;
  }
}

TEST_F(NumberTextTest, DoublesAreParsedAsByTheCLibrary) {
  for (const char* text : NumberTexts) {
    const double parsed = ParseDoubleLikeAtof(text);
    EXPECT_EQ(parsed, std::atof(text)) << '"' << text << '"';
  }
}

TEST_F(NumberTextTest, LongestNumberCountsForTheCLibrary) {
  EXPECT_EQ(ParseDoubleLikeAtof("1e"), 1.0);
  EXPECT_EQ(ParseDoubleLikeAtof("2.5e+"), 2.5);
  EXPECT_EQ(ParseDoubleLikeAtof("0.05abc"), 0.05);
  EXPECT_EQ(ParseDoubleLikeAtof("abc"), 0.0);
}

TEST_F(NumberTextTest, LocaleOfTheProcessDoesNotMatter) {
  struct CommaPunctuation : std::numpunct<char> {
    CommaPunctuation() : std::numpunct<char>(1) {}  // Owned by the test, not by the locale.
    char do_decimal_point() const override { return ','; }
  };
  static CommaPunctuation punctuation;
  const std::locale previous =
      std::locale::global(std::locale(std::locale::classic(), &punctuation));
  EXPECT_EQ(FormatDouble(2.5), "2.5");
  EXPECT_EQ(FormatSortKey(2.5), "2.5");
  EXPECT_EQ(ParseDouble("2.5"), 2.5);
  EXPECT_EQ(ParseDoubleLikeAtof("2,5"), 2.0);
  std::locale::global(previous);
}

TEST_F(NumberTextTest, IntegersAreParsedAsByTheCLibrary) {
  for (const char* text : {"0", "3", "-3", "+3", " 42", "\t42", "42abc", "4 2", "abc", "", "-", "+",
                           "+-4", "3.9", "007", "2147483647", "-2147483648", "1e3"}) {
    EXPECT_EQ(ParseInteger(text), std::atoi(text)) << '"' << text << '"';
  }
}

TEST_F(NumberTextTest, IntegersOutOfRangeAreTheNearestThatFit) {
  EXPECT_EQ(ParseInteger("2147483648"), 2147483647);
  EXPECT_EQ(ParseInteger("-2147483649"), -2147483648LL);
  EXPECT_EQ(ParseInteger("99999999999999999999999999"), 2147483647);
  EXPECT_EQ(ParseInteger("-99999999999999999999999999"), -2147483648LL);
}

}  // namespace
}  // namespace FTS
