#include "platform/ports/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "framework/objects/exceptions.h"
#include "platform/headless/services/headless_platform.h"
#include "platform/ports/file_parts.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

// A place to work in, on the system's disk or in memory: one suite runs on both.
class Ground {
 public:
  Ground() = default;
  Ground(const Ground&) = delete;
  Ground& operator=(const Ground&) = delete;
  virtual ~Ground() = default;
  virtual Files& Port() = 0;
  virtual CString Folder() = 0;
};

class NativeGround : public Ground {
 public:
  Files& Port() override { return NativeFiles(); }
  CString Folder() override { return CString::FromUtf8(folder_.Path().string()); }

 private:
  test::ScratchFolder folder_;
};

class HeadlessGround : public Ground {
 public:
  Files& Port() override { return machine_.files; }
  CString Folder() override { return _T("C:"); }

 private:
  HeadlessPlatform machine_;
};

template <class T>
class FilesPort : public testing::Test {
 protected:
  Files& Port() { return ground_.Port(); }
  CString At(LPCTSTR name) { return ground_.Folder() + _T("\\") + name; }
  void Put(LPCTSTR name, const std::string& bytes) {
    const auto file = Port().Open(At(name), FileUse::kCreate);
    ASSERT_TRUE(file && file->Write(bytes.data(), bytes.size()));
  }
  std::string Get(LPCTSTR name) { return Port().ReadAll(At(name)).value_or("(none)"); }

  T ground_;
};

using Grounds = testing::Types<NativeGround, HeadlessGround>;
TYPED_TEST_SUITE(FilesPort, Grounds);

TYPED_TEST(FilesPort, CreatedFileHoldsWhatWasWritten) {
  this->Put(_T("墙.txt"), "old and long");
  this->Put(_T("墙.txt"), std::string("a\0b\r\n", 5));
  EXPECT_EQ(this->Get(_T("墙.txt")), std::string("a\0b\r\n", 5));
}

TYPED_TEST(FilesPort, AppendMakesAndContinues) {
  for (const char* part : {"one", "two"}) {
    const auto file = this->Port().Open(this->At(_T("log")), FileUse::kAppend);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Write(part, 3));
    EXPECT_TRUE(file->Flush());
  }
  EXPECT_EQ(this->Get(_T("log")), "onetwo");
}

TYPED_TEST(FilesPort, ReadGivesFewerBytesAtTheEndAndSeekGoesBack) {
  this->Put(_T("f"), "abcdef");
  const auto file = this->Port().Open(this->At(_T("f")), FileUse::kRead);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->Size(), 6);
  char bytes[8] = {};
  EXPECT_EQ(file->Read(bytes, 4), 4);
  EXPECT_EQ(file->Read(bytes, 8), 2);
  EXPECT_EQ(file->Read(bytes, 8), 0);
  EXPECT_TRUE(file->Seek(1));
  EXPECT_EQ(file->Read(bytes, 2), 2);
  EXPECT_EQ(std::string(bytes, 2), "bc");
  EXPECT_FALSE(file->Write("x", 1));
}

TYPED_TEST(FilesPort, SeekWithinACreatedFileOverwrites) {
  const auto file = this->Port().Open(this->At(_T("f")), FileUse::kCreate);
  ASSERT_TRUE(file);
  EXPECT_TRUE(file->Write("abcdef", 6));
  EXPECT_TRUE(file->Seek(2));
  EXPECT_TRUE(file->Write("XY", 2));
  EXPECT_EQ(this->Get(_T("f")), "abXYef");
}

TYPED_TEST(FilesPort, WhatDoesNotOpenSaysWhy) {
  FileError error;
  EXPECT_FALSE(this->Port().Open(this->At(_T("none")), FileUse::kRead, &error));
  EXPECT_EQ(error.cause, CFileException::fileNotFound);
  EXPECT_NE(error.system, 0);
  error = {};
  EXPECT_FALSE(this->Port().Open(this->At(_T("none\\f")), FileUse::kCreate, &error));
  EXPECT_NE(error.cause, CFileException::none);
  EXPECT_FALSE(this->Port().Open(this->At(_T("")), FileUse::kRead, &error)) << "a folder";
  EXPECT_FALSE(this->Port().Open(this->At(_T("")), FileUse::kCreate));
  EXPECT_FALSE(this->Port().Open(nullptr, FileUse::kRead));
}

TYPED_TEST(FilesPort, FactsDistinguishFilesFromFolders) {
  this->Put(_T("f"), "abc");
  EXPECT_TRUE(this->Port().MakeFolder(this->At(_T("d"))));
  const auto file = this->Port().Facts(this->At(_T("f")));
  const auto folder = this->Port().Facts(this->At(_T("d")));
  ASSERT_TRUE(file && folder);
  EXPECT_FALSE(file->IsFolder());
  EXPECT_EQ(file->size, 3U);
  EXPECT_GT(file->times.write, 0);
  EXPECT_TRUE(folder->IsFolder());
  EXPECT_FALSE(this->Port().Facts(this->At(_T("none"))));
  EXPECT_TRUE(this->Port().Exists(this->At(_T("d"))));
  EXPECT_FALSE(this->Port().Exists(this->At(_T("none"))));
}

TYPED_TEST(FilesPort, ReadOnlyIsSetAndTakenBack) {
  this->Put(_T("f"), "abc");
  EXPECT_TRUE(this->Port().SetAttributes(this->At(_T("f")), kAttributeReadOnly));
  EXPECT_NE(this->Port().Facts(this->At(_T("f")))->attributes & kAttributeReadOnly, 0U);
  EXPECT_TRUE(this->Port().SetAttributes(this->At(_T("f")), kAttributeNormal));
  EXPECT_EQ(this->Port().Facts(this->At(_T("f")))->attributes & kAttributeReadOnly, 0U);
  EXPECT_FALSE(this->Port().SetAttributes(this->At(_T("none")), kAttributeNormal));
}

TYPED_TEST(FilesPort, TimesAreSetAndZeroLeavesThem) {
  constexpr std::int64_t kWrite = 133'500'000'000'000'000;  // 2024
  constexpr std::int64_t kAccess = kWrite + 20'000'000;
  this->Put(_T("f"), "abc");
  EXPECT_TRUE(this->Port().SetTimes(this->At(_T("f")), {kAccess, 0, kWrite}));
  EXPECT_EQ(this->Port().Facts(this->At(_T("f")))->times.write, kWrite);
  EXPECT_EQ(this->Port().Facts(this->At(_T("f")))->times.access, kAccess);
  EXPECT_TRUE(this->Port().SetTimes(this->At(_T("f")), {kWrite, 0, 0}));
  EXPECT_EQ(this->Port().Facts(this->At(_T("f")))->times.write, kWrite);
  EXPECT_FALSE(this->Port().SetTimes(this->At(_T("none")), {kAccess, 0, kWrite}));
}

TYPED_TEST(FilesPort, RemoveTakesFilesOnly) {
  this->Put(_T("f"), "abc");
  EXPECT_TRUE(this->Port().MakeFolder(this->At(_T("d"))));
  EXPECT_TRUE(this->Port().Remove(this->At(_T("f"))));
  EXPECT_FALSE(this->Port().Remove(this->At(_T("f"))));
  EXPECT_FALSE(this->Port().Remove(this->At(_T("d"))));
  EXPECT_TRUE(this->Port().Exists(this->At(_T("d"))));
}

TYPED_TEST(FilesPort, FolderIsMadeOneLevelAtATime) {
  EXPECT_FALSE(this->Port().MakeFolder(this->At(_T("a\\b"))));
  EXPECT_TRUE(this->Port().MakeFolder(this->At(_T("a"))));
  EXPECT_FALSE(this->Port().MakeFolder(this->At(_T("a"))));
  EXPECT_TRUE(this->Port().MakeFolder(this->At(_T("a/b"))));
  EXPECT_TRUE(this->Port().Exists(this->At(_T("a\\b"))));
}

TYPED_TEST(FilesPort, ReplaceTakesTheOthersPlace) {
  this->Put(_T("new"), "fresh");
  this->Put(_T("old"), "stale");
  EXPECT_TRUE(this->Port().Replace(this->At(_T("new")), this->At(_T("old"))));
  EXPECT_EQ(this->Get(_T("old")), "fresh");
  EXPECT_FALSE(this->Port().Exists(this->At(_T("new"))));
  EXPECT_FALSE(this->Port().Replace(this->At(_T("new")), this->At(_T("old"))));
  EXPECT_EQ(this->Get(_T("old")), "fresh");
}

TYPED_TEST(FilesPort, ReadOnlyFilesStayAsTheyAre) {
  this->Put(_T("f"), "mine");
  this->Put(_T("new"), "fresh");
  ASSERT_TRUE(this->Port().SetAttributes(this->At(_T("f")), kAttributeReadOnly));
  EXPECT_FALSE(this->Port().Remove(this->At(_T("f"))));
  EXPECT_FALSE(this->Port().Replace(this->At(_T("new")), this->At(_T("f"))));
  EXPECT_FALSE(this->Port().WriteWhole(this->At(_T("f")), "fresh"));
  for (const FileUse use : {FileUse::kCreate, FileUse::kAppend, FileUse::kCreateNew}) {
    EXPECT_FALSE(this->Port().Open(this->At(_T("f")), use));
  }
  EXPECT_EQ(this->Get(_T("f")), "mine");
  EXPECT_EQ(this->Get(_T("new")), "fresh");
  ASSERT_TRUE(this->Port().SetAttributes(this->At(_T("f")), kAttributeNormal));
  EXPECT_TRUE(this->Port().Remove(this->At(_T("f"))));
}

TYPED_TEST(FilesPort, NewFileIsMadeOnlyWhereNothingStands) {
  FileError error;
  {
    const auto file = this->Port().Open(this->At(_T("f")), FileUse::kCreateNew, &error);
    ASSERT_TRUE(file);
    EXPECT_TRUE(file->Write("one", 3) && file->Sync());
    EXPECT_TRUE(file->SetTimes({0, 0, 133'500'000'000'000'000}));
  }
  EXPECT_EQ(this->Port().Facts(this->At(_T("f")))->times.write, 133'500'000'000'000'000);
  EXPECT_FALSE(this->Port().Open(this->At(_T("f")), FileUse::kCreateNew, &error));
  EXPECT_NE(error.cause, CFileException::none);
  EXPECT_EQ(this->Get(_T("f")), "one");
}

TYPED_TEST(FilesPort, RenameNeverReplaces) {
  this->Put(_T("new"), "fresh");
  this->Put(_T("old"), "mine");
  EXPECT_FALSE(this->Port().Rename(this->At(_T("new")), this->At(_T("old"))));
  EXPECT_EQ(this->Get(_T("old")), "mine");
  EXPECT_TRUE(this->Port().Rename(this->At(_T("new")), this->At(_T("third"))));
  EXPECT_EQ(this->Get(_T("third")), "fresh");
  EXPECT_FALSE(this->Port().Exists(this->At(_T("new"))));
}

TYPED_TEST(FilesPort, FoldersAreSyncedAndReportedWhetherTheyCanBeRead) {
  EXPECT_TRUE(this->Port().SyncFolder(this->At(_T(""))));
  EXPECT_TRUE(this->Port().CanList(this->At(_T(""))));
  EXPECT_FALSE(this->Port().CanList(this->At(_T("none"))));
  EXPECT_FALSE(this->Port().IsLink(this->At(_T(""))));
  EXPECT_EQ(Utf8(this->Port().FollowLinks(this->At(_T("none")))), Utf8(this->At(_T("none"))));
}

TYPED_TEST(FilesPort, WholeFileIsReplacedAtOnce) {
  EXPECT_TRUE(this->Port().WriteWhole(this->At(_T("f")), "one"));
  EXPECT_TRUE(this->Port().WriteWhole(this->At(_T("f")), "two"));
  EXPECT_EQ(this->Get(_T("f")), "two");
  EXPECT_EQ(this->Port().List(this->At(_T("")), _T("*")).size(), 1U) << "nothing is left beside it";
  EXPECT_FALSE(this->Port().WriteWhole(this->At(_T("none\\f")), "x"));
  EXPECT_TRUE(this->Port().MakeFolder(this->At(_T("d"))));
  EXPECT_FALSE(this->Port().WriteWhole(this->At(_T("d")), "x"));
  EXPECT_EQ(this->Port().List(this->At(_T("")), _T("*")).size(), 2U);
}

TYPED_TEST(FilesPort, ListGivesFittingNamesInOrder) {
  for (const LPCTSTR name : {_T("b.txt"), _T("A.TXT"), _T("c.csv"), _T("墙.txt")}) this->Put(name, "");
  EXPECT_TRUE(this->Port().MakeFolder(this->At(_T("d.txt"))));
  std::string names;
  for (const FoundFile& found : this->Port().List(this->At(_T("")), _T("*.txt"))) {
    names += Utf8(found.name) + (found.is_folder ? "/ " : " ");
  }
  EXPECT_EQ(names, "A.TXT b.txt d.txt/ 墙.txt ");
  EXPECT_EQ(this->Port().List(this->At(_T("")), _T("*.*")).size(), 5U);
  EXPECT_TRUE(this->Port().List(this->At(_T("none")), _T("*")).empty());
}

TEST(HeadlessFiles, WholeFileReachesTheDiskBeforeItTakesItsName) {
  HeadlessPlatform machine;
  machine.files.Put(_T("C:\\d\\f"), "old");
  ASSERT_TRUE(machine.files.WriteWhole(_T("C:\\d\\f"), "new"));
  ASSERT_EQ(machine.files.asked.size(), 4U);
  const std::string beside = Utf8(machine.files.asked[0]).substr(9);
  EXPECT_EQ(Utf8(machine.files.asked[0]), "open new " + beside);
  EXPECT_EQ(Utf8(machine.files.asked[1]), "sync " + beside);
  EXPECT_EQ(Utf8(machine.files.asked[2]), "replace C:\\d\\f by " + beside);
  EXPECT_EQ(Utf8(machine.files.asked[3]), "sync folder C:\\d\\");
}

TEST(UnfinishedNames, AreMadeByChanceInTheFolderOfTheirFile) {
  const std::string path = Utf8(UnfinishedPath(_T("C:\\a\\b.txt")));
  EXPECT_EQ(path.substr(0, 11), "C:\\a\\.lorv-");
  EXPECT_EQ(path.size(), 5 + 27U);
  EXPECT_NE(path, Utf8(UnfinishedPath(_T("C:\\a\\b.txt"))));
  EXPECT_TRUE(IsUnfinishedName(UnfinishedPath(_T("b.txt")).View()));
  for (const LPCTSTR name :
       {_T(".lorv-0123456789abcde.part"), _T(".lorv-0123456789abcdefg.part"), _T("b.part"),
        _T(".lorv-0123456789abcdeG.part"), _T("x.lorv-0123456789abcdef.part"), _T("")}) {
    EXPECT_FALSE(IsUnfinishedName(name)) << Utf8(CString(name));
  }
  EXPECT_TRUE(IsUnfinishedName(_T(".lorv-0123456789abcdef.part")));
}

TEST(FilesPattern, StarsAndQuestionMarks) {
  const struct {
    LPCTSTR name;
    LPCTSTR pattern;
    bool fits;
  } cases[] = {
      {_T("a.txt"), _T("*.txt"), true},
      {_T("a.txt"), _T("*"), true},
      {_T("readme"), _T("*.*"), true},
      {_T("a.txt"), _T("?.TXT"), true},
      {_T("ab.txt"), _T("?.txt"), false},
      {_T("aXbXc"), _T("a*X*c"), true},
      {_T("aab"), _T("*ab"), true},
      {_T("abc"), _T("ab"), false},
      {_T("ab"), _T("abc"), false},
      {_T(""), _T("*"), true},
      {_T(""), _T(""), true},
      {_T("a"), _T(""), false},
      {_T("墙.txt"), _T("?.txt"), true},
      {_T("ab"), _T("**"), true},
      {_T("a"), _T("a?"), false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FitsPattern(c.name, c.pattern), c.fits) << Utf8(c.name) << " " << Utf8(c.pattern);
  }
}

TEST(HeadlessFiles, FullDiskKeepsTheOldFile) {
  HeadlessPlatform machine;
  machine.files.Put(_T("C:\\f"), "old");
  machine.files.room_left = 2;
  EXPECT_FALSE(machine.files.WriteWhole(_T("C:\\f"), "new"));
  EXPECT_EQ(machine.files.BytesOf(_T("C:\\f")), "old");
  EXPECT_EQ(machine.files.List(_T("C:"), _T("*")).size(), 1U);
}

TEST(FileParts, TransfersGoOnUntilAllIsThere) {
  const std::string source = "abcdefghij";
  std::string got(10, '-');
  std::size_t at = 0;
  const auto three = [&](char* to, std::size_t room) -> std::int64_t {
    const std::size_t count = std::min<std::size_t>({3, room, source.size() - at});
    source.copy(to, count, at);
    at += count;
    return static_cast<std::int64_t>(count);
  };
  EXPECT_EQ(ReadInParts(got.data(), 7, three), 7);
  EXPECT_EQ(got, "abcdefg---");
  EXPECT_EQ(ReadInParts(got.data(), 10, three), 3) << "the end comes first";
  EXPECT_EQ(ReadInParts(got.data(), 10, [](char*, std::size_t) { return std::int64_t{-1}; }), -1);
  std::string written;
  const auto two = [&](const char* from, std::size_t room) -> std::int64_t {
    if (written.size() >= 6) return 0;
    written.append(from, std::min<std::size_t>(2, room));
    return static_cast<std::int64_t>(std::min<std::size_t>(2, room));
  };
  EXPECT_TRUE(WriteInParts("abcde", 5, two));
  EXPECT_EQ(written, "abcde");
  EXPECT_FALSE(WriteInParts("fgh", 3, two)) << "a full disk takes no more";
}

TEST(FileParts, AFolderListsWhatFitsInOrder) {
  FolderList list(_T("*.txt"));
  for (const auto* name : {_T("b.txt"), _T("."), _T(".."), _T("c.doc"), _T("a.TXT")})
    if (list.Wants(name)) list.Add(name, name[0] == 'b');
  const auto found = list.InOrder();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(Utf8(found[0].name), "a.TXT");
  EXPECT_EQ(Utf8(found[1].name), "b.txt");
  EXPECT_FALSE(FolderList(_T("*")).Wants(_T("..")));
}

}  // namespace
}  // namespace lorv
