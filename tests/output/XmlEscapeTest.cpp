#include <gtest/gtest.h>

#include <ostream>

#include "output/XmlEscape.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"

namespace FTS {

namespace {

struct EscapeCase {
  const char* name;
  const char* text;
  const char* escaped;
};

void PrintTo(const EscapeCase& row, std::ostream* stream) { *stream << row.name; }

class XmlEscapeTest : public ProcessStateTest, public ::testing::WithParamInterface<EscapeCase> {};

TEST_P(XmlEscapeTest, GivesTextThatXmlReadersTake) {
  EXPECT_EQ(EscapeXml(GetParam().text), GetParam().escaped);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, XmlEscapeTest,
    ::testing::Values(
        EscapeCase{"Empty", "", ""}, EscapeCase{"Plain", "Loss of braking", "Loss of braking"},
        EscapeCase{"Markup", "a < b & \"c\" > d", "a &lt; b &amp; &quot;c&quot; &gt; d"},
        EscapeCase{"ApostropheStays", "driver's", "driver's"},
        EscapeCase{"LineEndsAndTabsSurviveAttributes", "a\r\n\tb", "a&#13;&#10;&#9;b"},
        EscapeCase{"ControlCharactersHaveNoSpelling", "a\x01\x1F", "a&#65533;&#65533;"},
        EscapeCase{"Delete", "\x7F", "&#127;"},
        EscapeCase{"Utf8Stays",
                   "Gr\xC3\xB6\xC3\x9F"
                   "e \xE2\x82\xAC \xF0\x9F\x98\x80",
                   "Gr\xC3\xB6\xC3\x9F"
                   "e \xE2\x82\xAC \xF0\x9F\x98\x80"},
        EscapeCase{"Latin1SignOfAComplement",
                   "\xAC"
                   "stuck",
                   "&#172;stuck"},
        EscapeCase{"Latin1BetweenUtf8", "\xAC\xC3\xB6", "&#172;\xC3\xB6"},
        EscapeCase{"Latin1Word",
                   "Gr\xF6\xDF"
                   "e",
                   "Gr&#246;&#223;e"},
        EscapeCase{"CutSequence", "a\xE2\x82", "a&#226;&#130;"},
        EscapeCase{"TooLongSpelling", "\xC0\x80", "&#192;&#128;"},
        EscapeCase{"Surrogate", "\xED\xA0\x80", "&#237;&#160;&#128;"},
        EscapeCase{"NoCharacter", "\xEF\xBF\xBF", "&#239;&#191;&#191;"},
        EscapeCase{"BeyondUnicode", "\xF4\x90\x80\x80", "&#244;&#144;&#128;&#128;"}),
    CaseName);

}  // namespace

}  // namespace FTS
