// Formula texts rewritten: each operation with its own idea of where a name ends.

#include <gtest/gtest.h>

#include "tests/TEXPRESSCAL/calculator/calculator_engines.h"

namespace lorv::test {
namespace {

using Engines = testing::Types<LibraryRewriting, ReferenceRewriting>;

template <class Engine>
class Rewriting : public testing::Test {};
TYPED_TEST_SUITE(Rewriting, Engines);

CString Text(const char* utf8) {
  return CString::FromUtf8(utf8);
}

struct Replacement {
  const char* text;
  const char* old;
  const char* fresh;
  bool all;
  int count;
  const char* result;
};

TYPED_TEST(Rewriting, PlainReplacement) {
  const Replacement kTable[] = {
      {"ab", "ab", "AB", true, 0, "ab"},    {"aXa", "a", "bb", true, 2, "bbXbb"},
      {"aXa", "a", "bb", false, 1, "bbXa"}, {"aXa", "A", "b", true, 0, "aXa"},
      {"aaa", "aa", "b", true, 1, "ba"},    {"aa", "a", "aa", true, 2, "aaaa"},
      {"abc", "", "x", true, 0, "abc"},     {"abc", "b", "", true, 0, "abc"},
      {"", "a", "b", true, 0, ""},          {"abc", "abc", "x", true, 1, "x"},
      {"墙墙", "墙", "W", true, 2, "WW"},   {"abcd", "cd", "x", true, 1, "abx"},
      {"a", "b", "c", true, 0, "a"},        {"aAa", "A", "xyz", true, 1, "axyza"},
      {"abab", "ab", "b", true, 2, "bb"},
  };
  for (const Replacement& row : kTable) {
    CString text = Text(row.text);
    EXPECT_EQ(TypeParam::Replace(text, Text(row.old), Text(row.fresh), row.all), row.count) << row.text;
    EXPECT_EQ(Utf8(text), row.result) << row.text;
  }
}

TYPED_TEST(Rewriting, HundredReplacementsAreTheCeiling) {
  for (const int hits : {99, 100, 101, 250}) {
    CString text;
    for (int i = 0; i < hits; ++i) text += _T("a+");
    const int made = hits < 100 ? hits : 100;
    CString plain = text;
    EXPECT_EQ(TypeParam::Replace(plain, _T("a"), _T("xx"), true), made);
    EXPECT_EQ(plain.GetLength(), 2 * hits + made);
    CString edged = text;
    EXPECT_EQ(TypeParam::WithValue(edged, _T("a"), _T("xx"), true), made);
    EXPECT_EQ(edged.GetLength(), 2 * hits + made);
  }
}

TYPED_TEST(Rewriting, VariableByValueText) {
  const Replacement kTable[] = {
      {"a.b+a", "a", "3", false, 0, "a.b+a"},
      {"a.b+a", "a", "3", true, 1, "a.b+3"},
      {"2x", "x", "*3", true, 1, "2*3"},
      {"2x", "x", "3", true, 0, "2x"},
      {"x", "x", "3", true, 1, "3"},
      {"ax+x", "x", "3", true, 1, "ax+3"},
      {"xa+x", "x", "3", true, 1, "xa+3"},
      {"_x+x_+x1+1x", "x", "3", true, 0, "_x+x_+x1+1x"},
      {".x+x.", "x", "3", true, 0, ".x+x."},
      {"墙x墙", "x", "3", true, 1, "墙3墙"},
      {"x+x", "x", "x+1", true, 2, "x+1+x+1"},
      {"X+x", "x", "3", true, 1, "X+3"},
      {"x+x", "x", "3", false, 1, "3+x"},
      {"x", "x", "X", true, 0, "x"},
      {"ax", "x", "-1", true, 1, "a-1"},
      {"xa", "x", "-1", true, 0, "xa"},
      {"ax", "x", "/2", true, 1, "a/2"},
      {"ax", "x", "+2", true, 1, "a+2"},
      {"x", "x", "", true, 0, "x"},
      {"x", "", "3", true, 0, "x"},
      {"y", "x", "3", true, 0, "y"},
      {"(x)*[x]", "x", "3", true, 2, "(3)*[3]"},
      {"x x", "x", "3", true, 2, "3 3"},
      {"xx", "x", "3", true, 0, "xx"},
      {"x+xx+x", "x", "123", true, 2, "123+xx+123"},
      {"ax+x", "x", "3", false, 0, "ax+x"},
      {"墙高+1", "墙高", "3", true, 1, "3+1"},
      {"内墙高", "墙", "3", true, 1, "内3高"},
  };
  for (const Replacement& row : kTable) {
    CString text = Text(row.text);
    EXPECT_EQ(TypeParam::WithValue(text, Text(row.old), Text(row.fresh), row.all), row.count) << row.text;
    EXPECT_EQ(Utf8(text), row.result) << row.text;
  }
}

struct Substitution {
  const char* text;
  const char* name;
  double value;
  const char* result;
};

TYPED_TEST(Rewriting, VariableByNumber) {
  const Substitution kTable[] = {
      {"2a", "a", 3.0, "2*3"},
      {"2a", "a", 0.333, "2*1/3"},
      {"_a", "a", 3, "_a"},
      {"a.b", "a", 3, "3.b"},
      {"abc+abc", "abc", 1, "1+abc"},
      {"a+a", "a", 1, "1+1"},
      {"a+a", "a", 1.5, "1.5+1.5"},
      {"xa+a", "a", 3, "xa+3"},
      {"ax+a", "a", 3, "ax+3"},
      {"a1+a", "a", 3, "a1+3"},
      {"a_+a", "a", 3, "a_+3"},
      {"1a1", "a", 3, "1a1"},
      {"墙a墙", "a", 3, "墙3墙"},
      {"墙高+墙", "墙", 3, "3高+3"},
      {".a", "a", 3, ".3"},
      {"A", "a", 3, "A"},
      {"a", "a", -2.5, "-2.5"},
      {"2a", "a", -2.5, "2*-2.5"},
      {"a", "a", 0.6666, "2/3"},
      {"a", "a", 0.6677, "0.668"},
      {"a", "a", 0.33433, "1/3"},
      {"a", "a", 0.3344, "0.334"},
      {"a", "a", 0.3324, "1/3"},
      {"a", "a", 0.3323, "0.332"},
      {"a", "a", -0.3333333, "-0.333"},
      {"", "a", 3, ""},
      {"a", "", 3, "a"},
      {"a", "a", 0, "0"},
      {"a", "a", 1e-9, "0"},
      {"a", "a", -1e-9, "-0"},
      {"5", "5", 5, "5"},
      {"55", "5", 5, "55"},
      {"15", "5", 5, "15"},
      {"1a+a", "a", 12.25, "1*12.25+12.25"},
      {"(a)", "a", 3, "(3)"},
      {"a b", "a b", 3, "3"},
      {"ab+ab+ab", "ab", 7, "7+7+7"},
      {"9x+9x", "x", 1, "9*1+9*1"},
      {"a", "a", 1234567.8917, "1234567.892"},
  };
  for (const Substitution& row : kTable) {
    CString text = Text(row.text);
    TypeParam::WithOneValue(text, Text(row.name), row.value);
    EXPECT_EQ(Utf8(text), row.result) << row.text << " with " << row.name << '=' << row.value;
  }
}

TYPED_TEST(Rewriting, FiveHundredPassesAreTheCeiling) {
  for (const int hits : {499, 500, 501, 700}) {
    CString text;
    CString expected;
    for (int i = 0; i < hits; ++i) {
      text += _T("a+");
      expected += i < 500 ? _T("1+") : _T("a+");
    }
    TypeParam::WithOneValue(text, _T("a"), 1);
    EXPECT_EQ(Utf8(text), Utf8(expected)) << hits;
  }
  // Refused hits count as well.
  CString text;
  for (int i = 0; i < 499; ++i) text += _T("ax+");
  CString late = text + _T("ax+a");
  text += _T("a");
  TypeParam::WithOneValue(text, _T("a"), 1);
  EXPECT_EQ(Utf8(text.Right(2)), "+1");
  TypeParam::WithOneValue(late, _T("a"), 1);
  EXPECT_EQ(Utf8(late.Right(2)), "+a");
}

struct Rewrite {
  const char* text;
  const char* pairs;
  bool bracket;
  bool multiply;
  bool result;
  const char* rewritten;
};

TYPED_TEST(Rewriting, NamesByFormulas) {
  const Rewrite kTable[] = {
      {"2*a", "a:b+c", true, false, true, "2*(b+c)"},
      {"2*a", "a:(b+c)", true, false, true, "2*(b+c)"},
      {"2*a", "a:b*c", true, false, true, "2*b*c"},
      {"2*a", "a:b+c", false, false, true, "2*b+c"},
      {"2*a", "a:max(a,b)", true, false, true, "2*max(a,b)"},
      {"2*a", "a:-1", true, false, true, "2*(-1)"},
      {"2*a", "a:()", true, false, true, "2*(())"},
      {"2*a", "a:(b)", true, false, true, "2*(b)"},
      {"2*a", "a:f()", true, false, true, "2*(f())"},
      {"2*a", "a:f(x)", true, false, true, "2*f(x)"},
      {"2*a", "a:(a)+(b)", true, false, true, "2*(a)+(b)"},
      {"2*a", "a:f1(x)", true, false, true, "2*(f1(x))"},
      {"2*a", "a:b/2.5", true, false, true, "2*b/2.5"},
      {"a", "a:墙", true, false, true, "(墙)"},
      {"2a", "a:3", false, true, true, "2*3"},
      {"x a", "a:3", false, true, true, "x 3"},
      {"2a", "a:b", false, true, true, "2b"},
      {"2a", "a:(b)", false, true, true, "2*(b)"},
      {"2a", "a:b+1", true, true, true, "2(b+1)"},
      {"2a", "a:3", false, false, true, "23"},
      {"a", "a:3", false, true, true, "3"},
      {"a1b", "b:3", false, false, true, "a13"},
      {"a1b", "a1b:3;a1:4;a:5", false, false, true, "a1b"},
      {"a1+b", "a1:4;b:5", false, false, true, "4+5"},
      {"a1b+1", "b:5", false, true, true, "a1*5+1"},
      {"A+a", "a:3", false, false, true, "3+3"},
      {"a+a", "a:a+a", false, false, true, "a+a+a+a"},
      {"a_", "a_:3", false, false, true, "a_"},
      {"a_+a_", "a_:3", false, false, true, "3+a_"},
      {"_", "_:3", false, false, true, "_"},
      {"_a", "_a:3;a:4", false, false, true, "3"},
      {"墙", "墙:3", false, false, true, "墙"},
      {"a墙a", "a:3", false, false, true, "3墙3"},
      {"", "a:3", false, false, false, ""},
      {"a", "", false, false, false, "a"},
      {"a", "b", false, false, false, "a"},
      {"a", "a:b:c", false, false, false, "a"},
      {"a+b", "a:1;;b:2;c", false, false, true, "1+2"},
      {"a", "a:1;a:2", false, false, true, "2"},
      {"a", "b:2", false, false, true, "a"},
      {"a.b", "a:1;b:2", false, false, true, "1.2"},
      {"12", "a:1", false, false, true, "12"},
      {"a+bb+a", "a:xyz;bb:", false, false, true, "xyz+bb+xyz"},
      {"a+bb+a", "a:xyz;bb::", false, false, true, "xyz++xyz"},
      {"2a+3a", "a:10", false, true, true, "2*10+3*10"},
      {"abcdefghijklmnopqrstuvw", "abcdefghijklmnopqrst:1", false, false, true, "1"},
  };
  for (const Rewrite& row : kTable) {
    CString text = Text(row.text);
    EXPECT_EQ(TypeParam::WithExpr(text, Text(row.pairs), row.bracket, row.multiply), row.result) << row.text;
    EXPECT_EQ(Utf8(text), row.rewritten) << row.text << " with " << row.pairs;
  }
}

// The place behind the inserted text is reckoned with the stored key of 20 units.
TYPED_TEST(Rewriting, NameOfMoreThanTwentyUnitsMakesTheScanSkip) {
  CString text = _T("abcdefghijklmnopqrstuv+b+b");
  EXPECT_TRUE(TypeParam::WithExpr(text, _T("abcdefghijklmnopqrst:1;b:2"), false, false));
  EXPECT_EQ(Utf8(text), "1+b+2");
}

TYPED_TEST(Rewriting, ResultMayReach1014UnitsButNotMore) {
  for (const int length : {1013, 1014, 1015}) {
    CString text = _T("a+");
    while (text.GetLength() < length - 2) text += _T("9");
    CString before = text;
    EXPECT_EQ(TypeParam::WithExpr(text, _T("a:123"), false, false), length <= 1014) << length;
    EXPECT_EQ(text.GetLength(), length <= 1014 ? length : length - 2) << length;
    if (length > 1014) {
      EXPECT_EQ(Utf8(text), Utf8(before));
    }
  }
}

// Where nothing is inserted nothing is measured.
TYPED_TEST(Rewriting, LongTextWithoutANamePasses) {
  CString text = _T("b+");
  while (text.GetLength() < 1023) text += _T("9");
  const CString before = text;
  EXPECT_TRUE(TypeParam::WithExpr(text, _T("a:123"), false, false));
  EXPECT_EQ(Utf8(text), Utf8(before));
}

struct Annotated {
  const char* text;
  bool result;
  const char* rest;
  std::vector<std::string> found;
};

TYPED_TEST(Rewriting, AnnotationsComeOffNames) {
  const Annotated kTable[] = {
      {"", false, "", {}},
      {"abc", true, "abc", {}},
      {"abc[1]", true, "abc", {"bc=1"}},
      {"+abc[1]", true, "+abc", {"abc=1"}},
      {"[1]+a[2]", true, "+a", {"a=2"}},
      {"2*a[1]+a[2]", true, "2*a+a", {"a=1"}},
      {"2*a[1]+A[2]", true, "2*a+A", {"a=1"}},
      {"+a[1][2]", true, "+a[2]", {"a=1"}},
      {"+a[1", true, "+a[1", {}},
      {"+a]1[", true, "+a]1[", {}},
      {"+a[]", true, "+a", {"a="}},
      {"+a[x[y]z]", true, "+az]", {"a=x[y"}},
      {"+[1]", true, "+", {"=1"}},
      {"1+墙[2]", true, "1+墙", {"=2"}},
      {"1+墙b2_[2]", true, "1+墙b2_", {"b2_=2"}},
      {"a[1]", true, "a", {"=1"}},
      {"[1][2]", true, "[2]", {}},
      {"(a[p],b[q])", true, "(a,b)", {"a=p", "b=q"}},
  };
  for (const Annotated& row : kTable) {
    CString text = Text(row.text);
    std::vector<CString> names;
    std::vector<CString> found;
    EXPECT_EQ(TypeParam::SplitBrackets(text, names, found), row.result) << row.text;
    EXPECT_EQ(Utf8(text), row.rest) << row.text;
    ASSERT_EQ(found.size(), row.found.size()) << row.text;
    EXPECT_EQ(names.size(), found.size()) << row.text;
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(Utf8(found[i]), row.found[i]) << row.text;
  }
}

TYPED_TEST(Rewriting, NamesAlreadyListedAreNotListedAgain) {
  CString text = _T("1+H[a]+w[b]");
  std::vector<CString> names = {_T("h")};
  std::vector<CString> found;
  EXPECT_TRUE(TypeParam::SplitBrackets(text, names, found));
  EXPECT_EQ(Utf8(text), "1+H+w");
  ASSERT_EQ(names.size(), 2u);
  EXPECT_EQ(Utf8(names[0]), "h");
  EXPECT_EQ(Utf8(names[1]), "w");
  ASSERT_EQ(found.size(), 1u);
}

TYPED_TEST(Rewriting, MapOfValuesAsText) {
  struct Row {
    const char* text;
    int count;
    const char* out;
  };
  const Row kTable[] = {
      {"", 0, ""},
      {"a:1;b;c:2:3;", 1, "A:1;"},
      {"b:2;a:1.5", 2, "A:1.5;B:2;"},
      {"a:1;A:2", 1, "A:2;"},
      {"_:1;a:2;9:3;墙:4", 4, "9:3;_:1;A:2;墙:4;"},
      {"a:0.33333", 1, "A:0.33333;"},
      {"a:0.333333333", 1, "A:0.33333;"},
      {"a:-2.50;b:1e3;c:x", 3, "A:-2.5;B:1000;C:0;"},
      {"abcdefghijklmnopqrstuvwxyz:1", 1, "ABCDEFGHIJKLMNOPQRST:1;"},
      {":5", 1, ":5;"},
      {"a::", 1, "A:0;"},
      {"a:", 0, ""},
      {";;;", 0, ""},
      {"a: 7 ", 1, "A:7;"},
      {"a:1234567.123456", 1, "A:1234567.12346;"},
  };
  for (const Row& row : kTable) {
    CString out;
    EXPECT_EQ(TypeParam::MapRoundTrip(Text(row.text), out), row.count) << row.text;
    EXPECT_EQ(Utf8(out), row.out) << row.text;
  }
}

TEST(RewritingObject, VectorAndMapFormsAgreeWithTheTextForm) {
  CString by_vector = _T("a+2b");
  EXPECT_TRUE(ReplaceExprWithExpr(
      by_vector, std::vector<CTwoStrValue>{{_T("a"), _T("x+1")}, {_T("b"), _T("9")}, {_T("B"), _T("7")}},
      true, true));
  EXPECT_EQ(Utf8(by_vector), "(x+1)+2*7");
  CString by_map = _T("a+2b");
  const std::map<CStrCmp, CString> table = {{_T("A"), _T("x+1")}, {_T("b"), _T("7")}};
  EXPECT_TRUE(ReplaceExprWithExpr(by_map, table, true, true));
  EXPECT_EQ(Utf8(by_map), "(x+1)+2*7");
  EXPECT_FALSE(ReplaceExprWithExpr(by_map, std::map<CStrCmp, CString>(), true, true));
  EXPECT_FALSE(ReplaceExprWithExpr(by_map, std::vector<CTwoStrValue>(), true, true));
}

TEST(RewritingObject, NullPointersChangeNothing) {
  TCHAR text[8] = {'a', 0};
  ReplExprWithOneValue(nullptr, _T("a"), 1);
  ReplExprWithOneValue(text, nullptr, 1);
  EXPECT_EQ(Utf8(text), "a");
}

TEST(RewritingObject, MapKeysAreUpperCasedAndReadBackByAnyCase) {
  CMapValue map;
  EXPECT_EQ(map[_T("width")], 0);
  map[_T("Width")] = 2;
  EXPECT_EQ(map[_T("WIDTH")], 2);
  EXPECT_EQ(map.size(), 1u);
  EXPECT_EQ(Utf8(static_cast<LPCTSTR>(map.begin()->first)), "WIDTH");
  EXPECT_EQ(Utf8(MapValueToStr(map)), "WIDTH:2;");
}

}  // namespace
}  // namespace lorv::test
