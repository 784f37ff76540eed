#include <gtest/gtest.h>

#include "tests/tools/run_tool.h"

namespace lorv::test {
namespace {

struct Case {
  std::vector<std::string> words;
  int code;
  const char* out;
  const char* err;
};

void Expect(const Case& one) {
  const ToolRun run = RunTool(one.words);
  std::string words;
  for (const std::string& word : one.words) words += word + " | ";
  EXPECT_EQ(run.code, one.code) << words;
  EXPECT_EQ(run.out, one.out) << words;
  EXPECT_EQ(run.err, one.err) << words;
}

TEST(CalcVerb, PrintsTheNumber) {
  const Case cases[] = {
      {{"calc", "1+2*3"}, 0, "7\n", ""},
      {{"calc", "L*B*H", "L=3.6", "B=0.24", "H=2.8"}, 0, "2.4192\n", ""},
      {{"calc", "墙长*墙高-洞口", "墙长=6", "墙高=3", "洞口=2.1"}, 0, "15.9\n", ""},
      {{"calc", "-2^2"}, 0, "4\n", ""},
      {{"calc", "-A", "A=-3"}, 0, "3\n", ""},
      {{"calc", "0.1+0.2"}, 0, "0.3\n", ""},
      {{"calc", "a+B", "A=1", "b=2"}, 0, "3\n", ""},
      {{"calc", "FIND(clmc,'砖')>0", "CLMC='24砖墙'"}, 0, "1\n", ""},
      {{"calc", "(1)"}, 0, "1\n", ""},
      {{"calc", "--", "-1"}, 0, "-1\n", ""},
      {{"calc", "12"}, 0, "12\n", ""},
      {{"calc", "A*L", "A=0.0004", "L=1000"}, 0, "0.4\n", ""},
      {{"calc", "W", "W=0.334"}, 0, "0.334\n", ""},
      {{"calc", "abc+abc", "abc=1"}, 0, "2\n", ""},
  };
  for (const Case& one : cases) Expect(one);
}

TEST(CalcVerb, MarksTheFaultUnderTheFormulaAsTyped) {
  const Case cases[] = {
      {{"calc", "A <= 3 AND (B", "A=1", "B=2"},
       1,
       "",
       "lorv: '(' is never closed\n    A <= 3 AND (B\n               ^\n"},
      {{"calc", "墙长*+（2", "墙长=3"},
       1,
       "",
       "lorv: '（' is a full-width sign, type the plain one, (\n    墙长*+（2\n          ^^\n"},
      {{"calc", "长度+宽", "长度=2"}, 1, "", "lorv: the name '宽' is not known\n    长度+宽\n         ^^\n"},
      {{"calc", "1/0"}, 1, "", "lorv: division by zero: '0' is 0\n    1/0\n      ^\n"},
      {{"calc", "FIND(C,'x')+)", "C='abcdef'"},
       1,
       "",
       "lorv: a value is expected here, not ')'\n    FIND(C,'x')+)\n                ^\n"},
      {{"calc", ""}, 1, "", "lorv: the formula is empty\n"},
  };
  for (const Case& one : cases) Expect(one);
}

TEST(CalcVerb, NumberThatMeansSomethingElseIsReported) {
  const Case cases[] = {
      {{"calc", "SQRT(-1)"},
       1,
       "0\n",
       "lorv: the argument of 'SQRT(-1)' is outside its domain\n    SQRT(-1)\n    ^^^^^^^^\n"},
      {{"calc", "--suite-values", "abc+abc", "abc=1"},
       1,
       "1000001\n",
       "lorv: the value of abc does not reach all its places, and counts 1000000 there; write it once, or "
       "with "
       "blanks around\n    abc+abc\n    ^^^\nlorv: note: with all digits of the values it is 2: the suite "
       "works with "
       "three decimals, and with a third for what is near one\n"},
  };
  for (const Case& one : cases) Expect(one);
}

TEST(CalcVerb, SuiteValuesReportWhatTheyChange) {
  const ToolRun small = RunTool({"calc", "A*L", "A=0.0004", "L=1000", "--suite-values"});
  EXPECT_EQ(small.code, 1);
  EXPECT_EQ(small.out, "0\n");
  EXPECT_NE(small.err.find("with all digits of the values it is 0.4"), std::string::npos) << small.err;
  const ToolRun third = RunTool({"calc", "W", "W=0.3334", "--suite-values", "--json"});
  EXPECT_EQ(third.code, 0) << "less than a tenth of a per cent";
  EXPECT_NE(third.out.find("\"with_all_digits\": 0.3334"), std::string::npos) << third.out;
  EXPECT_EQ(RunTool({"calc", "W", "W=0.334", "--suite-values"}).code, 1) << "counts as a third";
  EXPECT_EQ(RunTool({"calc", "L*2", "L=1.5", "--suite-values"}).err, "");
}

TEST(CalcVerb, DoubtfulFormulasAreWarnedOf) {
  const struct {
    const char* formula;
    const char* out;
    const char* err;
  } rows[] = {
      {"ROUND(L,2)", "2\n",
       "lorv: warning: the function takes no notice of ',2'\n    ROUND(L,2)\n           ^^\n"},
      {"ROUND(L*4000000000)", "-2147483648\n",
       "lorv: warning: the number in 'ROUND(L*4000000000)' is too large to be rounded or cut: it became "
       "-2147483648\n    ROUND(L*4000000000)\n    ^^^^^^^^^^^^^^^^^^^\n"},
      {"3.4.5", "3.4\n",
       "lorv: warning: '3.4.5' has a second point: what is behind it does not count\n    3.4.5\n    ^^^^^\n"},
      {"LEN('ab')", "0\n", "lorv: warning: 'LEN('ab')' is 0 for every text\n    LEN('ab')\n    ^^^^^^^^^\n"},
      {"2PI", "3.1415926536\n",
       "lorv: warning: '2' in front of a function or PI does not count, write a * behind it\n    2PI\n    "
       "^\n"},
      {"'ab'", "0\n", "lorv: warning: the result is a text, which counts as 0\n    'ab'\n    ^^^^\n"},
  };
  for (const auto& row : rows) {
    Expect({{"calc", row.formula, "L=1.5"}, 0, row.out, row.err});
    Expect({{"calc", row.formula, "L=1.5", "--strict"}, 1, row.out, row.err});
    EXPECT_EQ(RunTool({"check", row.formula}).code, 0) << row.formula;
    EXPECT_EQ(RunTool({"check", "--strict", row.formula}).code, 1) << row.formula;
    EXPECT_NE(RunTool({"calc", row.formula, "L=1.5", "--json"}).out.find("\"warnings\": [\n"),
              std::string::npos);
  }
}

TEST(CalcVerb, NumbersThatTheResultWouldHideAreFaults) {
  Expect({{"calc", "IIF(ASIN(A)>0,1,2)", "A=2"},
          1,
          "",
          "lorv: 'ASIN(A)' is no number, or too large for one, and the result would hide it\n"
          "    IIF(ASIN(A)>0,1,2)\n        ^^^^^^^\n"});
  EXPECT_EQ(RunTool({"calc", "IIF(ASIN(A)>0,1,2)", "A=2", "--suite-values"}).code, 1);
  EXPECT_EQ(RunTool({"calc", "FIND(A,'2')", "A=2", "--strict"}).code, 1);
}

// What fails with one value and not with another is no fault of the formula.
TEST(CheckVerb, ValuesAreTriedUntilSomeFit) {
  for (const char* fine : {"ASIN(A)", "EXP(A)", "SQRT(5-A)", "1/(A-1000000)", "1/(A-B)", "ROUND(A*10000)",
                           "SQRT(0-A)", "MAX(ASIN(A),0)"}) {
    const ToolRun run = RunTool({"check", fine, "--strict"});
    EXPECT_EQ(run.code, 0) << fine << run.err;
    EXPECT_EQ(run.out, "the formula is fine\n") << fine;
  }
  for (const char* wrong : {"A/(A-A)", "SQRT(0-A^2-1)", "ASIN(2+A^2)", "MAX(1,ASIN(2))"}) {
    EXPECT_EQ(RunTool({"check", wrong}).code, 1) << wrong;
  }
}

TEST(CalcVerb, FormulasComeFromStandardInput) {
  const ToolRun run = RunTool({"calc", "-", "L=2"}, "L*2\n# remark\n\n1/0\r\nL^3\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "4\n\n8\n");
  EXPECT_EQ(run.err, "lorv: line 4: division by zero: '0' is 0\n    1/0\n      ^\n");
  const ToolRun json = RunTool({"calc", "-", "--json"}, "1+1\n2+2\n");
  EXPECT_EQ(json.out.substr(0, 1) + json.out.substr(json.out.size() - 2), "[]\n");
  const ToolRun check = RunTool({"check", "-"}, "L*2\nL*\n-\n");
  EXPECT_EQ(check.code, 1);
  EXPECT_EQ(check.out, "");
  EXPECT_NE(check.err.find("lorv: line 2: "), std::string::npos) << check.err;
  EXPECT_NE(check.err.find("lorv: line 3: "), std::string::npos) << check.err;
}

TEST(CalcVerb, ForeignFunctionsAreAnswered) {
  EXPECT_EQ(RunTool({"calc", "ln(2)"}).err,
            "lorv: the name 'ln' is not known; did you mean LOG?\n    ln(2)\n    ^^\n");
  EXPECT_EQ(RunTool({"functions", "ln"}).err, "lorv: there is no function \"ln\"; did you mean LOG?\n");
}

TEST(CalcVerb, SpeaksChinese) {
  const ToolRun run = RunTool({"calc", "(1", "--lang", "zh"});
  EXPECT_EQ(run.err, "lorv: “(”没有配对的右括号\n    (1\n    ^\n");
  EXPECT_EQ(RunTool({"calc", "(1"}).err.substr(0, 9), "lorv: '('");
  EXPECT_EQ(RunTool({"calc", "1", "--lang", "fr"}).code, 2);
}

TEST(CalcVerb, ExplainShowsNamesAndWorkedText) {
  Expect({{"calc", "--explain", "2*(墙长+B)", "墙长=6", "B=0.24", "C=1"},
          0,
          "formula  2*(墙长+B)\nnames    墙长         = 6\n         B            = 0.24\nnot used C\n"
          "worked   2*(6+0.24)\nresult   12.48\n",
          ""});
}

TEST(CalcVerb, JsonHoldsResultAndError) {
  Expect({{"calc", "--json", "A/0", "A=1"},
          1,
          "{\n  \"formula\": \"A/0\",\n  \"names\": [\n    \"A\"\n  ],\n  \"worked\": \"1/0\",\n  "
          "\"digits\": \"all\",\n  \"result\": null,\n"
          "  \"error\": {\n    \"message\": \"division by zero: '0' is 0\",\n    \"position\": 2,\n    "
          "\"length\": 1\n"
          "  },\n  \"warnings\": []\n}\n",
          ""});
}

TEST(CalcVerb, RefusesBadArguments) {
  const std::vector<std::string> bad[] = {{"calc"},
                                          {"calc", "A", "A"},
                                          {"calc", "A", "A=x"},
                                          {"calc", "A", "=1"},
                                          {"calc", "A", "A=1", "a=2"},
                                          {"calc", "L*PI", "L=2", "PI=3"},
                                          {"calc", "1", "2L=3"},
                                          {"calc", "A", "--explian"}};
  for (const auto& words : bad) {
    const ToolRun run = RunTool(words);
    EXPECT_EQ(run.code, 2) << words.back();
    EXPECT_EQ(run.out, "") << words.back();
    EXPECT_EQ(run.err.substr(0, 6), "lorv: ") << words.back();
  }
}

TEST(CalcVerb, HostileFormulasEnd) {
  const std::string deep = std::string(100000, '(') + "1" + std::string(100000, ')');
  const std::string hostile[] = {deep,
                                 std::string(100000, '1'),
                                 std::string(5000, '-') + "1",
                                 "\xED\xA0\x80",
                                 "\x01\x02",
                                 std::string(300, 'a') + "+1",
                                 "'",
                                 "|",
                                 "1e999",
                                 "0/0",
                                 "EXP(1000)"};
  for (const std::string& formula : hostile) {
    const int code = RunTool({"calc", "--", formula}).code;
    EXPECT_TRUE(code == 0 || code == 1) << formula.substr(0, 20) << " " << code;
  }
}

TEST(CheckVerb, ReportsWhetherAFormulaIsFine) {
  const Case cases[] = {
      {{"check", "2*(L+B)*H"}, 0, "the formula is fine\n", ""},
      {{"check", "墙长*墙高", "墙长", "墙高"}, 0, "the formula is fine\n", ""},
      {{"check", "墙长*墙高", "墙长"},
       1,
       "",
       "lorv: the name '墙高' is not among those allowed\n    墙长*墙高\n         ^^^^\n"},
      {{"check", "A/(A-A)"}, 1, "", "lorv: division by zero: '(A-A)' is 0\n    A/(A-A)\n      ^^^^^\n"},
      {{"check", "-A"}, 0, "the formula is fine\n", ""},
      {{"check", "A", "1x"}, 2, "", "lorv: \"1x\" cannot be a name in a formula\n"},
      {{"check", "--json", "1+"},
       1,
       "{\n  \"formula\": \"1+\",\n  \"valid\": false,\n  \"error\": {\n    \"message\": \"the formula ends "
       "where a "
       "value is expected\",\n    \"position\": 2,\n    \"length\": 0\n  },\n  \"warnings\": []\n}\n",
       ""},
  };
  for (const Case& one : cases) Expect(one);
}

TEST(VarsVerb, ListsNames) {
  const Case cases[] = {
      {{"vars", "2*(L+B)*H-门洞+l"}, 0, "L\nB\nH\n门洞\n", ""},
      {{"vars", "--all", "A+B*A"}, 0, "A\nB\nA\n", ""},
      {{"vars", "1+2"}, 0, "", ""},
      {{"vars", "A+(B"}, 1, "", "lorv: '(' is never closed\n    A+(B\n      ^\n"},
      {{"vars", "--json", "A"}, 0, "{\n  \"names\": [\n    \"A\"\n  ],\n  \"error\": null\n}\n", ""},
  };
  for (const Case& one : cases) Expect(one);
}

TEST(FunctionsVerb, ListsAllWithDescriptions) {
  const ToolRun run = RunTool({"functions"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 2 + 28);
  EXPECT_NE(run.out.find("\nSQRT      square root\n"), std::string::npos) << run.out;
  // Each has a text in English; that of the suite stays in Chinese.
  for (const char byte : run.out) EXPECT_GE(byte, ' ' * (byte != '\n'));
  EXPECT_NE(RunTool({"--lang=zh", "functions"}).out.find("正弦函数(弧度参数)"), std::string::npos);
  EXPECT_NE(RunTool({"functions", "iif"}).out.find("IIF"), std::string::npos);
  EXPECT_EQ(RunTool({"functions", "no"}).code, 2);
  EXPECT_NE(RunTool({"functions", "--json", "abs"}).out.find("\"name\": \"ABS\""), std::string::npos);
}

TEST(RewriteVerb, DoesWhatTheLibraryDoes) {
  const Case cases[] = {
      {{"rewrite", "text", "aXa", "a=bb"}, 0, "bbXbb\n", ""},
      {{"rewrite", "ReplaceStr", "aXa", "a=bb", "--first"}, 0, "bbXa\n", ""},
      {{"rewrite", "value", "a.b+a", "a=3"}, 0, "a.b+3\n", ""},
      {{"rewrite", "value", "a.b+a", "a=3", "--first"}, 0, "a.b+a\n", ""},
      {{"rewrite", "value", "2x", "x=*3"}, 0, "2*3\n", ""},
      {{"rewrite", "number", "2a", "a=0.333"}, 0, "2*1/3\n", ""},
      {{"rewrite", "number", "abc+abc", "abc=1"}, 0, "1+abc\n", ""},
      {{"rewrite", "formula", "2*a", "a=b+c", "--brackets"}, 0, "2*(b+c)\n", ""},
      {{"rewrite", "ReplaceExprWithExpr", "2a", "a=3", "--multiply"}, 0, "2*3\n", ""},
      {{"rewrite", "split", "2*abc[1]"}, 0, "2*abc\nabc\t1\n", ""},
      {{"rewrite", "split", "abc[1]"}, 0, "abc\nbc\t1\n", ""},
      {{"rewrite", "pairs", "b:2;a:1;x;c:1:2"}, 0, "A:1;B:2;\n", ""},
      {{"rewrite", "value", "-a", "a=-1", "--json"},
       0,
       "{\n  \"text\": \"--1\",\n  \"done\": true,\n  \"count\": 1,\n  \"names\": []\n}\n",
       ""},
      {{"rewrite", "formula", "", "a=1"},
       1,
       "",
       "lorv: the text is empty, or it or the result is longer than a formula may be; nothing is changed\n"},
      {{"rewrite", "turn", "a", "a=1"},
       2,
       "",
       "lorv: there is no operation \"turn\"; known are text, value, number, formula, split, pairs\n"},
      {{"rewrite", "number", "a", "a=x"}, 2, "", "lorv: \"x\" is no number\n"},
      {{"rewrite", "value", "a"}, 2, "", "lorv: the operation value takes one NAME=VALUE\n"},
      {{"rewrite", "value", "a", "b"}, 2, "", "lorv: \"b\" is not of the form NAME=VALUE\n"},
      {{"rewrite", "split", "a", "b=1"}, 2, "", "lorv: the operation split takes the text alone\n"},
  };
  for (const Case& one : cases) Expect(one);
}

TEST(RewriteVerb, LongReplacementsHaveRoom) {
  const std::string many(2000, 'a'), fresh(300, 'b');
  const ToolRun run = RunTool({"rewrite", "text", many, "a=" + fresh});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out.size(), 100 * 300 + 1900 + 1u) << "a hundred places at most";
  EXPECT_EQ(RunTool({"rewrite", "number", std::string(3000, '2') + "a", "a=123456.789"}).code, 0);
}

}  // namespace
}  // namespace lorv::test
