#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/ZipArchive.h"
#include "support/ProcessStateTest.h"
#include "support/TemporaryFolder.h"
#include "support/ZipWriter.h"

namespace FTS {
namespace {

class ZipArchiveTest : public ProcessStateTest {
 protected:
  std::string Archive(const std::vector<ZipItem>& items) const {
    WriteZip(folder.Path("a.vtnx"), items);
    return folder.Path("a.vtnx");
  }

  int Unpack(const std::string& archive, const std::string& target) {
    return UnpackArchive(archive, target, cutShort);
  }

  /// The position of an archive's structure with that signature.
  static std::size_t Find(const std::string& bytes, const char* signature) {
    const std::size_t position = bytes.find(signature);
    EXPECT_NE(position, std::string::npos);
    return position;
  }

  TemporaryFolder folder;
  std::vector<std::string> cutShort;
};

/// Where the structures of an archive begin, and where in them things stand.
constexpr const char* LocalHeader = "PK\x03\x04";
constexpr const char* DirectoryEntry = "PK\x01\x02";
constexpr std::size_t DeclaredSizeOffset = 24;
constexpr std::size_t LocalHeaderSize = 30;

TEST_F(ZipArchiveTest, EntryIsUnpacked) {
  const ZipEntry entry = ReadZipEntry(Archive({{"a.xml", "<Model/>"}}), "a.xml");
  EXPECT_EQ(entry.status, ZipOk);
  EXPECT_EQ(entry.data, "<Model/>");
}

TEST_F(ZipArchiveTest, EntryIsFoundAmongOthers) {
  const std::string archive = Archive({{"x.xml", "x"}, {"d/a.xml", "d"}, {"a.xml", "a"}});
  EXPECT_EQ(ReadZipEntry(archive, "a.xml").data, "a");
}

TEST_F(ZipArchiveTest, CaseOfTheNameDoesNotMatter) {
  EXPECT_EQ(ReadZipEntry(Archive({{"Brake.XML", "text"}}), "brake.xml").data, "text");
}

TEST_F(ZipArchiveTest, LargeEntryIsUnpackedWhole) {
  std::string data;
  for (int i = 0; data.size() < 5'000'000; ++i) data += std::to_string(i) + "\n";
  EXPECT_EQ(ReadZipEntry(Archive({{"a.xml", data}}), "a.xml").data, data);
}

TEST_F(ZipArchiveTest, AllEntriesAreUnpackedWithTheirFolders) {
  const std::string archive =
      Archive({{"pages/", ""}, {"pages/css/a.css", "body {}"}, {"b.js", "var b;"}, {"empty", ""}});
  EXPECT_EQ(Unpack(archive, folder.Path("out")), ZipOk);
  EXPECT_EQ(folder.Read("out/pages/css/a.css"), "body {}");
  EXPECT_EQ(folder.Read("out/b.js"), "var b;");
  EXPECT_TRUE(folder.Contains("out/empty"));
}

TEST_F(ZipArchiveTest, FilesThatAreThereAreReplaced) {
  folder.Write("b.js", "an older and longer text");
  EXPECT_EQ(Unpack(Archive({{"b.js", "var b;"}}), folder.Path()), ZipOk);
  EXPECT_EQ(folder.Read("b.js"), "var b;");
}

TEST_F(ZipArchiveTest, FilesThatDoNotFitAreTold) {
  std::filesystem::create_symlink("/dev/full", folder.Path("b.js"));
  const std::string archive = Archive({{"a.js", "var a;"}, {"b.js", "var b;"}, {"c.js", "var c;"}});
  EXPECT_EQ(Unpack(archive, folder.Path()), ZipOk);
  EXPECT_EQ(cutShort, std::vector{folder.Path("b.js")});
  EXPECT_EQ(folder.Read("c.js"), "var c;");
}

TEST_F(ZipArchiveTest, FolderInPlaceOfAFileIsPassedOver) {
  std::filesystem::create_directory(folder.Path("b.js"));
  EXPECT_EQ(Unpack(Archive({{"b.js", "var b;"}}), folder.Path()), ZipOk);
  EXPECT_EQ(cutShort, std::vector<std::string>());
}

TEST_F(ZipArchiveTest, EntriesThatLeadOutsideArePassedOver) {
  const std::string archive =
      Archive({{"../outside", "x"}, {"/tmp/vtn-outside", "x"}, {"inside", "i"}});
  EXPECT_EQ(Unpack(archive, folder.Path("out")), ZipOk);
  EXPECT_EQ(folder.Read("out/inside"), "i");
  EXPECT_FALSE(folder.Contains("outside"));
}

TEST_F(ZipArchiveTest, UnpackingTellsThatThereIsNoArchive) {
  EXPECT_EQ(Unpack(folder.Path("missing.zip"), folder.Path("out")), ZipNoArchive);
  EXPECT_EQ(Unpack(folder.Write("text.zip", "no archive"), folder.Path()), ZipNoArchive);
}

TEST_F(ZipArchiveTest, UnpackingTellsThatTheListOfEntriesIsBroken) {
  const std::string archive = Archive({{"a.js", "var a;"}, {"b.js", "var b;"}});
  const std::string bytes = folder.Read("a.vtnx");
  const std::size_t first = Find(bytes, DirectoryEntry);
  const std::size_t second = bytes.find(DirectoryEntry, first + 1);
  ASSERT_NE(second, std::string::npos);
  for (const std::size_t entry : {first, second}) {
    std::string broken = bytes;
    broken[entry] = 'X';
    folder.Write("a.vtnx", broken);
    EXPECT_EQ(Unpack(archive, folder.Path("out")), 0x80000) << entry;
  }
  EXPECT_EQ(folder.Read("out/a.js"), "var a;");  // Which stands before the second.
  EXPECT_FALSE(folder.Contains("out/b.js"));
}

TEST_F(ZipArchiveTest, ArchiveOfNothingIsUnpacked) {
  // The end of the list alone; the library doesn't look for it at the very start of a file.
  folder.Write("a.zip", "text" + std::string("PK\x05\x06") + std::string(18, '\0'));
  EXPECT_EQ(Unpack(folder.Path("a.zip"), folder.Path("out")), ZipOk);
}

TEST_F(ZipArchiveTest, EmptyEntryIsFound) {
  const ZipEntry entry = ReadZipEntry(Archive({{"a.xml", ""}}), "a.xml");
  EXPECT_EQ(entry.status, ZipOk);
  EXPECT_EQ(entry.data, "");
}

TEST_F(ZipArchiveTest, MissingEntryIsReported) {
  const ZipEntry entry = ReadZipEntry(Archive({{"a.xml", "text"}}), "b.xml");
  EXPECT_EQ(entry.status, 1280);
  EXPECT_EQ(entry.data, "");
}

TEST_F(ZipArchiveTest, MissingArchiveIsReported) {
  EXPECT_EQ(ReadZipEntry(folder.Path("missing.vtnx"), "a.xml").status, 0x10000);
}

TEST_F(ZipArchiveTest, FolderIsNoArchive) {
  EXPECT_EQ(ReadZipEntry(folder.Path(), "a.xml").status, 0x10000);
}

TEST_F(ZipArchiveTest, OtherFileIsNoArchive) {
  const std::string path = folder.Write("a.vtnx", "<Model>plain text under a wrong name</Model>");
  EXPECT_EQ(ReadZipEntry(path, "a.xml").status, 0x10000);
}

TEST_F(ZipArchiveTest, EntryDeclaredLargerThanTheLimitIsRefused) {
  const std::string archive = Archive({{"a.xml", "text"}});
  std::string bytes = folder.Read("a.vtnx");
  const std::size_t size = Find(bytes, DirectoryEntry) + DeclaredSizeOffset;
  bytes.replace(size, 4, std::string("\x01\x00\x00\x40", 4));  // 1 GiB and a byte.
  folder.Write("a.vtnx", bytes);
  const ZipEntry entry = ReadZipEntry(archive, "a.xml");
  EXPECT_EQ(entry.status, ZipEntryRefused);
  EXPECT_EQ(entry.data, "");
}

TEST_F(ZipArchiveTest, EntryShorterThanDeclaredIsDamaged) {
  const std::string archive = Archive({{"a.xml", "text"}});
  std::string bytes = folder.Read("a.vtnx");
  const std::size_t size = Find(bytes, DirectoryEntry) + DeclaredSizeOffset;
  bytes.replace(size, 4, std::string("\x00\x00\x00\x30", 4));
  folder.Write("a.vtnx", bytes);
  const ZipEntry entry = ReadZipEntry(archive, "a.xml");
  EXPECT_EQ(entry.status, ZipEntryDamaged);
  EXPECT_EQ(entry.data, "");
}

TEST_F(ZipArchiveTest, ChangedContentIsDamaged) {
  const std::string archive = Archive({{"a.xml", "some text that is worth a check sum"}});
  std::string bytes = folder.Read("a.vtnx");
  const std::size_t data = Find(bytes, LocalHeader) + LocalHeaderSize + std::string("a.xml").size();
  bytes[data + 4] = static_cast<char>(bytes[data + 4] ^ 0x10);
  folder.Write("a.vtnx", bytes);
  EXPECT_EQ(ReadZipEntry(archive, "a.xml").status, ZipEntryDamaged);
}

TEST_F(ZipArchiveTest, ArchiveCutOffIsNone) {
  const std::string archive = Archive({{"a.xml", "some text"}});
  folder.Write("a.vtnx", folder.Read("a.vtnx").substr(0, 40));
  EXPECT_EQ(ReadZipEntry(archive, "a.xml").status, 0x10000);
}

TEST_F(ZipArchiveTest, NameThatLeadsOutsideIsRefused) {
  for (const char* name : {"../a.xml", "d/../../a.xml", "/a.xml", "..\\a.xml", "C:a.xml"}) {
    EXPECT_EQ(ReadZipEntry(Archive({{name, "text"}}), name).status, ZipEntryRefused) << name;
  }
}

TEST_F(ZipArchiveTest, PointsWithinANameAreFine) {
  EXPECT_EQ(ReadZipEntry(Archive({{"a..b.xml", "text"}}), "a..b.xml").status, ZipOk);
}

}  // namespace
}  // namespace FTS
