#include <gtest/gtest.h>

#include "tests/tools/takeoff/work_runs.h"
#include "tools/lorv/takeoff/output/line_rounding.h"
#include "tools/lorv/takeoff/output/storey_order.h"

namespace lorv::test {
namespace {

class TakeOffRun : public WorkRuns {
 protected:
  static bool Has(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
  }
};

// ---- Digits ----

TEST_F(TakeOffRun, DimensionsKeepAllTheirDigits) {
  EXPECT_EQ(Table("class,A,L\nW,0.0004,1000\nW,0.334,3\n", "class,name,formula\nW,q,A*L\n"),
            "class,q,not worked\r\nW,0.4,\r\nW,1.002,\r\n");
}

TEST_F(TakeOffRun, SuiteValuesAreCountedWhereTheyMatter) {
  const char* const components = "class,A\nW,0.0004\nW,0.334\nW,2\n";
  const ToolRun run = Work(components, "class,name,formula\nW,q,A*1000\n", {"--suite-values"});
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.err, "note: 2 of 3 values of \"q\" differ from those with all digits, by up to 100 %"))
      << run.err;
  const ToolRun json = Work(components, "class,name,formula\nW,q,A*1000\n", {"--suite-values", "--json"});
  EXPECT_TRUE(Has(json.out, "\"quantity\": \"q\"") && Has(json.out, "\"differ\": 2")) << json.out;
  const ToolRun fine =
      Work("class,A\nW,3.0001\n", "class,name,formula,decimals\nW,q,A,4\n", {"--suite-values"});
  EXPECT_EQ(fine.code, 0) << "less than a tenth of a per cent: " << fine.err;
}

// Steps go on with what they are in each way.
TEST_F(TakeOffRun, SuiteValuesAreComparedThroughSteps) {
  const ToolRun run = Work("class,A\nW,0.0004\n", "kind,class,name,formula\nstep,W,s,A*10\n,W,q,s*100\n",
                           {"--suite-values", "--json"});
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.out, "\"largest_share\": 1")) << run.out;
}

// ---- Doubts and gaps ----

TEST_F(TakeOffRun, DoubtfulRulesAreWarnedOf) {
  const char* const rules = "class,name,formula\nW,q,\"ROUND(L,2)\"\nW,r,ROUND(L*4000000000)\n";
  const ToolRun run = Work("class,L\nW,1.5\nW,2\n", rules);
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(Has(run.err,
                  "r.csv, line 2, column 5: warning: q: the function takes no notice of ',2'\n"
                  "    ROUND(L,2)\n           ^^\n    doubtful for 2 components, first line 2, W\n"))
      << run.err;
  EXPECT_TRUE(Has(run.err, "too large to be rounded or cut")) << run.err;
  EXPECT_EQ(Work("class,L\nW,1.5\n", rules, {"--strict"}).code, 1);
  EXPECT_TRUE(Has(Work("class,L\nW,1.5\n", rules, {"--json"}).out, "\"severity\": \"warning\""));
}

TEST_F(TakeOffRun, WhatIsMissingIsNamed) {
  const ToolRun run =
      Work("class,L\nW,1\nX,1\nX,2\n",
           "class,name,formula,condition\nW,a,L,\nW,a,2*L,\nW,b,L,L>5\nDoor,c,L,\nDoor,d,L+*,\n");
  EXPECT_EQ(run.code, 1) << "a formula that no component needs is wrong all the same";
  EXPECT_TRUE(Has(run.err, "note: no rule is for the class \"X\" (2 components)")) << run.err;
  EXPECT_TRUE(
      Has(run.err,
          "line 3, column 1: note: a was never calculated: a row above of the same name always counts first"))
      << run.err;
  EXPECT_TRUE(Has(run.err, "line 4, column 1: note: b was never calculated: its condition never holds"))
      << run.err;
  EXPECT_TRUE(Has(run.err, "line 5, column 1: note: c was never calculated: no component is of its classes"))
      << run.err;
  EXPECT_TRUE(Has(run.err, "line 6, column 8: d: a value is expected here, not '*'")) << run.err;
  EXPECT_TRUE(Has(run.err, "no component needed it")) << run.err;
  const ToolRun json = Work("class,L\nW,1\nX,1\n", "class,name,formula\nW,a,L\nDoor,c,L\n", {"--json"});
  EXPECT_EQ(json.code, 0);
  EXPECT_TRUE(Has(json.out, "\"classes_without_rule\": [\n    {\n      \"class\": \"X\"")) << json.out;
  EXPECT_TRUE(Has(json.out, "\"reason\": \"no component is of its classes\"")) << json.out;
  EXPECT_EQ(Work("class,L\nW,1\nX,1\n", "class,name,formula\nW,a,L\n", {"--strict"}).code, 1);
  EXPECT_EQ(Table("class,L\nX,1\n", "class,name,formula\nW,a,L\n"),
            "class,a,not worked\r\nX,,no rule is for this class\r\n");
}

TEST_F(TakeOffRun, RulesFitFilesThatLackColumns) {
  const ToolRun run = Work(
      "class,L\nW,2\n",
      "kind,class,name,formula,missing\ncolumn,,B,Width,\n,W,a,L*B,1\n,W,b,L*H,3\n,W,c,L*H,skip\n,W,d,L,\n");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(Has(run.err, "line 2, column 1: note: B: the components file has no column \"Width\""))
      << run.err;
  EXPECT_TRUE(
      Has(run.err, "line 4, column 1: note: b: nothing is named \"H\" here: its values count as missing"))
      << run.err;
  EXPECT_TRUE(Has(run.err, "c was never calculated: a value is always missing")) << run.err;
  EXPECT_EQ(Table("class,L\nW,2\n", "kind,class,name,formula,missing\n,W,a,L*B,1\n,W,b,L*H,3\n,W,d,L,\n"),
            "class,a,b,d,not worked\r\nW,2,6,2,\r\n");
  const ToolRun reported =
      Work("class,L\nW,2\n", "kind,class,name,formula\ncolumn,,B,Width\n,W,a,L*B\n,W,d,L\n");
  EXPECT_EQ(reported.code, 1);
  EXPECT_TRUE(Has(reported.err, "no value for \"B\"")) << reported.err;
}

TEST_F(TakeOffRun, CompareNamesWhoDisagrees) {
  const char* const rules = "class,name,formula,compare\nW,q,L,A\nW,r,L,Volume\n";
  EXPECT_EQ(Work("class,L,A\nW,2,2\n", rules).err, "") << "without --compare nothing is asked";
  const ToolRun run = Work("class,name,L,A\nW,w1,2,2\nW,w2,3,2\nW,w3,2,4\n", rules, {"--compare", "--quiet"});
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(Has(run.out, "q        line 4, W, w3       2            4  -50 %\n") ||
              Has(run.out, "line 4, W, w3"))
      << run.out;
  EXPECT_TRUE(Has(run.out, "50 %") && Has(run.out, "-50 %")) << run.out;
  EXPECT_TRUE(
      Has(run.err, "line 3, column 1: note: r: the components file has no column \"Volume\" to compare with"))
      << run.err;
  EXPECT_TRUE(Has(Work("class,L,A\nW,3,2\n", rules, {"--compare", "--json"}).out, "\"share\": 0.5"));
}

TEST_F(TakeOffRun, BadCellIsShownWithWhatItMayMean) {
  const ToolRun run = Work("class,L,B\nW,1,\"3,5\"\n", "class,name,formula\nW,q,L*B\n");
  EXPECT_TRUE(Has(run.err, "line 2, W: column 5 holds \"3,5\"; a decimal comma? Write 3.5")) << run.err;
}

// ---- The bill ----

TEST_F(TakeOffRun, BillIsPartedByTheColumnsAskedFor) {
  const char* const components =
      "class,storey,type,grade,L\nW,2F,A,C30,1\nW,1F,A,C30,2\nW,1F,B,C25,4\nX,B1,A,C25,8\n";
  const char* const rules = "class,name,unit,formula,decimals\n*,q,m,L,0\n";
  EXPECT_EQ(Work(components, rules, {"--by", "storey,grade"}).out,
            "Storey  Quantity  Unit  Grade  Components  Total\n"
            "------------------------------------------------\n"
            "B1      q         m     C25             1      8\n"
            "------------------------------------------------\n"
            "1F      q         m     C30             1      2\n"
            "                        C25             1      4\n"
            "                        all             2      6\n"
            "------------------------------------------------\n"
            "2F      q         m     C30             1      1\n"
            "\n"
            "Whole building  Unit  Components  Total\n"
            "---------------------------------------\n"
            "q               m              4     15\n"
            "\n"
            "4 components\n");
  Work(components, rules, {"--by", "楼层,type,class", "--quiet", "--bill", Path("bill.csv")});
  EXPECT_EQ(ReadBytes(folder_.Path() / "bill.csv"),
            "storey,quantity,unit,type,class,components,total,shown,row\r\n"
            "B1,q,m,A,X,1,8,8,line\r\n"
            "1F,q,m,A,W,1,2,2,line\r\n1F,q,m,B,W,1,4,4,line\r\n1F,q,m,,,2,6,6,subtotal\r\n"
            "2F,q,m,A,W,1,1,1,line\r\n,q,m,,,4,15,15,total\r\n");
  EXPECT_EQ(Work(components, rules, {"--by", "colour"}).code, 2);
}

TEST_F(TakeOffRun, FilterTakesWordsAndNumbers) {
  const char* const components =
      "class,name,厚,grade\n墙,W1,0.3,C30\n墙,W2,0.1,C25\n柱,C1,0.5,C30\n墙,W3,,C30\n";
  const char* const rules = "class,name,formula\n*,q,1\n";
  const auto count = [&](const char* where) {
    const ToolRun run = Work(components, rules, {"--where", where, "--json"});
    const std::size_t at = run.out.find("\"components\": ");
    return at == std::string::npos ? run.err : run.out.substr(at + 14, run.out.find(',', at) - at - 14);
  };
  EXPECT_EQ(count("class=墙 && 厚>0.2"), "1");
  EXPECT_EQ(count("class='墙'"), "3");
  EXPECT_EQ(count("class=\"墙\" && 厚>0.2"), "1");
  EXPECT_EQ(count("“墙”=class || ‘柱’=class"), "4");
  EXPECT_EQ(count("class='\"墙\"'"), "0") << "what single quotes hold stays";
  EXPECT_TRUE(Has(count("class=\"墙"), "'\"' does not belong in a formula\n    class=\"'墙'\n          ^"));
  EXPECT_EQ(Work(components, rules, {"--where", "class=\"it's\""}).code, 2);
  EXPECT_EQ(count("grade=c30"), "3");
  EXPECT_EQ(count("grade<>C30"), "1");
  EXPECT_EQ(count("FIND(name,'W')>0"), "3");
  EXPECT_EQ(count("0.2<厚<0.4"), "1");
  EXPECT_EQ(Work(components, rules, {"--where", "class=(墙"}).code, 2);
  const ToolRun run = Work(components, rules, {"--where", "厚>0.2"});
  EXPECT_TRUE(Has(run.out, "2 components, 2 left out by --where")) << run.out;
  EXPECT_TRUE(Has(run.err, "1 component lacks a value")) << run.err;
}

TEST_F(TakeOffRun, RoundedLinesAddUp) {
  const ToolRun run =
      Work("class,storey,L\nW,1F,0.4\nW,2F,0.4\nW,3F,0.4\n", "class,name,formula,decimals\nW,q,L,0\n");
  EXPECT_TRUE(Has(run.out, "W      q               1F               1      1\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "                       2F               1      0\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "                       all              3      1\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "Rounded so that lines add up to their totals (largest remainder).")) << run.out;
  using tool::SharedOut;
  EXPECT_EQ(*SharedOut({0.4, 0.4, 0.4}, 0, 1), (std::vector<long long>{1, 0, 0}));
  EXPECT_EQ(*SharedOut({-0.4, -0.4, -0.4}, 0, -1), (std::vector<long long>{0, 0, -1}));
  EXPECT_EQ(*SharedOut({1.26, 2.31}, 1, 36), (std::vector<long long>{13, 23}));
  EXPECT_FALSE(SharedOut({1e30}, 0, 1));
  EXPECT_EQ(tool::ShownSteps(-5, 2), "-0.05");
  EXPECT_EQ(tool::ShownSteps(1234, 2), "12.34");
  EXPECT_EQ(tool::ShownSteps(7, 0), "7");
}

TEST_F(TakeOffRun, AveragesAndRatiosStandBesideSums) {
  const ToolRun run =
      Work("class,storey,count,t,S,V\nW,1F,1,0.25,100,2\nW,1F,3,0.5,50,1\nW,2F,1,0.125,30,1\n",
           "kind,class,name,unit,formula,total,decimals\n,W,thickness,m,t,average,3\n,W,most,m,t,most,1\n"
           ",W,steel,kg,S,,0\n,W,concrete,m3,V,,0\nratio,,kg per m3,kg/m3,steel/concrete,,1\n",
           {"--json"});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(Has(run.out, "\"total\": 0.4375,")) << "the mean of four walls: " << run.out;
  EXPECT_TRUE(Has(run.out, "\"quantity\": \"kg per m3\"") && Has(run.out, "\"total\": 50,")) << run.out;
  EXPECT_TRUE(Has(run.out, "\"shown\": \"46.7\"")) << "280 kg in 6 m3: " << run.out;
  EXPECT_EQ(Work("class,L\nW,1\n", "kind,class,name,formula\n,W,q,L\nratio,,r,q/x\n").code, 2);
}

// A row that stands for no component counts nowhere, before or behind those that do.
TEST_F(TakeOffRun, RowsOfNoComponentHaveNoLeastValue) {
  const char* const rules = "class,name,formula,total\nW,q,A,least\n";
  for (const char* rows : {"W,5,1\nW,1,0\n", "W,1,0\nW,5,1\n"}) {
    const ToolRun run = Work("class,A,count\n" + std::string(rows), rules);
    EXPECT_NE(run.out.find("q                              1  5.000"), std::string::npos) << run.out;
  }
}

TEST_F(TakeOffRun, StoreysStandFromBelow) {
  const char* const order[] = {"基础层", "B2",  "地下1层",  "首层",     "1F",
                               "第二层", "3层", "Level 10", "二十一层", "屋面"};
  for (std::size_t i = 1; i < std::size(order); ++i) {
    ASSERT_TRUE(tool::StoreyRank(order[i]).has_value()) << order[i];
    EXPECT_LT(*tool::StoreyRank(order[i - 1]), *tool::StoreyRank(order[i]))
        << order[i - 1] << " " << order[i];
  }
  EXPECT_FALSE(tool::StoreyRank("annex").has_value());
}

TEST_F(TakeOffRun, ExplainShowsHowEachWasWorked) {
  const char* const components = "class,name,L,B\nW,w1,2,0.24\n";
  const char* const rules =
      "kind,class,name,unit,formula,factor\nconstant,,k,,3,\n,W,q,m3,L*B*k,\n,W,r,,q-2L,10\n";
  const ToolRun run = Work(components, rules, {"--explain"});
  EXPECT_TRUE(Has(run.out, "line 2, W, w1: q = 2*0.24*3 = 1.44 m3\n")) << run.out;
  EXPECT_TRUE(Has(run.out, "line 2, W, w1: r = (1.44-2*2)*10 = -25.6\n")) << run.out;
  Work(components, rules, {"--explain", "--quiet", "--out", Path("out.csv")});
  EXPECT_EQ(ReadBytes(folder_.Path() / "out.csv"),
            "class,name,q (m3),\"q, worked out\",r,\"r, worked out\",not worked\r\n"
            "W,w1,1.44,2*0.24*3,-25.6,(1.44-2*2)*10,\r\n");
}

TEST_F(TakeOffRun, MillimetresAmongMetresAreNoticed) {
  const char* const components = "class,L,面积\nW,3600,12.5\nW,2400,8.25\nW,1800,3.5\n";
  const ToolRun run = Work(components, "class,name,unit,formula\nW,q,m3,L*面积\n");
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(Has(
      run.err,
      "line 2, column 8: warning: q is in m3, but the values of \"L\" look like millimetres (such as 3600)"))
      << run.err;
  EXPECT_EQ(Work(components, "class,name,unit,formula\nW,q,m3,L*面积/1000\n").err, "");
  EXPECT_EQ(Work(components, "class,name,unit,formula\nW,q,m2,面积\n").err, "");
  EXPECT_EQ(
      Work(components, "kind,class,name,unit,formula,factor\ncolumn,,L,,L,0.001\n,W,q,m3,L*面积,\n").err, "");
  EXPECT_EQ(Work(components, "class,name,unit,formula\nW,q,m3,L*面积\n", {"--strict"}).code, 1);
  // By way of steps, unless one of them or the rule divides.
  const char* const steps = "kind,class,name,unit,formula\nstep,W,net,,L-10\nstep,W,all,,net+1\n,W,q,m3,";
  const ToolRun stepped = Work(components, steps + std::string("all*面积\n"));
  EXPECT_TRUE(Has(stepped.err, "line 4, column 9: warning: q is in m3, but the values of \"L\" look like"))
      << stepped.err;
  EXPECT_EQ(Work(components, steps + std::string("all*面积/1000\n")).err, "");
  EXPECT_EQ(Work(components, "kind,class,name,unit,formula\nstep,W,net,,L/1000\n,W,q,m3,net*面积\n").err, "");
}

}  // namespace
}  // namespace lorv::test
