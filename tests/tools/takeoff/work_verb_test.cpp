#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "tests/support/data.h"
#include "tests/tools/takeoff/work_runs.h"
#include "tools/lorv/takeoff/evaluate/exact_sum.h"
#include "tools/lorv/takeoff/output/bill.h"

namespace lorv::test {
namespace {

class WorkVerb : public WorkRuns {};

TEST(ExactSum, HeaderExample) {
  tool::Sum sum;
  for (const double value : {1e16, 1.0, -1e16}) sum.Add(value);
  EXPECT_EQ(sum.Value(), 1);
}

TEST_F(WorkVerb, BillHasTotalsByClassStoreyAndQuantity) {
  const ToolRun run = Work(
      "类别,name,楼层,count,L,B,H\n墙,W1,1F,,6,0.2,3\n墙,W2,1F,2,4,0.2,3\n墙,W3,2F,,5,0.2,2.8\n柱,C1,1F,,0.4,"
      "0.4,3\n",
      "class,name,unit,formula,decimals\n墙,砌体,m3,L*B*H,\n,side,m2,L*H,1\n柱,混凝土,m3,L*B*H,2\n");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            "Class  Quantity  Unit  Storey  Components   Total\n"
            "-------------------------------------------------\n"
            "墙     砌体      m3    1F               3   8.400\n"
            "                       2F               1   2.800\n"
            "                       all              4  11.200\n"
            "       side      m2    1F               3    42.0\n"
            "                       2F               1    14.0\n"
            "                       all              4    56.0\n"
            "-------------------------------------------------\n"
            "柱     混凝土    m3    1F               1    0.48\n"
            "\n"
            "Whole building  Unit  Components   Total\n"
            "----------------------------------------\n"
            "砌体            m3             4  11.200\n"
            "side            m2             4    56.0\n"
            "混凝土          m3             1    0.48\n"
            "\n"
            "4 components\n");
}

TEST_F(WorkVerb, FullTableIsComponentsByQuantities) {
  EXPECT_EQ(Table("class,name,storey,L,B\nW,w1,1,3,0.1\nX,x1,1,1,1\nW,\"w,2\",2,1,\n",
                  "class,name,unit,formula\nW,area,m2,L*B\nW;X,length,m,L\n"),
            "class,name,storey,area (m2),length (m),not worked\r\nW,w1,1,0.3,3,\r\nX,x1,1,,1,\r\n"
            "W,\"w,2\",2,,1,area\r\n");
}

TEST_F(WorkVerb, ProblemsAreReportedOnceARuleAndStopNothing) {
  const ToolRun run =
      Work("class,name,storey,L,B\nW,w1,1,3,0.1\nW,w2,1,,2\nW,w3,1,x,2\nW,w4,1,,0\n",
           "class,name,unit,formula,condition\nW,qa,m2,L*Breite,\nW,qb,m2,(L*B,\nW,qc,m,1/B+L,\nW,qd,m,B,B>\n"
           "W,qe,m,B,\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "r.csv, line 2, column 9: qa: nothing is named \"Breite\" here\n"
            "    L*Breite\n      ^^^^^^\n"
            "    not calculated for 4 components, first line 2, W, w1, 1\n"
            "r.csv, line 3, column 9: qb: '(' is never closed\n"
            "    (L*B\n    ^\n"
            "    not calculated for 4 components, first line 2, W, w1, 1\n"
            "r.csv, line 4, column 8: qc: no value for \"L\"\n"
            "    1/B+L\n        ^\n"
            "    not calculated for 2 components, first line 3, W, w2, 1\n"
            "r.csv, line 4, column 8: qc: the value for \"L\" is no number\n"
            "    1/B+L\n        ^\n"
            "    not calculated for 1 component: line 4, W, w3, 1: column 8 holds \"x\"\n"
            "r.csv, line 5, column 10: qd, its condition: the formula ends where a value is expected\n"
            "    B>\n      ^\n"
            "    not calculated for 4 components, first line 2, W, w1, 1\n");
  EXPECT_NE(run.out.find("qe        m     1                4   4.100"), std::string::npos) << run.out;
}

TEST_F(WorkVerb, DivisionByZeroIsFoundWhereItStands) {
  const ToolRun run = Work("class,墙长,洞口\nW,3,0\nW,3,2\n", "class,name,formula\nW,q,墙长/洞口\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "r.csv, line 2, column 5: q: division by zero: '洞口' is 0\n    墙长/洞口\n         ^^^^\n"
            "    not calculated for 1 component: line 2, W\n");
}

TEST_F(WorkVerb, SlipOfThePenIsAnsweredWithTheNameMeant) {
  const ToolRun run = Work("class,Length,墙高\nW,1,2\n", "class,name,formula\nW,q,Lenght*墙\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(
      run.err.find("nothing is named \"Lenght\" here; did you mean LENGTH?\n    Lenght*墙\n    ^^^^^^\n"),
      std::string::npos)
      << run.err;
}

TEST_F(WorkVerb, RulesMayLeanOnRowsAbove) {
  EXPECT_EQ(Table("class,L\nW,0.001\n",
                  "kind,class,name,formula,factor\nconstant,,tiny,0.00001,\nconstant,,twice,2*tiny,\n"
                  "step,W,s,L*L,\n,W,q,s*1000000,\n,W,r,q+twice*100000,\n,W,f,L,1000\n"),
            "class,q,r,f,not worked\r\nW,1,3,1,\r\n");
}

TEST_F(WorkVerb, DefaultsFillMissingDimensions) {
  EXPECT_EQ(Table("class,H,D\nW,,3\nW,2,3\nV,,3\nX,,\n",
                  "kind,class,name,formula,missing\ndefault,W,H,D+1,\ndefault,*,H,9,\ndefault,*,B,0.5,\n"
                  ",*,q,H*B,\n,X,d,D,skip\n,X,z,D+1,0\n"),
            "class,q,d,z,not worked\r\nW,2,,,\r\nW,1,,,\r\nV,4.5,,,\r\nX,4.5,,1,\r\n");
}

TEST_F(WorkVerb, FirstRowWhoseConditionHoldsCounts) {
  EXPECT_EQ(Table("class,name,H\nW,砖墙,4\nW,砖墙,2\nW,other,2\n",
                  "class,name,formula,condition\nW,q,1,H>3\nW,q,2,\"FIND(name,'砖')>0\"\nW,q,3,\n"),
            "class,name,q,not worked\r\nW,砖墙,1,\r\nW,砖墙,2,\r\nW,other,3,\r\n");
}

TEST_F(WorkVerb, ColumnsMayHaveShortNamesAndFactors) {
  EXPECT_EQ(Table("class,Net Volume.Total,材料\nW,0.0012345,C30\n",
                  "kind,class,name,formula,factor\ncolumn,,V,Net Volume.Total,1000000000\ntext,,M,材料,\n"
                  ",W,q,V/1000000000,\n,W,c,\"FIND(M,'c30')\",\n"),
            "class,q,c,not worked\r\nW,0.0012345,1,\r\n");
}

TEST_F(WorkVerb, CompareCountsAgreement) {
  const ToolRun run = Work("class,L,B,A\nW,2,3,6.05\nW,2,3,6.07\nW,1,1,\nV,2,2,4\n",
                           "class,name,formula,compare,group\n*,area,L*B,A,any\nW,shifted,L*B+0.07,A,any\n",
                           {"--compare", "--quiet"});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out,
            "Agrees with the file within 1 %  asked of  agree   share\n"
            "--------------------------------------------------------\n"
            "area                                    3      2  66.7 %\n"
            "shifted                                 2      2   100 %\n"
            "any                                     3      3   100 %\n");
  EXPECT_EQ(run.out.find("Differs"), std::string::npos) << "of a group the nearest one counts";
  EXPECT_NE(
      Work("class,L,A\nW,2,2.1\n", "class,name,formula,compare\nW,a,L,A\n", {"--compare", "--tolerance", "5"})
          .out.find("within 5 %"),
      std::string::npos);
}

TEST_F(WorkVerb, JsonHoldsBillProblemsAndComparison) {
  const ToolRun run = Work("class,storey,L\nW,1F,2\nW,1F,\n", "class,name,unit,formula,compare\nW,q,m,L,L\n",
                           {"--json", "--compare"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(
      run.out,
      "{\n  \"components\": 2,\n  \"without_rule\": 0,\n  \"left_out\": 0,\n  \"digits\": \"all\",\n"
      "  \"bill\": [\n    {\n      \"class\": \"W\",\n      \"storey\": \"1F\",\n"
      "      \"quantity\": \"q\",\n      \"unit\": \"m\",\n      \"components\": 1,\n"
      "      \"total\": 2,\n      \"shown\": \"2.000\"\n    }\n  ],\n  \"subtotals\": [],\n  \"totals\": [\n "
      "   {\n"
      "      \"quantity\": \"q\",\n      \"unit\": \"m\",\n      \"components\": 1,\n"
      "      \"total\": 2,\n      \"shown\": \"2.000\"\n    }\n  ],\n"
      "  \"problems\": [\n    {\n      \"line\": 2,\n      \"column\": 7,\n      \"name\": \"q\",\n"
      "      \"part\": \"formula\",\n      \"formula\": \"L\",\n      \"message\": \"no value for "
      "\\\"L\\\"\",\n      \"severity\": \"error\",\n"
      "      \"position\": 0,\n      \"length\": 1,\n      \"components\": 1,\n"
      "      \"first\": \"line 3, W, 1F\"\n    }\n  ],\n  \"classes_without_rule\": [],\n  \"absent\": [],\n"
      "  \"unused_rules\": [],\n  \"units\": [],\n  \"precision\": [],\n"
      "  \"comparison\": [\n    {\n      \"name\": \"q\",\n"
      "      \"group\": false,\n      \"asked\": 1,\n      \"agree\": 1\n    }\n  ],\n  \"differences\": "
      "[],\n"
      "  \"more_differences\": 0\n}\n");
}

TEST_F(WorkVerb, BillFileAndMark) {
  Work("class,storey,L\nW,1F,2\n", "class,name,unit,formula\nW,q,m,L\n",
       {"--quiet", "--mark", "--bill", Path("bill.csv"), "--out", Path("out.csv")});
  EXPECT_EQ(ReadBytes(folder_.Path() / "bill.csv"),
            "\xEF\xBB\xBF"
            "class,quantity,unit,storey,components,total,shown,row\r\nW,q,m,1F,1,2,2.000,line\r\n"
            ",q,m,,1,2,2.000,total\r\n");
  EXPECT_EQ(ReadBytes(folder_.Path() / "out.csv"),
            "\xEF\xBB\xBF"
            "class,storey,q (m),not worked\r\nW,1F,2,\r\n");
}

constexpr const char* kRules = "class,name,formula\nW,q,L\n";
constexpr const char* kComponents = "class,L\nW,1\n";
constexpr struct {
  const char *components, *rules, *message;
} kBadFiles[] = {
    {"", kRules, "lorv: c.csv: the file is empty\n"},
    {"name,L\nx,1\n", kRules,
     "lorv: c.csv, line 1, column 1: the header has no column class (类别): it says which rules are "
     "for a "
     "component\n"},
    {"class,L,l\n", kRules, "lorv: c.csv, line 1, column 9: the column \"l\" stands here a second time\n"},
    {"class,L\nW,1,2\n", kRules,
     "lorv: c.csv, line 2, column 5: more cells than the header has; a cell with a comma in it stands "
     "in quotes\n"},
    {"class,L\nW,1\nW,\"2\n", kRules,
     "lorv: c.csv, line 3, column 3: the quote that opens here is never closed\n"},
    {"class,count,L\nW,x,1\n", kRules,
     "lorv: c.csv, line 2, column 3: the count \"x\" is no number from 0 up\n"},
    {kComponents, "class,name\nW,q\n",
     "lorv: r.csv, line 1, column 1: the header has no column formula (公式)\n"},
    {kComponents, "class,name,formula\n", "lorv: r.csv: there is no rule below the header\n"},
    {kComponents, "class,name,formula\n,q,L\n",
     "lorv: r.csv, line 2, column 1: the class is missing, here and in the rows above\n"},
    {kComponents, "class,name,formula\nW,q,MAX(L,1)\n",
     "lorv: r.csv, line 2, column 11: more cells than the header has; a formula with a comma stands in "
     "quotes\n"},
    {kComponents, "class,name,formula\nW,,L\n", "lorv: r.csv, line 2, column 3: the name is missing\n"},
    {kComponents, "class,name,formula\nW,q,\n", "lorv: r.csv, line 2, column 5: the formula is missing\n"},
    {kComponents, "class,name,formula,decimals\nW,q,L,11\n",
     "lorv: r.csv, line 2, column 7: decimals go from 0 to 10\n"},
    {kComponents, "class,name,formula,factor\nW,q,L,0\n",
     "lorv: r.csv, line 2, column 7: a factor of 0 makes every result 0\n"},
    {kComponents, "class,name,formula,missing\nW,q,L,none\n",
     "lorv: r.csv, line 2, column 7: \"none\" is neither report (报告), skip (跳过) nor a number\n"},
    {kComponents, "kind,class,name,formula\nconstant,,1x,2\n",
     "lorv: r.csv, line 2, column 11: \"1x\" cannot be a name in a formula: letters, digits and _ only, "
     "no digit in "
     "front, and no name of a function\n"},
    {kComponents, "kind,class,name,formula\nconstant,,k,2\nconstant,,K,3\n,W,q,L\n",
     "lorv: r.csv, line 3, column 11: \"K\" is declared a second time\n"},
    {kComponents, "kind,class,name,formula\nconstant,,k,2+\n,W,q,L\n",
     "lorv: r.csv, line 2, column 13: the constant k cannot be calculated: the formula ends where a value "
     "is "
     "expected\n    2+\n      ^\n\n"},
};

TEST_F(WorkVerb, BadFilesEndWithTwoAndLeaveNothing) {
  for (const auto& one : kBadFiles) {
    WriteBytes(folder_.Path() / "out.csv", "before");
    const ToolRun run = Work(one.components, one.rules, {"--out", Path("out.csv")});
    EXPECT_EQ(run.code, 2) << one.message;
    EXPECT_EQ(run.err, one.message);
    EXPECT_EQ(run.out, "") << one.message;
    EXPECT_EQ(ReadBytes(folder_.Path() / "out.csv"), "before") << one.message;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder_.Path()), {}), 3) << one.message;
  }
}

TEST_F(WorkVerb, BadArgumentsEndWithTwo) {
  WriteBytes(folder_.Path() / "c.csv", "class,L\nW,1\n");
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula\nW,q,L\n");
  const std::string c = Path("c.csv"), r = Path("r.csv");
  const std::vector<std::string> cases[] = {
      {"work"},
      {"work", c},
      {"work", c, "--rules", Path("no.csv")},
      {"work", folder_.Path().string(), "--rules", r},
      {"work", c, "--rules", r, "--out", c},
      {"work", c, "--rules", r, "--bill", r},
      {"work", c, "--rules", r, "--bill", Path("x"), "--out", Path("x")},
      {"work", "-", "--rules", "-"},
      {"work", c, "--rules", r, "--encoding", "latin"},
      {"work", c, "--rules", r, "--tolerance", "x"},
      {"work", c, "--rules", r, "--tolerance", "-1"},
      {"work", c, "--rules", r, "--out", Path("no/out.csv")},
  };
  for (const auto& words : cases) {
    const ToolRun run = RunTool(words);
    EXPECT_EQ(run.code, 2) << words.back();
    EXPECT_EQ(run.err.substr(0, 6), "lorv: ") << words.back();
  }
}

TEST_F(WorkVerb, ReadsComponentsFromStandardInput) {
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula\nW,q,L\n");
  const ToolRun run = RunTool({"work", "-", "--rules", Path("r.csv"), "--json"}, "class,L\nW,2\n");
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.out.find("\"total\": 2"), std::string::npos);
}

// A filter between two pipes: "-" is another stream on either side.
TEST_F(WorkVerb, StandsBetweenPipes) {
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula\nW,q,L\n");
  const ToolRun run = RunTool({"work", "-", "--rules", Path("r.csv"), "--out", "-"}, "class,L\nW,2\n");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out, "class,q,not worked\r\nW,2,\r\n");
}

TEST_F(WorkVerb, GbkFilesWorkLikeUtf8) {
  // 类别,长 / 墙,2 and 类别,名称,公式 / 墙,面,长*2
  const ToolRun run =
      Work("\xC0\xE0\xB1\xF0,\xB3\xA4\n\xC7\xBD,2\n",
           "\xC0\xE0\xB1\xF0,\xC3\xFB\xB3\xC6,\xB9\xAB\xCA\xBD\n\xC7\xBD,\xC3\xE6,\xB3\xA4*2\n");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find("墙     面                               1  4.000"), std::string::npos) << run.out;
}

TEST_F(WorkVerb, ManyRowsAreWorkedInOrder) {
  std::string components = "class,storey,L\n";
  for (int i = 0; i < 20000; ++i)
    components += "W,F" + std::to_string(i % 3) + "," + std::to_string(i % 100) + ".5\n";
  const ToolRun run = Work(components, "class,name,formula\nW,q,2*L\n", {"--json"});
  EXPECT_EQ(run.code, 0);
  double total = 0;
  const std::string bill = run.out.substr(0, run.out.find("\"subtotals\""));
  for (std::size_t at = 0; (at = bill.find("\"total\": ", at)) != std::string::npos; ++at) {
    total += std::stod(bill.substr(at + 9));
  }
  EXPECT_DOUBLE_EQ(total, 20000 * 100.0);
}

TEST_F(WorkVerb, ReportsRowsASecond) {
  const ToolRun run = Work("class,L\n墙,1\n墙,2\n", "class,name,formula\n墙,a,L*2\n", {"--time", "--quiet"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, "");
  std::istringstream err(run.err);
  std::string word;
  double seconds = -1;
  double rate = -1;
  EXPECT_TRUE(err >> word && word == "lorv:") << run.err;
  EXPECT_TRUE(err >> word && word == "2") << run.err;
  err >> word >> word;
  EXPECT_TRUE(err >> seconds >> word && seconds >= 0 && word == "s,") << run.err;
  EXPECT_TRUE(err >> rate && rate > 0) << run.err;
  std::getline(err, word);
  EXPECT_EQ(word, " rows a second");
}

// More components than are evaluated ahead at a time: each of another kind, so that all ways to a result come
// together.
TEST_F(WorkVerb, WorksManyComponentsAsOneByOne) {
  const char* const kKinds[] = {"2,0.5,3",          "2,,3",    "2,x,3", "0.3333,0.667,3", "0,0.25,3",
                                "2.00049,-0.5,1e3", "1e20,1,1"};
  std::string components = "class,name,L,B,H\n";
  std::string single[std::size(kKinds)];
  const std::string rules =
      "class,name,formula,condition\n墙,a,L*B*H,\n墙,b,H/"
      "L,\n墙,c,a*2+L,\n墙,d,SQRT(B),\n墙,e,\"IIF(L>1,B,H)\",L*H>1\n";
  for (std::size_t i = 0; i < std::size(kKinds); ++i)
    single[i] = Table("class,name,L,B,H\n墙,n," + std::string(kKinds[i]) + "\n", rules);
  std::string expected = single[0].substr(0, single[0].find('\n') + 1);
  for (int i = 0; i < 2500; ++i) {
    const std::size_t kind = static_cast<std::size_t>(i * 7 + i / 5) % std::size(kKinds);
    components += "墙,n," + std::string(kKinds[kind]) + "\n";
    expected += single[kind].substr(single[kind].find('\n') + 1);
  }
  EXPECT_EQ(Table(components, rules), expected);
}

TEST(BillSum, KeepsWhatPlainAdditionLoses) {
  tool::Sum sum;
  sum.Add(1e16);
  for (int i = 0; i < 10; ++i) sum.Add(1);
  sum.Add(-1e16);
  EXPECT_EQ(sum.Value(), 10);
}

}  // namespace
}  // namespace lorv::test
