#include "tools/lorv/argument_fault.h"

#include <gtest/gtest.h>

#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

struct FaultCase {
  std::vector<std::string> words;
  const char* english;
  const char* chinese;
};

const FaultCase kCases[] = {
    {{"match"}, "TYPED is missing", "缺少TYPED"},
    {{"list"}, "ARCHIVE is missing", "缺少ARCHIVE"},
    {{"list", "a", "b"}, "\"b\" is one argument too many", "“b”是多余的参数"},
    {{"list", "a", "墙", "c"}, "\"墙\" is one argument too many", "“墙”是多余的参数"},
    {{"list", "--jsn", "a"},
     "there is no option \"--jsn\" here; did you mean --json?",
     "这里没有选项“--jsn”;您是不是要写--json?"},
    {{"calc", "1", "--suite_values"},
     "there is no option \"--suite_values\" here; did you mean --suite-values?",
     "这里没有选项“--suite_values”;您是不是要写--suite-values?"},
    {{"calc", "--foo"}, "there is no option \"--foo\" here", "这里没有选项“--foo”"},
    {{"list", "--jsn"},
     "there is no option \"--jsn\" here; did you mean --json?",
     "这里没有选项“--jsn”;您是不是要写--json?"},
    {{"unpack", "a", "--anyplace=1"},
     "there is no option \"--anyplace\" here; did you mean --any-place?",
     "这里没有选项“--anyplace”;您是不是要写--any-place?"},
    {{"list", "a", "--zzzzzz"}, "there is no option \"--zzzzzz\" here", "这里没有选项“--zzzzzz”"},
    {{"match", "x", "--top", "0"},
     "--top goes from 1 to 1000000, not \"0\"",
     "--top只能是1到1000000,不能是“0”"},
    {{"match", "x", "--top", "many"},
     "--top goes from 1 to 1000000, not \"many\"",
     "--top只能是1到1000000,不能是“many”"},
    {{"match", "x", "--top"}, "--top needs a value", "--top需要一个值"},
    {{"name", "check", "x", "--limit", "many"},
     "--limit is a number, not \"many\"",
     "--limit是数字,不能是“many”"},
    {{"name", "guess", "x"},
     "OPERATION is one of {check,clean,free}, not \"guess\"",
     "OPERATION只能是{check,clean,free}之一,不能是“guess”"},
    {{"work", "a", "-r", "b", "-r", "c"}, "--rules is given more than once", "--rules给了不止一次"},
    {{"calc", "1", "--json=x"}, "--json takes no value", "--json不带值"},
    {{"simplify", "a", "--rules", "max"}, "--rules goes with --suite only", "--rules只能与--suite同用"},
    {{"simplify", "a", "--any-zero", "--suite"},
     "--suite and --any-zero exclude each other",
     "--suite和--any-zero不能同用"},
};

TEST(ArgumentFault, IsReportedInTheLanguageSpoken) {
  for (const FaultCase& one : kCases) {
    const std::string& verb = one.words[0];
    const ToolRun english = RunTool(one.words);
    EXPECT_EQ(english.code, 2) << one.english;
    EXPECT_EQ(english.out, "");
    EXPECT_EQ(english.err,
              "lorv: " + std::string(one.english) + "\n`lorv " + verb + " --help` shows what it takes\n");
    std::vector<std::string> words = {"--lang", "zh"};
    words.insert(words.end(), one.words.begin(), one.words.end());
    const ToolRun chinese = RunTool(words);
    EXPECT_EQ(chinese.code, 2) << one.english;
    EXPECT_EQ(chinese.err, "lorv: " + std::string(one.chinese) + "\n用法见`lorv " + verb + " --help`\n");
  }
}

TEST(ArgumentFault, HeaderExample) {
  EXPECT_EQ(RunTool({"calc", "1", "--jsn"}).err,
            "lorv: there is no option \"--jsn\" here; did you mean --json?\n"
            "`lorv calc --help` shows what it takes\n");
}

// Behind "--" nothing is an option, and a formula may begin with a dash.
TEST(ArgumentFault, FormulasAreNoOptions) {
  EXPECT_EQ(RunTool({"calc", "-2^2"}).out, "4\n");
  EXPECT_EQ(RunTool({"calc", "--", "-j", "j=3"}).out, "-3\n");
}

}  // namespace
}  // namespace lorv::test
