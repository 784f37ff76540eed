#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "comm/AdLorvComm.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Texts = std::vector<std::string>;

constexpr LPCTSTR kFile = _T("C:\\list.txt");

class TextFile : public testing::Test {
 protected:
  static CStringArray Make(const Texts& texts) {
    CStringArray list;
    for (const std::string& text : texts) list.Add(CString::FromUtf8(text));
    return list;
  }
  static Texts Read(const CStringArray& list) {
    Texts texts;
    for (const CString& text : list) texts.push_back(Utf8(text));
    return texts;
  }
  // Reads the file into a list that holds something; nothing stays in it but what was read.
  bool ReadBack(Texts& texts, bool skip_comments = false) {
    CStringArray list = Make({"old"});
    const bool result = CAdLorvComm::ReadTextFileToStringArray(kFile, list, skip_comments);
    texts = Read(list);
    return result;
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

TEST_F(TextFile, LinesAreWrittenInTheCodePageWithBothLineEnds) {
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make({"墙", "", "a☃"}), false));
  EXPECT_EQ(machine_.files.BytesOf(kFile), "\xC7\xBD\r\n\r\na?\r\n");
}

TEST_F(TextFile, EmptyListMakesAnEmptyFile) {
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make({}), false));
  EXPECT_EQ(machine_.files.BytesOf(kFile), "");
}

TEST_F(TextFile, KeepLeavesAnExistingFile) {
  machine_.files.Put(kFile, "old");
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make({"new"}), true));
  EXPECT_EQ(machine_.files.BytesOf(kFile), "old");
  EXPECT_TRUE(machine_.files.asked.empty());
}

TEST_F(TextFile, KeepWithoutAFileWrites) {
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make({"new"}), true));
  EXPECT_EQ(machine_.files.BytesOf(kFile), "new\r\n");
}

TEST_F(TextFile, ExistingFileIsRemovedFirst) {
  machine_.files.Put(kFile, "old, and longer than the new one");
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make({"new"}), false));
  EXPECT_EQ(machine_.files.BytesOf(kFile), "new\r\n");
  ASSERT_EQ(machine_.files.asked.size(), 2U);
  EXPECT_EQ(Utf8(machine_.files.asked[0]), "remove C:\\list.txt");
  EXPECT_EQ(Utf8(machine_.files.asked[1]), "open create C:\\list.txt");
}

TEST_F(TextFile, WhatCannotBeWrittenIsFalse) {
  machine_.files.refused.insert(kFile);
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make({"new"}), false));
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(_T("C:\\none\\list.txt"), Make({"new"}), false));
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(_T("C:"), Make({"new"}), false));
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(nullptr, Make({"new"}), false));
  machine_.files.room_left = 3;
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(_T("C:\\full.txt"), Make({"new"}), false));
}

TEST_F(TextFile, LinesAreTrimmedAndEmptyOnesDropped) {
  machine_.files.Put(kFile, " a b \r\n\r\n\t\xC7\xBD\t\n  \n//c\n ;d\ne");
  Texts texts;
  EXPECT_TRUE(ReadBack(texts));
  EXPECT_EQ(texts, (Texts{"a b", "墙", "//c", ";d", "e"}));
}

TEST_F(TextFile, CommentsAreSkippedWhenAsked) {
  machine_.files.Put(kFile, "// c\n  ; d\na // b\n/ e\n;\n//\n");
  Texts texts;
  EXPECT_TRUE(ReadBack(texts, true));
  EXPECT_EQ(texts, (Texts{"a // b", "/ e"}));
}

TEST_F(TextFile, MissingFileLeavesTheList) {
  Texts texts;
  EXPECT_FALSE(ReadBack(texts));
  EXPECT_EQ(texts, Texts{"old"});
}

TEST_F(TextFile, EmptyFileGivesAnEmptyList) {
  machine_.files.Put(kFile, "");
  Texts texts;
  EXPECT_TRUE(ReadBack(texts));
  EXPECT_EQ(texts, Texts{});
}

TEST_F(TextFile, LineOf1022BytesFits) {
  for (const char* end : {"", "\n", "\r\n", "\nlast\n"}) {
    for (const std::size_t length : {1021U, 1022U}) {
      machine_.files.Put(kFile, "first\n" + std::string(length, 'x') + end);
      Texts texts;
      EXPECT_TRUE(ReadBack(texts)) << length;
      EXPECT_EQ(texts.at(1).size(), length);
    }
  }
}

TEST_F(TextFile, LineOf1023BytesIsRefusedWithAnEmptyList) {
  for (const char* end : {"", "\n", "\r\n", "\nlast\n"}) {
    for (const std::size_t length : {1023U, 5000U}) {
      machine_.files.Put(kFile, "first\n" + std::string(length, 'x') + end);
      Texts texts;
      EXPECT_FALSE(ReadBack(texts)) << length;
      EXPECT_EQ(texts, Texts{});
    }
  }
}

TEST_F(TextFile, LineEndsAtItsFirstNullByte) {
  machine_.files.Put(kFile, std::string("a\0b\nc\n", 6));
  Texts texts;
  EXPECT_TRUE(ReadBack(texts));
  EXPECT_EQ(texts, (Texts{"a", "c"}));
}

TEST_F(TextFile, WhatWasWrittenIsReadBack) {
  const Texts texts = {"墙厚 240", "KL12(3)", "a;b", "，。"};
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(kFile, Make(texts), false));
  Texts back;
  EXPECT_TRUE(ReadBack(back));
  EXPECT_EQ(back, texts);
}

TEST(TextFileOnDisk, IsWrittenAndReadBack) {
  const test::ScratchFolder folder;
  const CString path = CString::FromUtf8(folder.Path().string()) + _T("\\清单.txt");
  CStringArray list;
  list.Add(_T("墙"));
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(path, list, true));
  EXPECT_FALSE(CAdLorvComm::WriteStringArrayToTextFile(path, list, true));
  list.Add(_T("梁"));
  EXPECT_TRUE(CAdLorvComm::WriteStringArrayToTextFile(path, list, false));
  CStringArray back;
  EXPECT_TRUE(CAdLorvComm::ReadTextFileToStringArray(path, back, true));
  ASSERT_EQ(back.GetSize(), 2);
  EXPECT_EQ(Utf8(back.GetAt(1)), "梁");
}

}  // namespace
}  // namespace lorv
