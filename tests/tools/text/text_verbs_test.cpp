#include <gtest/gtest.h>

#include "platform/headless/services/headless_platform.h"
#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

struct VerbCase {
  std::vector<std::string> words;
  int code;
  std::string out;
  std::string err;
};

void Expect(const std::vector<VerbCase>& cases) {
  for (const VerbCase& c : cases) {
    const ToolRun run = RunTool(c.words);
    std::string line;
    for (const std::string& word : c.words) line += word + " ";
    EXPECT_EQ(run.code, c.code) << line << run.err;
    EXPECT_EQ(run.out, c.out) << line;
    EXPECT_EQ(run.err, c.err) << line;
  }
}

TEST(SimplifyVerb, RunsTheRulesThatAreNamed) {
  Expect({
      {{"simplify", "--suite", "a*0+b"}, 0, "b\n", ""},
      {{"simplify", "--suite", "max(1,2)+0*C", "--rules", "max"}, 0, "2+0*c\n", ""},
      {{"simplify", "--suite", "min(1,2)+max(1,2)+iif(1,2,3)", "--rules", "min,iif"},
       0,
       "1+max(1,2)+2\n",
       ""},
      {{"simplify", "--suite", "max(墙高,2)", "--value", "墙高=3"}, 0, "墙高\n", ""},
      {{"simplify", "--suite", "-2*a"}, 0, "-2*a\n", ""},
      {{"simplify", "--suite", "a/0"}, 1, "", "lorv: the formula divides by 0\n"},
      {{"simplify", "--suite", ""}, 1, "", "lorv: the formula is empty\n"},
      {{"simplify", "--suite", "max(-1,iif(1,2))"},
       1,
       "",
       "lorv: an iif inside another call has not three arguments\n"},
      {{"simplify", "--suite", "a", "--value", "x"}, 2, "", "lorv: \"x\" is no NAME=NUMBER\n"},
      {{"simplify", "--suite", "a", "--value", "x=1y"}, 2, "", "lorv: \"x=1y\" is no NAME=NUMBER\n"},
  });
  EXPECT_EQ(RunTool({"simplify", "--suite", "a", "--rules", "sum"}).code, 2);
}

TEST(SimplifyVerb, KeepsWhatTheFormulaGives) {
  Expect({
      {{"simplify", "1*A+IIF(2>1,B,C/0)"}, 0, "A+(B)\n", ""},
      {{"simplify", "a*0+b"}, 0, "a*0+b\n", ""},
      {{"simplify", "--any-zero", "a*0+b"}, 0, "b\n", ""},
      {{"simplify", "sin(a*0)"}, 0, "sin(a*0)\n", ""},
      {{"simplify", "--json", "1*A"},
       0,
       "{\n  \"formula\": \"1*A\",\n  \"simplified\": \"A\",\n  \"by\": \"safe\"\n}\n",
       ""},
  });
  EXPECT_EQ(RunTool({"simplify", "--suite", "--any-zero", "a"}).code, 2);
  EXPECT_EQ(RunTool({"simplify", "--rules", "max", "a"}).code, 2);
}

TEST(CleanVerb, RunsEachOperation) {
  Expect({
      {{"clean", "numbers", "a+0+b"}, 0, "a+b\n", ""},
      {{"clean", "OptimizeNumExpr", "a+0"}, 0, "a\n", ""},
      {{"clean", "numbers", ""}, 0, "\n", ""},
      {{"clean", "terms", "a*0+b"}, 0, "a+b\n", ""},
      {{"clean", "terms", "10+a"}, 0, "1+a\n", ""},
      {{"clean", "signs", "a*+b"}, 0, "a+b\n", ""},
      {{"clean", "params", "a:1+1;b:H*2", "--values", "H:3"}, 0, "a:2;b:6\n", ""},
      {{"clean", "params", ""}, 2, "", "lorv: the list of parameters is empty\n"},
  });
  EXPECT_EQ(RunTool({"clean", "all", "a"}).code, 2);
}

TEST(MatchVerb, RanksTheLinesOfTheInput) {
  const std::string lines = "LL1\r\nkl2\n\n板\nKL1\n";
  EXPECT_EQ(RunTool({"match", "KL1"}, lines).out, "8\tKL1\n4\tkl2\n2\tLL1\n");
  EXPECT_EQ(RunTool({"match", "KL1", "--top", "1"}, lines).out, "8\tKL1\n");
  EXPECT_EQ(RunTool({"match", "KL1", "--sum", "--top", "1"}, lines).out, "14\tKL1\n");
  const ToolRun none = RunTool({"match", "柱"}, lines);
  EXPECT_EQ(none.code, 1);
  EXPECT_EQ(none.out, "");
}

TEST(MatchVerb, ReadsAFile) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  machine.files.Put(_T("C:\\names.txt"), "框架梁\n框架柱\n");
  EXPECT_EQ(RunTool({"match", "柱", "--file", "C:\\names.txt"}).out, "5\t框架柱\n");
  const ToolRun missing = RunTool({"match", "柱", "--file", "C:\\none.txt"});
  EXPECT_EQ(missing.code, 2);
  EXPECT_EQ(missing.err, "lorv: cannot read \"C:\\none.txt\"\n");
}

TEST(NameVerb, ChecksCleansAndProposes) {
  Expect({
      {{"name", "check", "KL1"}, 0, "正确表达式\n", ""},
      {{"name", "check", "KL 1"}, 1, "包含空格\n", ""},
      {{"name", "check", "KL 1", "--blanks"}, 0, "正确表达式\n", ""},
      {{"name", "check", "KL%1"}, 1, "包含非法字符\n", ""},
      {{"name", "check", "KL1", "--limit", "3"}, 1, "表达式太长\n", ""},
      {{"name", "clean", "a b'c/d"}, 0, "a bcd\n", ""},
      {{"name", "free", "KL"}, 0, "KL\n", ""},
      {{"name", "free", "KL", "--number"}, 0, "KL1\n", ""},
      {{"name", "free", "KL", "KL", "KL1", "KL2"}, 0, "KL3\n", ""},
      {{"name", "clean", "a", "b"}, 2, "", "lorv: clean takes one text; \"b\" is one too many\n"},
  });
}

TEST(PromptsVerb, ListsAndLooksUpInBothLanguages) {
  const ToolRun tables = RunTool({"prompts"});
  EXPECT_EQ(tables.code, 0);
  EXPECT_NE(tables.out.find("classes\t112\tCObjClassInf::GetInf\n"), std::string::npos) << tables.out;
  const ToolRun shapes = RunTool({"prompts", "shapes"});
  EXPECT_EQ(shapes.out,
            "0\t矩形\tRectangle\n1\t圆形\tCircle\n2\tL形\tLShape\n3\tT形\tTShape\n4\t十字形\tCrossShape\n"
            "5\tZ形\tZShape\n");
  Expect({
      {{"prompts", "classes", "墙", "--english"}, 0, "Wall\n", ""},
      {{"prompts", "classes", "墙"}, 0, "墙\n", ""},
      {{"prompts", "classes", "106"}, 0, "砼结构\n", ""},
      {{"prompts", "switches", "1", "--english"}, 0, "\\tHide Axis\n", ""},
      {{"prompts", "switches", "轴网隐藏\\n", "--english"}, 0, "\\tHide Axis\n", ""},
      {{"prompts", "classes", "nothing"}, 1, "", "lorv: the table has no \"nothing\"\n"},
      {{"prompts", "classes", "112"}, 2, "", "lorv: the table has the rows 0 to 111, not 112\n"},
      {{"prompts", "walls"}, 2, "", "lorv: there is no table \"walls\"; `lorv prompts` lists them\n"},
  });
}

TEST(LogVerb, WritesLinesOfTheCommandOrTheInput) {
  HeadlessPlatform machine;
  const ScopedPlatform scope(machine.Ports());
  EXPECT_EQ(RunTool({"log", "C:\\checks", "a.txt", "KL1: 墙", "two"}).code, 0);
  EXPECT_EQ(machine.files.BytesOf(_T("C:\\checks\\a.txt")), "KL1: \xC7\xBD\r\ntwo\r\n");
  EXPECT_EQ(RunTool({"log", "C:\\checks", "b.txt", "--open"}, "one\n").code, 0);
  EXPECT_EQ(machine.files.BytesOf(_T("C:\\checks\\b.txt")), "one\r\n");
  EXPECT_EQ(machine.shell.started.size(), 1U);
  const ToolRun empty = RunTool({"log", "C:\\checks", "c.txt"});
  EXPECT_EQ(empty.code, 2);
  EXPECT_EQ(empty.err, "lorv: there are no lines to write\n");
  const ToolRun refused = RunTool({"log", "C:\\no\\such", "c.txt", "x"});
  EXPECT_EQ(refused.code, 2);
  EXPECT_EQ(refused.err, "lorv: cannot write \"c.txt\" in \"C:\\no\\such\"\n");
}

TEST(TextVerbs, AnswerInJson) {
  const struct {
    std::vector<std::string> words;
    const char* piece;
  } rows[] = {{{"clean", "terms", "a*0+b", "--json"}, "\"result\": \"a+b\""},
              {{"name", "free", "KL", "KL", "--json"}, "\"result\": \"KL1\""},
              {{"name", "check", "KL1", "--json"}, "\"finding\": "},
              {{"prompts", "--json"}, "\"function\": "},
              {{"functions", "abs", "--json"}, "\"name\": \"ABS\""}};
  for (const auto& row : rows) {
    const ToolRun run = RunTool(row.words);
    EXPECT_EQ(run.code, 0) << row.words[0];
    EXPECT_NE(run.out.find(row.piece), std::string::npos) << run.out;
  }
  EXPECT_NE(RunTool({"match", "KL", "--json"}, "KL1\n").out.find("\"text\": \"KL1\""), std::string::npos);
}

}  // namespace
}  // namespace lorv::test
