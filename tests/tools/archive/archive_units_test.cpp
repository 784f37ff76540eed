#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <set>
#include <string>

#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"
#include "tests/tools/run_tool.h"
#include "tools/lorv/archive/entry_name.h"
#include "tools/lorv/archive/zip_words.h"
#include "tools/lorv/files/new_file.h"
#include "tools/lorv/screen/harmless_text.h"

namespace lorv::test {
namespace {

TEST(EntryName, LosesWhatLeadsToIt) {
  const struct {
    const char* path;
    const char* name;
  } cases[] = {
      {"../a/./b/../c.txt", "a/c.txt"},
      {"a", "a"},
      {"a/", "a"},
      {".", ""},
      {"..", ""},
      {"../..", ""},
      {"/", ""},
      {"/a//b", "a/b"},
      {"./a", "a"},
      {"a\\b", "a/b"},
      {"a/../../b", "b"},
      {"..a/b..", "..a/b.."},
      {"...", "..."},
      {"墙/運", "墙/運"},
      {"a/b/..", "a"},
      {"", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(tool::EntryNameOf(c.path), c.name) << c.path;
    EXPECT_EQ(tool::LeadsOut(tool::EntryNameOf(c.path)), *c.name == '\0') << c.path;
  }
}

TEST(EntryName, NarrowOneHasNumbersForWhatHasNoCode) {
  EXPECT_EQ(tool::NarrowEntryName("a/b.txt"), "a/b.txt");
  EXPECT_EQ(tool::NarrowEntryName("運"), "\xDF\x5C");
  EXPECT_EQ(tool::NarrowEntryName("a?b"), "a?b");
  EXPECT_EQ(tool::NarrowEntryName("😀ż"), "#U1F600#U017C");
  std::string long_name;
  for (int i = 0; i < 50; ++i) long_name += "😀";
  EXPECT_EQ(tool::NarrowEntryName(long_name), std::string(50, '_')) << "350 bytes would be too many";
  EXPECT_EQ(tool::UnicodeEntryName("a", "a"), "");
  EXPECT_EQ(tool::UnicodeEntryName("運", "\xDF\x5C"), "運");
}

TEST(EntryName, LeadsOutByEveryWay) {
  for (const char* name : {"", "/a", "../a", "a/../b", "a/..", "..", "C:/a", "c:/"}) {
    EXPECT_TRUE(tool::LeadsOut(name)) << name;
  }
  for (const char* name : {"a", "a/b", "..a", "a..", "a/...", "a:b", "c:d", ":"}) {
    EXPECT_FALSE(tool::LeadsOut(name)) << name;
  }
}

TEST(HarmlessText, ShowsWhatWouldMoveTheTerminal) {
  EXPECT_EQ(tool::Harmless("a\x1B[2Jb"), "a\\x1B[2Jb");
  EXPECT_EQ(tool::Harmless(std::string("\0\n\r\t\x7F", 5)), "\\x00\\x0A\\x0D\\x09\\x7F");
  EXPECT_EQ(tool::Harmless("\xC2\x9B\xE2\x80\xAE\xE2\x80\xA8\xD8\x9C"), "\\x9B\\u202E\\u2028\\u061C");
  EXPECT_EQ(tool::Harmless("墙 😀 ~"), "墙 😀 ~");
  EXPECT_EQ(tool::Quoted("a\nb"), "\"a\\x0Ab\"");
}

TEST(ZipWords, EachFaultHasItsOwn) {
  std::set<std::string> all;
  const int last = static_cast<int>(ZipFault::kNoMemory);
  for (int i = 0; i <= last; ++i) {
    const std::string words = tool::WordsFor(static_cast<ZipFault>(i));
    EXPECT_FALSE(words.empty()) << i;
    EXPECT_TRUE(all.insert(words).second) << words;
  }
}

// A machine in memory, for what a disk does not do on demand.
class ArchiveVerbs : public testing::Test {
 protected:
  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(ArchiveVerbs, UnreadableFoldersAndFilesAreReportedAndTheRestIsPacked) {
  machine_.files.Put(_T("p\\a.txt"), "a");
  machine_.files.Put(_T("p\\shut\\b.txt"), "b");
  machine_.files.Put(_T("p\\c.txt"), "c");
  machine_.files.unreadable.insert(_T("p\\shut"));
  machine_.files.refused.insert(_T("p/c.txt"));
  const ToolRun run = RunTool({"pack", "x.zip", "p"});
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("\"p/shut\" was not packed: the folder cannot be read"), std::string::npos)
      << run.err;
  EXPECT_NE(run.err.find("\"p/c.txt\" was not packed: it cannot be opened"), std::string::npos) << run.err;
  EXPECT_NE(RunTool({"list", "x.zip"}).out.find("p/a.txt"), std::string::npos);
}

TEST_F(ArchiveVerbs, FullDiskEndsUnpackingAndLeavesNothingHalf) {
  machine_.files.Put(_T("p\\a.txt"), std::string(1000, 'a'));
  machine_.files.Put(_T("p\\b.txt"), std::string(1000, 'b'));
  ASSERT_EQ(RunTool({"pack", "x.zip", "p/a.txt", "p/b.txt"}).code, 0);
  machine_.files.Put(_T("q\\p\\b.txt"), "mine");
  machine_.files.room_left = 1500;
  const ToolRun run = RunTool({"unpack", "x.zip", "--to", "q", "--force"});
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(run.err.find("disk is full"), std::string::npos) << run.err;
  EXPECT_EQ(machine_.files.BytesOf(_T("q\\p\\b.txt")), "mine");
  for (const FoundFile& found : machine_.files.List(_T("q\\p"), _T("*"))) {
    EXPECT_FALSE(IsUnfinishedName(found.name.View())) << Utf8(found.name);
  }
}

TEST(UnfinishedFile, IsTakenAwayByAnInterruptionUntilItHasItsName) {
  const ScratchFolder scratch;
  const auto wide = [&](const char* name) { return CString::FromUtf8((scratch.Path() / name).string()); };
  const auto count = [&] { return NativeFiles().List(wide(""), _T("*")).size(); };
  {
    tool::UnfinishedFile named(wide("a"));
    tool::UnfinishedFile half(wide("b"));
    ASSERT_TRUE(named.IsOpen() && half.IsOpen());
    EXPECT_TRUE(named.Stream().Write("x", 1) && named.Close(true));
    EXPECT_TRUE(named.TakeName(false));
    EXPECT_EQ(count(), 2U);
    half.Close(false);
    tool::RemoveUnfinishedFiles();
    EXPECT_EQ(count(), 1U);
  }
  tool::UnfinishedFile again(wide("a"));
  EXPECT_TRUE(again.Close(false) && again.SyncClosed());
  EXPECT_FALSE(again.TakeName(false)) << "something stands there";
  EXPECT_EQ(ReadBytes(scratch.Path() / "a"), "x");
  EXPECT_TRUE(again.TakeName(true));
  EXPECT_EQ(ReadBytes(scratch.Path() / "a"), "");
}

TEST(UnfinishedFile, MoreThanAreRememberedAreStillMade) {
  std::vector<std::unique_ptr<tool::UnfinishedName>> names;
  for (std::size_t i = 0; i <= tool::kMostUnfinished; ++i) {
    names.push_back(std::make_unique<tool::UnfinishedName>(_T("no/such/file")));
  }
  tool::RemoveUnfinishedFiles();
  names.clear();
  const tool::UnfinishedName one(_T("no/such/file"));
}

}  // namespace
}  // namespace lorv::test
