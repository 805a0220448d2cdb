// Which file a model document comes from, and what happens when there is none.

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>

#include "app/ProgramPath.h"
#include "input/ModelTextTest.h"
#include "platform/ZipArchive.h"
#include "support/CapturedStreams.h"
#include "support/RecordedCommands.h"
#include "support/ZipWriter.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* Document = "<Model><Name>Plant</Name></Model>";

class DocumentTest : public ModelTextTest {
 protected:
  /// The name of the model that the file holds.
  std::string NameIn(const std::string& path) {
    const CapturedStreams streams;
    vtnxParser parser(path);
    EXPECT_FALSE(parser.HasXmlError()) << parser.XmlErrorText();
    std::string name = parser.Parse()->GetName();
    output = streams.Output();
    return name;
  }

  TemporaryFolder folder;
  std::string output;
};

TEST_F(DocumentTest, XmlFileIsTheDocument) {
  EXPECT_EQ(NameIn(folder.Write("plant.xml", Document)), "Plant");
  EXPECT_EQ(output, "");
}

TEST_F(DocumentTest, ArchiveHoldsTheDocumentUnderItsBaseName) {
  const std::string path = folder.Path("plant.vtnx");
  WriteZip(path, {{"other.xml", "<Model/>"}, {"plant.xml", Document}});
  EXPECT_EQ(NameIn(path), "Plant");
  EXPECT_EQ(output, path + "\n");
  EXPECT_EQ(vtnxParser::LastArchiveStatus(), ZipOk);
}

TEST_F(DocumentTest, CaseOfTheEntryDoesNotMatter) {
  const std::string path = folder.Path("Plant.vtnx");
  WriteZip(path, {{"pLANT.XML", Document}});
  EXPECT_EQ(NameIn(path), "Plant");
}

TEST_F(DocumentTest, AnyOtherExtensionIsAnArchiveToo) {
  const std::string path = folder.Path("plant.model");
  WriteZip(path, {{"plant.xml", Document}});
  EXPECT_EQ(NameIn(path), "Plant");
}

TEST_F(DocumentTest, ExtensionInCapitalsIsAnArchive) {
  const CapturedStreams streams;
  EXPECT_TRUE(vtnxParser(folder.Write("plant.XML", Document)).HasXmlError());
}

TEST_F(DocumentTest, PathOfAnArchiveIsPrintedInASilentRunToo) {
  Config::Instance().runSilent = true;
  const std::string path = folder.Path("plant.vtnx");
  WriteZip(path, {{"plant.xml", Document}});
  NameIn(path);
  EXPECT_EQ(output, path + "\n");
}

TEST_F(DocumentTest, ArchiveWithoutTheEntryIsAnErrorOfTheDocument) {
  const CapturedStreams streams;
  const std::string path = folder.Path("plant.vtnx");
  WriteZip(path, {{"other.xml", Document}});
  const vtnxParser parser(path);
  EXPECT_TRUE(parser.HasXmlError());
  EXPECT_NE(parser.XmlErrorText(), "");
  EXPECT_EQ(vtnxParser::LastArchiveStatus(), ZipEntryNotFound);
}

TEST_F(DocumentTest, FileThatIsNoArchiveIsAnErrorOfTheDocument) {
  const CapturedStreams streams;
  const vtnxParser parser(folder.Write("plant.vtnx", Document));
  EXPECT_TRUE(parser.HasXmlError());
  EXPECT_EQ(vtnxParser::LastArchiveStatus(), ZipNoArchive);
}

TEST_F(DocumentTest, BrokenXmlTellsItsPlace) {
  const vtnxParser parser(folder.Write("plant.xml", "<Model>\n<Name>Plant</Nam>\n</Model>"));
  EXPECT_TRUE(parser.HasXmlError());
  EXPECT_NE(parser.XmlErrorText(), "");
  EXPECT_EQ(parser.XmlErrorRow(), 2);
}

TEST_F(DocumentTest, MissingFileStopsTheReading) {
  const std::string path = folder.Path("nowhere.xml");
  EXPECT_EQ(ThrownBy([&] { vtnxParser parser(path); }), "File does not exist: " + path);
}

TEST_F(DocumentTest, FolderIsNoFile) {
  EXPECT_EQ(ThrownBy([&] { vtnxParser parser(folder.Path()); }),
            "File does not exist: " + folder.Path());
}

TEST_F(DocumentTest, LongPathStopsTheReading) {
  std::string path = folder.Path();
  while (path.size() <= 260) path += "/" + std::string(40, 'd');
  path += "/plant.xml";
  folder.Write(path.substr(folder.Path().size() + 1), Document);
  EXPECT_EQ(ThrownBy([&] { vtnxParser parser(path); }), "Invalid file name: " + path);
}

TEST_F(DocumentTest, TextFileIsConvertedFirst) {
  SetProgramPath("/opt/tool/vtn");
  const RecordedCommands commands;
  const std::string path = folder.Path("plant.vtn");
  WriteZip(path, {{"plant.xml", Document}});  // As the converter leaves it.
  EXPECT_EQ(NameIn(path), "Plant");
  ASSERT_THAT(commands.Lines(), SizeIs(1));
  EXPECT_EQ(commands.Lines()[0].program, "/opt/tool/vtn2vtnx.exe");
  EXPECT_THAT(commands.Lines()[0].arguments, ElementsAre(path));
  EXPECT_EQ(output, "\"/opt/tool/vtn2vtnx.exe\" \"" + path + "\"\n" + path + "\n");
}

TEST_F(DocumentTest, ConverterMayLackItsEnding) {
  SetProgramPath(folder.Path("vtn"));
  std::filesystem::permissions(folder.Write("vtn2vtnx", ""), std::filesystem::perms::owner_all);
  const RecordedCommands commands;
  const std::string path = folder.Path("plant.vtn");
  WriteZip(path, {{"plant.xml", Document}});
  NameIn(path);
  EXPECT_EQ(commands.Lines().at(0).program, folder.Path("vtn2vtnx"));
}

TEST_F(DocumentTest, SilentRunDoesNotPrintTheConversion) {
  Config::Instance().runSilent = true;
  const RecordedCommands commands;
  const std::string path = folder.Path("plant.vtn");
  WriteZip(path, {{"plant.xml", Document}});
  NameIn(path);
  EXPECT_EQ(output, path + "\n");
}

TEST_F(DocumentTest, FailedConversionShowsInTheArchive) {
  const CapturedStreams streams;
  RecordedCommands commands;
  commands.SetStatus(std::nullopt);
  const vtnxParser parser(folder.Write("plant.vtn", "Model Name \"Plant\""));
  EXPECT_TRUE(parser.HasXmlError());
}

TEST_F(DocumentTest, DocumentWithoutModelGivesAnEmptyOne) {
  model = ReadModelText("<Other><Name>Plant</Name></Other>");
  EXPECT_EQ(model->GetName(), "");
  EXPECT_EQ(model->riskTime, 0.0);
  EXPECT_TRUE(model->components.empty());
  EXPECT_TRUE(model->hazards.empty());
}

TEST_F(DocumentTest, DeepElementsAreRefused) {
  constexpr int Depth = 2000;
  std::string text;
  for (int i = 0; i < Depth; ++i) text += "<System>";
  for (int i = 0; i < Depth; ++i) text += "</System>";
  EXPECT_TRUE(vtnxParser(folder.Write("deep.xml", text)).HasXmlError());
}

}  // namespace
}  // namespace FTS
