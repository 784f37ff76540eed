#include <gtest/gtest.h>

#include "spreadsheet/workbook_file.h"
#include "tests/tools/takeoff/work_runs.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/text/typed_number.h"

// Nobody gets a quantity that is wrong, or none, without a word: rows of every kind, conditions, filters.

namespace lorv::test {
namespace {

class TakeOffDoubts : public WorkRuns {
 protected:
  static bool Has(const std::string& text, const std::string& piece) {
    return text.find(piece) != std::string::npos;
  }
};

// ---- Formulas of all kinds of rows ----

TEST_F(TakeOffDoubts, ConstantsAreLookedAt) {
  const char* const rules = "kind,class,name,formula\nconstant,,k,\"ROUND(2.345,2)\"\n,W,q,k*L\n";
  const ToolRun run = Work("class,L\nW,2\n", rules);
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(Has(run.err,
                  "r.csv, line 2, column 13: warning: k: the function takes no notice of ',2'\n"
                  "    ROUND(2.345,2)\n               ^^\n"))
      << run.err;
  EXPECT_FALSE(Has(run.err, "no component needed it")) << run.err;
  EXPECT_EQ(Work("class,L\nW,2\n", rules, {"--strict"}).code, 1);
  EXPECT_TRUE(
      Has(Work("class,L\nW,2\n", "kind,class,name,formula\nconstant,,k,INT(4000000000)\n,W,q,k*L\n").err,
          "too large to be rounded or cut"));
}

TEST_F(TakeOffDoubts, DefaultsAreLookedAt) {
  // What a default came to, for the components that it counts for.
  const ToolRun used =
      Work("class,L,H\nW,2,\nW,2,5\n", "kind,class,name,formula\ndefault,W,H,INT(4000000000)\n,W,q,L*H\n");
  EXPECT_TRUE(Has(used.err, "line 2, column 13: warning: H: ")) << used.err;
  EXPECT_TRUE(Has(used.err, "doubtful for 1 component: line 2, W")) << used.err;
  // A wrong one that no component needed, or whose class there is not.
  for (const char* class_name : {"W", "X"}) {
    const ToolRun run = Work("class,L,H\nW,2,3\n", "kind,class,name,formula\ndefault," +
                                                       std::string(class_name) + ",H,L+*\n,W,q,L*H\n");
    EXPECT_EQ(run.code, 1) << class_name;
    EXPECT_TRUE(Has(run.err, "H: a value is expected here, not '*'")) << run.err;
    EXPECT_TRUE(Has(run.err, "no component needed it")) << run.err;
  }
}

TEST_F(TakeOffDoubts, ConditionsAreLookedAtWhetherOrNotTheyHold) {
  for (const char* sign : {"<", ">"}) {
    const ToolRun run = Work("class,L\nW,2\n", "class,name,formula,condition\nW,q,L,ROUND(L*4000000000)" +
                                                   std::string(sign) + "0\n");
    EXPECT_TRUE(Has(run.err, "warning: q, its condition: the number in 'ROUND(L*4000000000)' is too large"))
        << run.err;
  }
  const ToolRun text = Work("class,L\nW,2\n", "class,name,formula,condition\nW,q,L,L='a'\n");
  EXPECT_TRUE(Has(text.err, "q, its condition: the text 'a' counts as 0 here")) << text.err;
}

// A formula behind a condition that never holds is read all the same.
TEST_F(TakeOffDoubts, EveryFormulaIsReadWhateverTheConditions) {
  const ToolRun run = Work("class,L\nW,2\n", "class,name,formula,condition\nW,q,L*(2,L>5\nW,r,L,\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.err, "q: '(' is never closed")) << run.err;
}

// Rules for classes that a model does not have lean on rows for all classes without being called wrong.
TEST_F(TakeOffDoubts, RulesOfOtherClassesMayLeanOnAnyRowAbove) {
  const ToolRun run =
      Work("class,L\nW,2\n", "class,name,formula\n*,area,L*2\nDoor,frame,area*0.1\nW,q,area\n");
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(Has(run.err, "frame was never calculated: no component is of its classes")) << run.err;
}

TEST_F(TakeOffDoubts, RatiosAreLookedAt) {
  const char* const components = "class,L,H\nW,2,0\n";
  const ToolRun zero = Work(components, "kind,class,name,formula\n,W,q,L\n,W,h,H\nratio,,r,q/h\n");
  EXPECT_EQ(zero.code, 0) << "a line without a ratio is no wrong line";
  EXPECT_TRUE(Has(zero.err, "line 4, column 10: warning: r: division by zero: 'h' is 0")) << zero.err;
  const ToolRun quiet =
      Work(components, "kind,class,name,formula\n,W,q,L\n,W,h,H\nratio,,r,q/h\n", {"--quiet"});
  EXPECT_TRUE(Has(quiet.err, "division by zero")) << quiet.err;
  const ToolRun surplus =
      Work(components, "kind,class,name,formula\n,W,q,L\nratio,,r,\"ROUND(q,2)\"\n", {"--json"});
  EXPECT_TRUE(Has(surplus.out, "the function takes no notice of ',2'")) << surplus.out;
}

// ---- What the result would hide ----

TEST_F(TakeOffDoubts, PartsThatAreNoNumberAreReportedAndNotCounted) {
  const ToolRun run =
      Work("class,L\nW,0.5\nW,2\nW,3\n", "class,name,formula\nW,q,\"IIF(ASIN(L)>0,L,100)\"\n");
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.err,
                  "q: 'ASIN(L)' is no number, or too large for one, and the result would hide it\n"
                  "    IIF(ASIN(L)>0,L,100)\n        ^^^^^^^\n"
                  "    not calculated for 2 components, first line 3, W\n"))
      << run.err;
  EXPECT_TRUE(Has(run.out, "1  0.500")) << run.out;
}

TEST_F(TakeOffDoubts, ASearchForANumberIsDoubtful) {
  const ToolRun run = Work("class,name,L\nW,a,2\n", "class,name,formula\nW,q,\"FIND(L,'2')\"\n");
  EXPECT_TRUE(Has(run.err, "q: 'FIND(L,'2')' has a number where FIND takes texts only, and is always 0"))
      << run.err;
  EXPECT_EQ(Work("class,name,L\nW,a,2\n", "class,name,formula\nW,q,\"FIND(name,'a')\"\n").err, "");
}

TEST_F(TakeOffDoubts, PiIsNeverAColumnOrARule) {
  const ToolRun column = Work("class,L,PI\nW,2,5\n", "class,name,formula\nW,q,L*pi\n");
  EXPECT_TRUE(
      Has(column.err, "q: 'pi' is the number 3.14159 here, not what is called so\n    L*pi\n      ^^\n"))
      << column.err;
  EXPECT_TRUE(
      Has(Work("class,L\nW,2\n", "class,name,formula\nW,PI,L\nW,q,PI*2\n").err, "'PI' is the number"));
  EXPECT_EQ(Work("class,L\nW,2\n", "class,name,formula\nW,q,PI*L\n").err, "") << "it is PI that is meant";
  EXPECT_EQ(Work("class,L,PI\nW,2,5\n", "class,name,formula\nW,q,L*2\n").err, "") << "nobody asks for it";
}

// ---- The bill ----

TEST_F(TakeOffDoubts, AQuantityHasTheFinestDecimalsOfItsRules) {
  const ToolRun run = Work("class,L\nW,2\nX,3.1234\n",
                           "class,name,unit,formula,decimals\nW,q,m,L,1\nX,q,m,L,4\nW;X,r,m,L,1\nX,r,m,L,\n");
  EXPECT_TRUE(Has(run.out, "3.1234")) << run.out;
  EXPECT_TRUE(Has(run.out, "2.0000")) << run.out;
  EXPECT_TRUE(Has(run.out, "r         m                      1     2.0"))
      << "a blank one says nothing: " << run.out;
}

TEST_F(TakeOffDoubts, AQuantityIsTotalledInOneWay) {
  const char* const components = "class,L\nX,3\nX,5\nW,2\n";
  const ToolRun run = Work(components, "class,name,unit,formula,total\nW,q,m,L,sum\nX,q,m,L,average\n");
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "lorv: r.csv, line 3, column 9: a row above totals q in another way\n");
  const ToolRun blank =
      Work(components, "class,name,unit,formula,total\nW,q,m,L,\nX,q,m,L,average\n", {"--json"});
  EXPECT_TRUE(Has(blank.out, "\"total\": 4,")) << blank.out;
}

// ---- The suite's values ----

TEST_F(TakeOffDoubts, SuiteValuesMayDecideOtherwise) {
  const char* const components = "class,L\nW,0.2004\nW,5\n";
  const ToolRun lost = Work(components, "class,name,formula,condition\nW,q,L,L>0.2\n", {"--suite-values"});
  EXPECT_EQ(lost.code, 1);
  EXPECT_TRUE(Has(lost.err, "note: 1 of 2 values of \"q\" differ")) << lost.err;
  const ToolRun other =
      Work(components, "class,name,formula,condition\nW,q,5,L>0.2\nW,q,7,\n", {"--suite-values", "--json"});
  EXPECT_EQ(other.code, 1);
  EXPECT_TRUE(Has(other.out, "\"differ\": 1,")) << other.out;
  EXPECT_EQ(Work(components, "class,name,formula,condition\nW,q,L,L>0.1\n", {"--suite-values"}).code, 0);
}

TEST_F(TakeOffDoubts, SuiteValuesMayMoveTheTotalAlone) {
  std::string components = "class,count,L\n";
  for (int i = 0; i < 10; ++i) components += "W,2,0.0004\n";
  const ToolRun run = Work(components, "class,name,formula\nW,q,L\n", {"--suite-values"});
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(Has(run.err, "note: the total of \"q\" is 0.00000, with all digits of the values 0.00800"))
      << run.err;
  const ToolRun json = Work(components, "class,name,formula\nW,q,L\n", {"--suite-values", "--json"});
  EXPECT_TRUE(Has(json.out, "\"total\": 0,\n      \"total_with_all_digits\": 0.008")) << json.out;
}

TEST_F(TakeOffDoubts, SuiteValuesOfDefaultsAreComparedToo) {
  const ToolRun run = Work("class,D\nW,0.0004\n", "kind,class,name,formula\ndefault,W,H,D*1000\n,W,q,H\n",
                           {"--suite-values"});
  EXPECT_EQ(run.code, 1) << run.out;
}

// ---- Filters, files and cells ----

TEST_F(TakeOffDoubts, FiltersAreLookedAt) {
  const char* const components = "class,厚\nW,0.3\nW,\n";
  const char* const rules = "class,name,formula\nW,q,1\n";
  const ToolRun title = Work(components, rules, {"--where", "厚度>0.2"});
  EXPECT_TRUE(
      Has(title.err, "warning: --where: the text '厚度' counts as 0 here\n    '厚度'>0.2\n    ^^^^^^\n"))
      << title.err;
  const ToolRun words = Work(components, rules, {"--where", "clas = W"});
  EXPECT_TRUE(Has(words.err,
                  "--where: words are compared with words here: neither is a column\n"
                  "    'clas' = 'W'\n           ^\n"))
      << words.err;
  EXPECT_EQ(Work(components, rules, {"--where", "clas=W", "--strict"}).code, 1);
  const ToolRun rounded = Work(components, rules, {"--where", "ROUND(厚*4e0+1,2)>0"});
  EXPECT_EQ(rounded.code, 2) << "4e0 is no number of a formula";
  EXPECT_TRUE(Has(Work(components, rules, {"--where", "ROUND(厚,2)>0"}).err, "takes no notice of ',2'"));
  const ToolRun json = Work(components, rules, {"--where", "厚>0.2", "--json"});
  EXPECT_TRUE(Has(json.out, "\"where\": {\n    \"undecided\": 1,\n    \"warnings\": []")) << json.out;
  const ToolRun fine =
      Work("class,厚\nW,0.3\n", rules, {"--where", "class=W && 'W'=class && FIND(class,'W')=1"});
  EXPECT_EQ(fine.err, "");
}

TEST_F(TakeOffDoubts, OtherSheetsOfAWorkbookAreNamed) {
  WorkbookFile book;
  for (LPCTSTR name : {_T("one"), _T("two"), _T("empty")}) book.AddSheet(name);
  for (int sheet = 0; sheet < 2; ++sheet) {
    book.Put(sheet, 0, 0, _variant_t(_T("class")));
    book.Put(sheet, 0, 1, _variant_t(_T("L")));
    book.Put(sheet, 1, 0, _variant_t(_T("W")));
    book.Put(sheet, 1, 1, _variant_t(2.0));
  }
  WriteBytes(folder_.Path() / "c.xlsx", book.Bytes());
  WriteBytes(folder_.Path() / "r.csv", "class,name,formula\nW,q,L\n");
  const ToolRun run = RunTool({"work", Path("c.xlsx"), "--rules", Path("r.csv")});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "lorv: note: of the workbooks only the first sheets are read; 1 more hold something\n");
  const ToolRun json = RunTool({"work", Path("c.xlsx"), "--rules", Path("r.csv"), "--json", "--strict"});
  EXPECT_EQ(json.code, 1);
  EXPECT_TRUE(Has(json.out, "\"unread_sheets\": 1")) << json.out;
}

TEST_F(TakeOffDoubts, CellsAreAnsweredByWhatTheyMayMean) {
  const char* const rows[][2] = {
      {"0,001", "; a decimal comma? Write 0.001"},
      {"4 ", "; blanks around it? Write 4"},
      {" 4 000", "; a thousands separator? Write 4000"},
      {"10,001", "; a decimal comma or a thousands separator? Write 10.001 or 10001"}};
  for (const auto& row : rows) EXPECT_EQ(tool::NumberHint(row[0]), row[1]) << row[0];
}

// Words where a number belongs are never taken for a missing value: neither beside a default nor within one.
TEST_F(TakeOffDoubts, WordsStayWordsWhateverDefaultsMeet) {
  const ToolRun beside = Work("class,A,B\nW,abc,\nW,abc,3\n",
                              "kind,class,name,formula,missing\ndefault,W,B,2,\n,W,q,A*1+B,0\n", {"--json"});
  EXPECT_EQ(beside.code, 1);
  EXPECT_TRUE(Has(beside.out, "the value for \\\"A\\\" is no number")) << beside.out;
  EXPECT_TRUE(Has(beside.out, "\"components\": 2,\n      \"first\": \"line 2, W")) << beside.out;
  const ToolRun within =
      Work("class,A,B\nW,abc,\n", "kind,class,name,formula,missing\ndefault,W,B,A*2,5\n,W,q,B,\n");
  EXPECT_EQ(within.code, 1);
  EXPECT_TRUE(Has(within.err, "B: the value for \"A\" is no number")) << within.err;
}

TEST_F(TakeOffDoubts, ComponentsWithoutAClassAreNamed) {
  const ToolRun run = Work("class,L\nW,2\n,3\nX,3\n", "class,name,formula\nW,q,L\n");
  EXPECT_EQ(run.err,
            "lorv: note: components without a class have no rules: 1\n"
            "lorv: note: no rule is for the class \"X\" (1 component)\n");
}

TEST_F(TakeOffDoubts, TheSuitesWaySpeaksTheLanguageOfItsUser) {
  const ToolRun run =
      Work("class,L\nW,2\nW,\n", "class,name,formula\nW,q,L\n", {"--suite-values", "--lang", "zh"});
  EXPECT_TRUE(Has(run.err, "“L”没有值")) << run.err;
  tool::SpeakLanguage(tool::Language::kEnglish);
}

}  // namespace
}  // namespace lorv::test
