#include "compress/CompressFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "compress/zip/zip_reader.h"
#include "framework/objects/exceptions.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv::test {
namespace {

using NameList = std::vector<std::string>;

CString Wide(const std::string& text) {
  return CString::FromUtf8(text);
}

// A machine in memory, so that paths of any system can be used.
class CompressFilesTest : public testing::Test {
 protected:
  CompressFilesTest() {
    for (LPCTSTR folder : {_T("C:"), _T("C:\\p"), _T("D:"), _T("D:\\out"), _T("E:"), _T("E:\\t")}) {
      machine_.files.MakeFolder(folder);
    }
  }

  void Put(const char* path, const char* bytes) {
    ASSERT_TRUE(machine_.files.WriteWhole(Wide(path), bytes)) << path;
  }

  int Pack(const char* archive, const std::vector<const char*>& paths) {
    CStringArray list;
    for (const char* path : paths) list.Add(Wide(path));
    return CompressFiles(Wide(archive), list);
  }

  std::vector<std::string> Names(const char* archive) {
    const auto bytes = machine_.files.ReadAll(Wide(archive));
    std::vector<std::string> names;
    ZipReader zip;
    ZipEntry entry;
    if (!bytes || zip.Open(bytes->data(), bytes->size()) != kZipOk) return {"no archive"};
    zip.GetItem(-1, entry);
    for (int i = 0, count = entry.index; i < count; ++i) {
      zip.GetItem(i, entry);
      names.push_back(Utf8(CString(SuiteCodePage().ToText(entry.name))));
    }
    return names;
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(CompressFilesTest, EmptyListGives0AndNoArchive) {
  EXPECT_EQ(Pack("D:\\out\\p.zip", {}), 0);
  EXPECT_FALSE(machine_.files.Exists(_T("D:\\out\\p.zip")));
}

TEST_F(CompressFilesTest, EntriesStandInAFolderNamedAsTheArchive) {
  Put("C:\\p\\x.dat", "hello");
  Put("C:\\p\\墙.dat", "wall");
  EXPECT_EQ(Pack("D:\\out\\backup.zip", {"C:\\p\\x.dat", "C:\\p\\墙.dat"}), 1);
  EXPECT_EQ(Names("D:\\out\\backup.zip"), (NameList{"backup/x.dat", "backup/墙.dat"}));
}

TEST_F(CompressFilesTest, SlashesSeparateToo) {
  Put("C:\\p\\x.dat", "hello");
  EXPECT_EQ(Pack("D:/out/backup.zip", {"C:/p/x.dat"}), 1);
  EXPECT_EQ(Names("D:\\out\\backup.zip"), (NameList{"backup/x.dat"}));
}

TEST_F(CompressFilesTest, ArchiveWithoutPointGivesBareNames) {
  Put("C:\\p\\x.dat", "hello");
  EXPECT_EQ(Pack("D:\\out\\backup", {"C:\\p\\x.dat"}), 1);
  EXPECT_EQ(Names("D:\\out\\backup"), (NameList{"x.dat"}));
}

TEST_F(CompressFilesTest, PathWithoutPointIsPassedOver) {
  Put("C:\\p\\readme", "hello");
  Put("C:\\p\\x.dat", "hello");
  EXPECT_EQ(Pack("D:\\out\\b.zip", {"C:\\p\\readme", "C:\\p\\x.dat"}), 1);
  EXPECT_EQ(Names("D:\\out\\b.zip"), (NameList{"b/x.dat"}));
  EXPECT_EQ(Pack("D:\\out\\b.zip", {"C:\\p\\readme"}), 1);
  EXPECT_EQ(Names("D:\\out\\b.zip"), NameList{});
}

TEST_F(CompressFilesTest, PointInAFolderCountsAsTheExtension) {
  machine_.files.MakeFolder(_T("C:\\a.b"));
  Put("C:\\a.b\\readme", "hello");
  EXPECT_EQ(Pack("D:\\out\\b.zip", {"C:\\a.b\\readme"}), 1);
  EXPECT_EQ(Names("D:\\out\\b.zip"), (NameList{"readme.b/readme"}));
}

TEST_F(CompressFilesTest, EqualNamesMakeTwoEntries) {
  machine_.files.MakeFolder(_T("C:\\q"));
  Put("C:\\p\\x.dat", "1");
  Put("C:\\q\\x.dat", "2");
  EXPECT_EQ(Pack("D:\\out\\b.zip", {"C:\\p\\x.dat", "C:\\q\\x.dat"}), 1);
  EXPECT_EQ(Names("D:\\out\\b.zip"), (NameList{"b/x.dat", "b/x.dat"}));
}

TEST_F(CompressFilesTest, ArchiveThatCannotBeCreatedGives0) {
  Put("C:\\p\\x.dat", "hello");
  EXPECT_EQ(Pack("D:\\absent\\b.zip", {"C:\\p\\x.dat"}), 0);
}

TEST_F(CompressFilesTest, MissingFileRaisesTheFileException) {
  Put("C:\\p\\x.dat", "hello");
  try {
    Pack("D:\\out\\b.zip", {"C:\\p\\x.dat", "C:\\p\\absent.dat"});
    FAIL() << "nothing was raised";
  } catch (CFileException* error) {
    EXPECT_EQ(Utf8(error->m_strFileName), "C:\\p\\absent.dat");
    error->Delete();
  }
  EXPECT_EQ(Names("D:\\out\\b.zip"), (NameList{"b/x.dat"})) << "what came before is kept";
}

class Progress : public CImpProgress {
 public:
  std::vector<int> positions;
  void SetRange(int /*count*/) override { positions.push_back(-1); }
  void SetPos(int index) override { positions.push_back(index); }
};

TEST_F(CompressFilesTest, ProgressHearsTheIndexBeforeEachFile) {
  Put("C:\\p\\x.dat", "hello");
  Put("C:\\p\\y.dat", "hello");
  OxArray<CString, OxVector<CString>> list;
  for (const char* path : {"C:\\p\\x.dat", "no_point", "C:\\p\\y.dat"}) list.Add(Wide(path));
  Progress progress;
  EXPECT_EQ(CompressFiles(_T("D:\\out\\b.zip"), list, &progress), 1);
  EXPECT_EQ(progress.positions, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(CompressFiles(_T("D:\\out\\b.zip"), list, nullptr), 1);
  EXPECT_EQ(CompressFiles(_T("D:\\out\\c.zip"), OxArray<CString, OxVector<CString>>(), &progress), 0);
}

TEST_F(CompressFilesTest, UnpacksWhereTheFolderIsThere) {
  Put("C:\\p\\x.dat", "hello");
  machine_.files.SetAttributes(_T("C:\\p\\x.dat"), kAttributeReadOnly | kAttributeHidden);
  Pack("D:\\out\\backup.zip", {"C:\\p\\x.dat"});
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\backup.zip"), _T("E:\\t\\")), 0) << "its folder is not there";
  EXPECT_EQ(LastZipOpening(), kZipNoFile);
  machine_.files.MakeFolder(_T("E:\\t\\backup"));
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\backup.zip"), _T("E:\\t\\")), 1);
  EXPECT_EQ(machine_.files.ReadAll(_T("E:\\t\\backup\\x.dat")), "hello");
  const auto facts = machine_.files.Facts(_T("E:\\t\\backup\\x.dat"));
  EXPECT_EQ(facts->attributes & (kAttributeReadOnly | kAttributeHidden), 0U) << "files restored are normal";
}

TEST_F(CompressFilesTest, DirectoryWithoutSeparatorIsGluedToTheName) {
  Put("C:\\p\\x.dat", "hello");
  Pack("D:\\out\\backup", {"C:\\p\\x.dat"});
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\backup"), _T("E:\\t\\new")), 1);
  EXPECT_EQ(machine_.files.ReadAll(_T("E:\\t\\newx.dat")), "hello");
}

TEST_F(CompressFilesTest, UnpackingReplacesFilesThatStandThere) {
  Put("C:\\p\\x.dat", "hello");
  Put("E:\\t\\x.dat", "something longer that stood there");
  Pack("D:\\out\\backup", {"C:\\p\\x.dat"});
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\backup"), _T("E:\\t\\")), 1);
  EXPECT_EQ(machine_.files.ReadAll(_T("E:\\t\\x.dat")), "hello");
}

TEST_F(CompressFilesTest, NoArchiveGives0) {
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\absent.zip"), _T("E:\\t\\")), 0);
  Put("D:\\out\\text.zip", "this is no archive");
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\text.zip"), _T("E:\\t\\")), 0);
}

TEST_F(CompressFilesTest, ReadOnlyFileStaysAndGives0) {
  Put("C:\\p\\x.dat", "hello");
  Put("E:\\t\\x.dat", "mine");
  machine_.files.SetAttributes(_T("E:\\t\\x.dat"), kAttributeReadOnly);
  Pack("D:\\out\\backup", {"C:\\p\\x.dat"});
  EXPECT_EQ(DecompressFiles(_T("D:\\out\\backup"), _T("E:\\t\\")), 0);
  EXPECT_EQ(LastZipOpening(), kZipNoFile);
  EXPECT_EQ(machine_.files.ReadAll(_T("E:\\t\\x.dat")), "mine");
  EXPECT_EQ(machine_.files.Facts(_T("E:\\t\\x.dat"))->attributes, kAttributeReadOnly);
}

// On whatever system this runs, and by its administrator too.
TEST(CompressFilesOnDisk, ReadOnlyFileStaysAndGives0) {
  const ScratchFolder scratch;
  WriteBytes(scratch.Path() / "x.dat", "hello");
  std::filesystem::create_directories(scratch.Path() / "out" / "proj");
  const auto target = scratch.Path() / "out" / "proj" / "x.dat";
  WriteBytes(target, "mine");
  const CString wide = Wide(target.string());
  ASSERT_TRUE(NativeFiles().SetAttributes(wide, kAttributeReadOnly));
  CStringArray list;
  list.Add(Wide((scratch.Path() / "x.dat").string()));
  const CString archive = Wide((scratch.Path() / "proj.zip").string());
  ASSERT_EQ(CompressFiles(archive, list), 1);
  const CString out = Wide((scratch.Path() / "out").string()) + _T("/");
  EXPECT_EQ(DecompressFiles(archive, out), 0);
  EXPECT_EQ(LastZipOpening(), kZipNoFile);
  EXPECT_EQ(ReadBytes(target), "mine");
  ASSERT_TRUE(NativeFiles().SetAttributes(wide, kAttributeNormal));
  EXPECT_EQ(DecompressFiles(archive, out), 1);
  EXPECT_EQ(ReadBytes(target), "hello");
}

TEST(CompressFilesOnDisk, FilesComeBackWithContentsAndTimes) {
  const ScratchFolder scratch;
  namespace fs = std::filesystem;
  WriteBytes(scratch.Path() / "x.dat", "hello");
  WriteBytes(scratch.Path() / "a.zip", "stored");
  fs::create_directories(scratch.Path() / "out" / "proj");
  CStringArray list;
  list.Add(Wide((scratch.Path() / "x.dat").string()));
  list.Add(Wide((scratch.Path() / "a.zip").string()));
  const CString archive = Wide((scratch.Path() / "proj.zip").string());
  EXPECT_EQ(CompressFiles(archive, list), 1);
  EXPECT_EQ(DecompressFiles(archive, Wide((scratch.Path() / "out").string()) + _T("/")), 1);
  EXPECT_EQ(ReadBytes(scratch.Path() / "out" / "proj" / "x.dat"), "hello");
  EXPECT_EQ(ReadBytes(scratch.Path() / "out" / "proj" / "a.zip"), "stored");
  const auto before = NativeFiles().Facts(list.GetAt(0))->times.write / 10000000;
  const auto after =
      NativeFiles().Facts(Wide((scratch.Path() / "out/proj/x.dat").string()))->times.write / 10000000;
  EXPECT_EQ(before, after);
}

}  // namespace
}  // namespace lorv::test
