#include <gtest/gtest.h>

#include "platform/headless/services/headless_platform.h"
#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

// What the verbs for archives and single files print for programs, over files in memory.
class ArchiveJson : public testing::Test {
 protected:
  ArchiveJson() {
    machine_.files.Put(_T("p\\a.txt"), std::string(1000, 'a'));
    machine_.files.Put(_T("p\\b.txt"), "b");
  }

  HeadlessPlatform machine_;
  ScopedPlatform scope_{machine_.Ports()};
};

bool Has(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

TEST_F(ArchiveJson, PackReportsWhatWentInAndWhatDidNot) {
  const ToolRun whole = RunTool({"pack", "-j", "x.zip", "p/a.txt", "p/b.txt"});
  EXPECT_EQ(whole.code, 0);
  EXPECT_EQ(whole.out, "{\n  \"archive\": \"x.zip\",\n  \"entries\": 2,\n  \"left_out\": []\n}\n");
  EXPECT_EQ(whole.err, "");
  machine_.files.refused.insert(_T("p/b.txt"));
  const ToolRun part = RunTool({"pack", "--json", "--force", "x.zip", "p/a.txt", "p/b.txt"});
  EXPECT_EQ(part.code, 1);
  EXPECT_TRUE(Has(part.out, "\"entries\": 1")) << part.out;
  EXPECT_TRUE(Has(part.out, "\"name\": \"p/b.txt\",\n      \"why\": \"it cannot be opened\"")) << part.out;
  EXPECT_EQ(part.err, "");
}

TEST_F(ArchiveJson, PackRefusesTwoThingsOnStandardOutput) {
  const ToolRun run = RunTool({"pack", "--json", "-", "p/a.txt"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "lorv: --json and an archive cannot both go to standard output\n");
  EXPECT_EQ(RunTool({"squeeze", "--json", "p/a.txt", "--out", "-"}).code, 2);
}

TEST_F(ArchiveJson, ListReportsSizesTimesAndFaults) {
  ASSERT_EQ(RunTool({"pack", "x.zip", "p/a.txt"}).code, 0);
  const ToolRun run = RunTool({"list", "--json", "x.zip"});
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(Has(run.out, "\"name\": \"p/a.txt\",\n    \"size\": 1000,\n    \"packed\": ")) << run.out;
  EXPECT_TRUE(Has(run.out, "\"fault\": null")) << run.out;
}

TEST_F(ArchiveJson, TestNamesWhatIsDamaged) {
  ASSERT_EQ(RunTool({"pack", "x.zip", "p/a.txt", "p/b.txt"}).code, 0);
  EXPECT_EQ(RunTool({"test", "--json", "x.zip"}).out,
            "{\n  \"archive\": \"x.zip\",\n  \"entries\": 2,\n  \"damaged\": []\n}\n");
  EXPECT_EQ(RunTool({"test", "x.zip"}).out, "2 entries, 0 damaged\n");
  std::string bytes = machine_.files.BytesOf(_T("x.zip"));
  const std::size_t last = bytes.rfind("PK\x01\x02") + 16;  // the sum of the last entry in the directory
  bytes[last] = static_cast<char>(~bytes[last]);
  machine_.files.Put(_T("x.zip"), bytes);
  const ToolRun run = RunTool({"test", "--json", "x.zip"});
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.out, "\"name\": \"p/b.txt\",\n      \"why\": \"its data are damaged")) << run.out;
  EXPECT_FALSE(Has(run.out, "p/a.txt")) << run.out;
  EXPECT_TRUE(Has(RunTool({"test", "x.zip", "--lang", "zh"}).out, "2个条目,1个损坏\n"));
}

TEST_F(ArchiveJson, UnpackReportsWhatWasLeftOut) {
  ASSERT_EQ(RunTool({"pack", "x.zip", "p/a.txt", "p/b.txt"}).code, 0);
  const ToolRun whole = RunTool({"unpack", "-j", "x.zip", "-t", "q"});
  EXPECT_EQ(whole.out,
            "{\n  \"archive\": \"x.zip\",\n  \"folder\": \"q\",\n  \"entries\": 2,\n  \"left_out\": []\n}\n");
  std::string bytes = machine_.files.BytesOf(_T("x.zip"));
  const std::size_t last = bytes.rfind("PK\x01\x02") + 16;  // the sum of the last entry in the directory
  bytes[last] = static_cast<char>(~bytes[last]);
  machine_.files.Put(_T("x.zip"), bytes);
  const ToolRun run = RunTool({"unpack", "--json", "x.zip", "--to", "r"});
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.out, "\"name\": \"p/b.txt\"")) << run.out;
  EXPECT_EQ(machine_.files.BytesOf(_T("r\\p\\a.txt")), std::string(1000, 'a'));
}

TEST_F(ArchiveJson, SqueezeAndExpandReportBothSizes) {
  const ToolRun squeezed = RunTool({"squeeze", "--json", "p/a.txt"});
  EXPECT_EQ(squeezed.code, 0);
  EXPECT_TRUE(Has(squeezed.out, "\"size\": 1000,\n  \"made\": \"p/a.txt.lzari\",\n  \"made_size\": "))
      << squeezed.out;
  const ToolRun expanded = RunTool({"expand", "-j", "p/a.txt.lzari", "-o", "c"});
  EXPECT_TRUE(Has(expanded.out, "\"made\": \"c\",\n  \"made_size\": 1000")) << expanded.out;
}

// Faults of archives in the language of the user.
TEST_F(ArchiveJson, FaultsAreReportedInChinese) {
  machine_.files.Put(_T("no.zip"), "this is no archive");
  EXPECT_EQ(RunTool({"list", "no.zip", "--lang", "zh"}).err,
            "lorv: \"no.zip\": 这不是ZIP压缩包,或结尾不完整\n");
  EXPECT_EQ(RunTool({"--lang=zh", "pack", "no.zip", "p/a.txt"}).err,
            "lorv: \"no.zip\"已经存在;--force可替换\n");
  EXPECT_EQ(RunTool({"--lang=zh", "expand", "p/b.txt"}).err, "lorv: 请给出要生成的文件:--out FILE\n");
}

}  // namespace
}  // namespace lorv::test
