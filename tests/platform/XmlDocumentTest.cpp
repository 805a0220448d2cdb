#include <string>
#include <utility>
#include <vector>

#include "platform/XmlDocument.h"
#include "support/CaseName.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"

namespace FTS {
namespace {

class XmlDocumentTest : public ProcessStateTest {
 protected:
  /// Keeps the document alive for the handles.
  XmlElement Root(const std::string& text) {
    document = XmlDocument::LoadMemory(text);
    EXPECT_FALSE(document.HasError()) << document.ErrorText() << "\nin " << text;
    return document.FirstChild("r");
  }

  static std::string Nested(int levels) {
    std::string text;
    for (int i = 0; i < levels; ++i) text += "<r>\n";
    for (int i = 0; i < levels; ++i) text += "</r>";
    return text;
  }

  /// Attributes of different names, each behind a blank.
  static std::string Attributes(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
      text += " a" + std::to_string(i) + "='" + std::to_string(i) + "'";
    return text;
  }

  XmlDocument document = XmlDocument::LoadMemory("");
  TemporaryFolder folder;
};

std::string RepeatedText(const std::string& text, int times) {
  std::string result;
  for (int i = 0; i < times; ++i) result += text;
  return result;
}

// Walking.

TEST_F(XmlDocumentTest, FirstChildIsTheFirstOfItsName) {
  const XmlElement root = Root("<r><a>1</a><b>2</b><b>3</b></r>");
  EXPECT_EQ(root.FirstChild("b").Text(), "2");
  EXPECT_EQ(root.FirstChild().Name(), "a");
  EXPECT_FALSE(root.FirstChild("c"));
}

TEST_F(XmlDocumentTest, NextSiblingHasAnyName) {
  const XmlElement first = Root("<r><b/><a/><b/></r>").FirstChild("b");
  EXPECT_EQ(first.NextSibling().Name(), "a");
  EXPECT_EQ(first.NextSibling().NextSibling().Name(), "b");
  EXPECT_FALSE(first.NextSibling().NextSibling().NextSibling());
}

TEST_F(XmlDocumentTest, CommentsAndTextBetweenSiblingsArePassedOver) {
  const XmlElement first =
      Root("<r>text<!-- c --><a/>more<!-- <x/> --><![CDATA[<y/>]]><?z?><b/></r>").FirstChild();
  EXPECT_EQ(first.Name(), "a");
  EXPECT_EQ(first.NextSibling().Name(), "b");
}

TEST_F(XmlDocumentTest, NoElementAnswersWithNothing) {
  const XmlElement none;
  EXPECT_FALSE(none);
  EXPECT_EQ(none.Name(), "");
  EXPECT_EQ(none.Text(), "");
  EXPECT_EQ(none.Row(), 0);
  EXPECT_FALSE(none.FirstChild());
  EXPECT_FALSE(none.FirstChild("a"));
  EXPECT_FALSE(none.NextSibling());
}

TEST_F(XmlDocumentTest, ElementsOutliveAMoveOfTheDocument) {
  const XmlElement root = Root("<r><a>1</a></r>");
  const XmlDocument moved = std::move(document);
  EXPECT_EQ(root.FirstChild("a").Text(), "1");
  EXPECT_EQ(moved.FirstChild("r").FirstChild("a").Row(), 0);
}

TEST_F(XmlDocumentTest, DeclarationsBeforeTheRootArePassedOver) {
  EXPECT_TRUE(
      Root("\xEF\xBB\xBF<?xml version=\"1.0\" encoding='UTF-8' standalone=\"a>b\"?>\n"
           "<?style sheet?><!DOCTYPE r><!-- c -->\n<r/>"));
}

TEST_F(XmlDocumentTest, AttributesArePassedOver) {
  EXPECT_EQ(Root("<r a=\"1 > 0\" b = '</r>' c=2 ><a d='/>'/><b/></r>").FirstChild("b").Row(), 0);
}

// Texts.

struct TextCase {
  const char* name;
  const char* xml;
  const char* text;
};

class XmlTextTest : public XmlDocumentTest, public ::testing::WithParamInterface<TextCase> {};

TEST_P(XmlTextTest, IsWhatTheElementBeginsWith) {
  EXPECT_EQ(Root(GetParam().xml).Text(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, XmlTextTest,
    ::testing::Values(
        TextCase{"Plain", "<r>Pump</r>", "Pump"}, TextCase{"NothingInShortForm", "<r/>", ""},
        TextCase{"NothingInLongForm", "<r></r>", ""}, TextCase{"OnlyBlanks", "<r> \n </r>", ""},
        TextCase{"BlanksAreFolded", "<r>\n  a  and\r\n\tb </r>", "a and b"},
        TextCase{"EntitiesAreReplaced", "<r>&lt;a&gt; &amp; &quot;b&apos; &#65;&#x42;</r>",
                 "<a> & \"b' AB"},
        TextCase{"UnknownEntityLosesItsSign", "<r>&pump; a & b</r>", "pump; a  b"},
        TextCase{"OtherLettersStay", "<r>\xE9\xFC</r>", "\xE9\xFC"},
        TextCase{"CDataStandsAsItIs", "<r><![CDATA[ <a> &amp;  b ]]></r>", " <a> &amp;  b "},
        TextCase{"CDataJoinsText", "<r>a<![CDATA[<b>]]>c<![CDATA[&d]]></r>", "a<b>c&d"},
        TextCase{"LineEndsInCDataAreUnified", "<r><![CDATA[a\r\nb\rc]]></r>", "a\nb\nc"},
        TextCase{"EndsAtAChild", "<r>a<b>x</b>c</r>", "a"},
        TextCase{"NoneBehindAChild", "<r><b>x</b>c</r>", ""},
        TextCase{"GoesOnBehindAComment", "<r>a <!-- x --> + b</r>", "a + b"},
        TextCase{"BeginsBehindAComment", "<r><!-- c -->a</r>", "a"},
        TextCase{"EndsBeforeAComment", "<r> a <!-- c --> </r>", "a"},
        TextCase{"CommentIsNoBlank", "<r>a<!-- c -->b</r>", "ab"},
        TextCase{"BlankBeforeACommentStays", "<r>a <!-- c -->b</r>", "a b"},
        TextCase{"BlankBehindACommentStays", "<r>a<!-- c --> b</r>", "a b"},
        TextCase{"BlankBetweenCommentsStays", "<r>a<!-- c --> <!-- d -->b</r>", "a b"},
        TextCase{"ManyCommentsArePassedOver", "<r><!--1-->a<!--2-->b <!--3--><!--4--> c<!----></r>",
                 "ab c"},
        TextCase{"CommentsOfManyLinesArePassedOver", "<r>a\n<!-- c\n\n --> + <!--\n--> b\n</r>",
                 "a + b"},
        TextCase{"CDataJoinsTextAcrossAComment", "<r>a<!-- c --><![CDATA[<b>]]><!-- d -->c</r>",
                 "a<b>c"},
        TextCase{"CommentOfTagsIsPassedOver", "<r>a<!-- <b>x</b> -- > -->c<b/></r>", "ac"},
        TextCase{"NothingInAComment", "<r><!-- c --></r>", ""},
        TextCase{"NoneBehindACommentAndAChild", "<r><!-- c --><b/>a<!-- d -->e</r>", ""}),
    CaseName);

// Rows.

struct RowCase {
  const char* name;
  std::string xml;
  int row;  // Of the element x.
};

class XmlRowTest : public XmlDocumentTest, public ::testing::WithParamInterface<RowCase> {};

TEST_P(XmlRowTest, IsTheLineOfTheTag) {
  EXPECT_EQ(Root(GetParam().xml).FirstChild("x").Row(), GetParam().row);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, XmlRowTest,
    ::testing::Values(
        RowCase{"FirstLineIsZero", "<r><x/></r>", 0}, RowCase{"LineFeeds", "<r>\n\n<x/></r>", 2},
        RowCase{"CarriageReturnsWithLineFeeds", "<r>\r\n\r\n<x/>\r\n</r>", 2},
        RowCase{"CarriageReturns", "<r>\r\r<x/></r>", 2},
        RowCase{"WhereTheTagBegins", "<r>\n<x\n\na='\n'>\n\n</x></r>", 1},
        RowCase{"BehindAComment", "<r><!-- <x>\n\n</x> -->\n<x/></r>", 3},
        RowCase{"BehindTextsAmongComments", "<r>a<!-- b\n\n -->\nc<!--\n-->d\n\n<x/></r>", 6},
        RowCase{"BehindCData", "<r><![CDATA[<x>\n]]>\n<x/></r>", 2},
        RowCase{"BehindADeclaration", "<?xml version='1.0'\n?>\n<!DOCTYPE\nr>\n<r><x/></r>", 4},
        RowCase{"BehindAnAttribute", "<r a='>\n<x>'\n>\n<x/></r>", 3},
        RowCase{"BehindOtherElements", "<r>\n<a><x/></a>\n<b>\n</b>\n<x/></r>", 4},
        RowCase{"BehindABrokenCharacterThatSwallowsATag",
                "<?xml version='1.0' encoding='UTF-8'?>\n<r>\xF0<a/>\n<x/></r>", 2},
        RowCase{"BehindSuchACharacterAndAComment",
                "<?xml version='1.0' encoding='UTF-8'?>\n"
                "<r>\xF0<a/>b<!--\n\n-->c\n<x/></r>",
                4}),
    CaseName);

// Errors.

TEST_F(XmlDocumentTest, SoundDocumentHasNoError) {
  document = XmlDocument::LoadMemory("<r/>");
  EXPECT_FALSE(document.HasError());
  EXPECT_EQ(document.ErrorText(), "");
}

TEST_F(XmlDocumentTest, EmptyTextIsAnErrorWithoutAPlace) {
  document = XmlDocument::LoadMemory("");
  EXPECT_TRUE(document.HasError());
  EXPECT_EQ(document.ErrorText(), "Error document empty.");
  EXPECT_EQ(document.ErrorRow(), 0);
  EXPECT_EQ(document.ErrorColumn(), 0);
}

TEST_F(XmlDocumentTest, MissingFileCannotBeOpened) {
  document = XmlDocument::LoadFile(folder.Path("missing.xml"));
  EXPECT_EQ(document.ErrorText(), "Failed to open file");
  EXPECT_FALSE(document.FirstChild("r"));
}

TEST_F(XmlDocumentTest, FolderCannotBeOpened) {
  document = XmlDocument::LoadFile(folder.Path());
  EXPECT_EQ(document.ErrorText(), "Failed to open file");
}

TEST_F(XmlDocumentTest, FileIsLoaded) {
  document = XmlDocument::LoadFile(folder.Write("a.xml", "<r>\r\n<a>text</a></r>"));
  EXPECT_FALSE(document.HasError());
  EXPECT_EQ(document.FirstChild("r").FirstChild("a").Text(), "text");
}

struct ErrorCase {
  const char* name;
  std::string xml;
  const char* text;
  int row;
  int column;
};

class XmlErrorTest : public XmlDocumentTest, public ::testing::WithParamInterface<ErrorCase> {};

TEST_P(XmlErrorTest, TellsWhatIsWrongAndWhere) {
  document = XmlDocument::LoadMemory(GetParam().xml);
  EXPECT_TRUE(document.HasError());
  EXPECT_EQ(document.ErrorText(), GetParam().text);
  EXPECT_EQ(document.ErrorRow(), GetParam().row);
  EXPECT_EQ(document.ErrorColumn(), GetParam().column);
  EXPECT_FALSE(document.FirstChild("r"));
}

INSTANTIATE_TEST_SUITE_P(
    Errors, XmlErrorTest,
    ::testing::Values(
        ErrorCase{"WrongEndTag", "<r>\n <a>\n </b>\n</r>", "Error reading end tag.", 3, 2},
        ErrorCase{"WrongEndTagBehindAComment", "<r>\n <a>b<!--\n\n  -->c</b>\n</r>",
                  "Error reading end tag.", 4, 7},
        ErrorCase{"CutOff", "<r>\n <a/>\n <a/>", "Error reading Element value.", 3, 6},
        ErrorCase{"CutOffBehindALineEnd", "<r>\r\n <a/>\r\n", "Error reading end tag.", 3, 1},
        ErrorCase{"OnlyBlanks", "   \n ", "Error document empty.", 2, 2},
        ErrorCase{"CommentWithoutEnd", "<r>\n <!-- a </r>", "Error parsing Comment.", 2, 2},
        ErrorCase{"CommentWithoutEndBehindTheRoot", "<r/>\n<!-- a", "Error parsing Comment.", 2, 1},
        ErrorCase{"CDataWithoutEnd", "<r>\n\n<![CDATA[a</r>", "Error parsing CDATA.", 3, 1},
        ErrorCase{"DeclarationWithoutEnd", "<?xml version=\"1.0\"", "Error parsing Declaration.", 1,
                  1},
        ErrorCase{"DeclarationWithABrokenAttribute", "<?xml version?>\n<r/>",
                  "Error parsing Declaration.", 1, 1},
        ErrorCase{"DocumentTypeWithoutEnd", "\n<!DOCTYPE r", "Error parsing Unknown.", 2, 1},
        ErrorCase{"NulByte", std::string("<r>\n <a\0/></r>", 13),
                  "Error null (0) or unexpected EOF found in input stream.", 2, 4}),
    CaseName);

class XmlBrokenTextTest : public XmlDocumentTest,
                          public ::testing::WithParamInterface<std::string> {};

TEST_P(XmlBrokenTextTest, IsAnError) {
  document = XmlDocument::LoadMemory(GetParam());
  EXPECT_TRUE(document.HasError()) << GetParam();
  EXPECT_NE(document.ErrorText(), "");
}

INSTANTIATE_TEST_SUITE_P(Texts, XmlBrokenTextTest,
                         ::testing::Values("   \n ", "plain text", "\xFF\xFE\x01\x02", "<", "<r",
                                           "<r ", "<r/", "<r a", "<r a=", "<r a='", "<r a='1",
                                           "<r a=1", "<r>", "<r>text", "<r>&#x", "<r></r", "<r></",
                                           "<r><", "<r>\xE2\x82", "<r>\xF0", "<r a='\xF0",
                                           "<r><a></r></a>"));

TEST_F(XmlDocumentTest, NestingMayReachTheLimit) {
  document = XmlDocument::LoadMemory(Nested(1000));
  EXPECT_FALSE(document.HasError()) << document.ErrorText();
}

TEST_F(XmlDocumentTest, DeeperNestingIsAnErrorThatNamesTheLine) {
  document = XmlDocument::LoadMemory(Nested(1001));
  EXPECT_EQ(document.ErrorText(),
            "Error: elements are nested deeper than 1000 levels in line 1001.");
  EXPECT_EQ(document.ErrorRow(), 1001);
  EXPECT_EQ(document.ErrorColumn(), 1);
}

TEST_F(XmlDocumentTest, VeryDeepNestingWithoutEndIsAnErrorToo) {
  document = XmlDocument::LoadMemory(RepeatedText("<a b='>'>", 1'000'000));
  EXPECT_TRUE(document.HasError());
  EXPECT_EQ(document.ErrorRow(), 1);
  EXPECT_EQ(document.ErrorColumn(), 9001);
}

TEST_F(XmlDocumentTest, AttributesMayReachTheLimit) {
  EXPECT_TRUE(Root("<r" + Attributes(1000) + "><a" + Attributes(1000) + "/></r>").FirstChild());
}

TEST_F(XmlDocumentTest, MoreAttributesAreAnErrorThatNamesTheLine) {
  document = XmlDocument::LoadMemory("<r>\n\n  <a" + Attributes(1001) + "/></r>");
  EXPECT_EQ(document.ErrorText(), "Error: an element has more than 1000 attributes in line 3.");
  EXPECT_EQ(document.ErrorRow(), 3);
  EXPECT_EQ(document.ErrorColumn(), 3);
}

TEST_F(XmlDocumentTest, VeryManyAttributesAreRefusedAtOnce) {
  document = XmlDocument::LoadMemory("<r" + Attributes(100'000) + "/>");
  EXPECT_EQ(document.ErrorText(), "Error: an element has more than 1000 attributes in line 1.");
}

TEST_F(XmlDocumentTest, VeryManySiblingsWithoutEndAreAnErrorAtTheEnd) {
  document = XmlDocument::LoadMemory("<Model>" + RepeatedText("<a/>", 100'000));
  EXPECT_TRUE(document.HasError());
  EXPECT_EQ(document.ErrorRow(), 1);
  EXPECT_EQ(document.ErrorColumn(), 7 + 400'000 + 1);
}

TEST_F(XmlDocumentTest, VeryManyCommentsInATextArePassedOver) {
  constexpr int Comments = 100'000;
  EXPECT_EQ(Root("<r>" + RepeatedText("a<!-- -->", Comments) + "</r>").Text(),
            std::string(Comments, 'a'));
}

TEST_F(XmlDocumentTest, ManySiblingsAreNoNesting) {
  const XmlElement root = Root("<r>" + RepeatedText("<a>1</a><b/>", 5000) + "</r>");
  int count = 0;
  for (XmlElement child = root.FirstChild(); child; child = child.NextSibling()) ++count;
  EXPECT_EQ(count, 10'000);
}

TEST_F(XmlDocumentTest, TagsInCommentsAndCDataAreNoNesting) {
  const std::string tags = RepeatedText("<a>", 2000);
  EXPECT_EQ(Root("<r><!-- " + tags + " --><![CDATA[" + tags + "]]><b/></r>").FirstChild().Name(),
            "b");
}

}  // namespace
}  // namespace FTS
