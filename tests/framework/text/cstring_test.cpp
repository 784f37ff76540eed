#include "framework/text/cstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <compare>

#include "tests/support/print.h"
#include "tests/support/whole_number_limits.h"

namespace lorv {
namespace {

using test::Utf8;

constexpr LPCTSTR kNull = nullptr;

TEST(CString, HeaderExample) {
  CString s(_T(" KL12 "));
  s.Trim();
  EXPECT_EQ(Utf8(s.Left(2)), "KL");
}

TEST(CString, NullPointerIsTheEmptyTextEverywhere) {
  CString s(kNull);
  EXPECT_TRUE(s.IsEmpty());
  EXPECT_EQ(*s.GetString(), 0);
  s = _T("ab");
  s += kNull;
  s.Append(kNull);
  s.Append(kNull, 5);
  s.Insert(1, kNull);
  EXPECT_EQ(Utf8(s), "ab");
  EXPECT_EQ(Utf8(s + kNull), "ab");
  EXPECT_EQ(Utf8(kNull + s), "ab");
  EXPECT_GT(s.Compare(kNull), 0);
  EXPECT_GT(s.CompareNoCase(kNull), 0);
  EXPECT_FALSE(s == kNull);
  EXPECT_TRUE(CString() == kNull);
  EXPECT_EQ(s.FindOneOf(kNull), -1);
  EXPECT_EQ(s.Replace(kNull, _T("x")), 0);
  EXPECT_EQ(s.Replace(_T("a"), kNull), 1);
  EXPECT_EQ(Utf8(s), "b");
  EXPECT_EQ(Utf8(s.SpanIncluding(kNull)), "");
  EXPECT_EQ(Utf8(s.SpanExcluding(kNull)), "b");
  s.Trim(kNull);
  EXPECT_EQ(Utf8(s), "b");
  s = kNull;
  EXPECT_TRUE(s.IsEmpty());
  s.Format(kNull);
  EXPECT_TRUE(s.IsEmpty());
  EXPECT_TRUE(CString(kNull, 3).IsEmpty());
}

TEST(CString, MadeFromPartsAndRepeatedUnits) {
  EXPECT_EQ(Utf8(CString(_T("abcdef"), 3)), "abc");
  EXPECT_EQ(CString(_T("a\0b"), 3).GetLength(), 3);
  EXPECT_EQ(Utf8(CString(_T("abc"), -1)), "");
  EXPECT_EQ(Utf8(CString(TCHAR{'x'}, 3)), "xxx");
  EXPECT_EQ(Utf8(CString(TCHAR{'x'})), "x");
  EXPECT_EQ(Utf8(CString(TCHAR{'x'}, -2)), "");
  CString s(_T("old"));
  s = TCHAR{'c'};
  EXPECT_EQ(Utf8(s), "c");
  s.SetString(_T("墙梁"));
  EXPECT_EQ(Utf8(s), "墙梁");
  s.SetString(_T("墙梁"), 1);
  EXPECT_EQ(Utf8(s), "墙");
}

TEST(CString, UnitsOutsideReadAsZeroAndAreNotWritten) {
  CString s(_T("ab"));
  for (const int bad : {2, 3, -1, kMost, kLeast}) {
    EXPECT_EQ(s.GetAt(bad), 0) << bad;
    EXPECT_EQ(s[bad], 0) << bad;
    s.SetAt(bad, 'x');
  }
  s.SetAt(1, 'c');
  EXPECT_EQ(Utf8(s), "ac");
  EXPECT_EQ(s[1], 'c');
}

TEST(CString, PartsAreBroughtToTheEnds) {
  const CString s(_T("abcdef"));
  const struct {
    int count;
    const char* left;
    const char* right;
    const char* mid;
  } kRows[] = {{0, "", "", "abcdef"},       {2, "ab", "ef", "cdef"}, {6, "abcdef", "abcdef", ""},
               {7, "abcdef", "abcdef", ""}, {-1, "", "", "abcdef"},  {kMost, "abcdef", "abcdef", ""},
               {kLeast, "", "", "abcdef"}};
  for (const auto& row : kRows) {
    EXPECT_EQ(Utf8(s.Left(row.count)), row.left) << row.count;
    EXPECT_EQ(Utf8(s.Right(row.count)), row.right) << row.count;
    EXPECT_EQ(Utf8(s.Mid(row.count)), row.mid) << row.count;
  }
  EXPECT_EQ(Utf8(s.Mid(1, 2)), "bc");
  EXPECT_EQ(Utf8(s.Mid(4, kMost)), "ef");
  EXPECT_EQ(Utf8(s.Mid(kMost, kMost)), "");
  EXPECT_EQ(Utf8(s.Mid(-3, 2)), "ab");
  EXPECT_EQ(Utf8(s.Mid(2, -1)), "");
}

TEST(CString, Spans) {
  const CString s(_T("1200mm"));
  EXPECT_EQ(Utf8(s.SpanIncluding(_T("0123456789"))), "1200");
  EXPECT_EQ(Utf8(s.SpanExcluding(_T("m"))), "1200");
  EXPECT_EQ(Utf8(s.SpanIncluding(_T("x"))), "");
  EXPECT_EQ(Utf8(s.SpanExcluding(_T("x"))), "1200mm");
}

TEST(CString, TokensPassOverEmptyPieces) {
  const CString s(_T(";;墙;,梁;"));
  int at = 0;
  EXPECT_EQ(Utf8(s.Tokenize(_T(";,"), at)), "墙");
  EXPECT_EQ(Utf8(s.Tokenize(_T(";,"), at)), "梁");
  EXPECT_EQ(at, s.GetLength());
  EXPECT_EQ(Utf8(s.Tokenize(_T(";,"), at)), "");
  EXPECT_EQ(at, -1);
  EXPECT_EQ(Utf8(s.Tokenize(_T(";,"), at)), "");
  EXPECT_EQ(at, -1);
  at = kMost;
  EXPECT_EQ(Utf8(s.Tokenize(_T(";"), at)), "");
  EXPECT_EQ(at, -1);
}

TEST(CString, TokensWithoutSeparatorsAreTheWholeTextOnce) {
  const CString s(_T("ab"));
  int at = 0;
  EXPECT_EQ(Utf8(s.Tokenize(_T(""), at)), "ab");
  EXPECT_EQ(Utf8(s.Tokenize(kNull, at)), "");
  EXPECT_EQ(at, -1);
}

TEST(CString, FindsFromAPosition) {
  const CString s(_T("abcabc"));
  EXPECT_EQ(s.Find('b'), 1);
  EXPECT_EQ(s.Find('b', 2), 4);
  EXPECT_EQ(s.Find('b', 5), -1);
  EXPECT_EQ(s.Find('b', -7), 1);
  EXPECT_EQ(s.Find('b', kMost), -1);
  EXPECT_EQ(s.Find(_T("bc")), 1);
  EXPECT_EQ(s.Find(_T("bc"), 2), 4);
  EXPECT_EQ(s.Find(_T("cb")), -1);
  EXPECT_EQ(s.Find(_T("abcabcd")), -1);
  EXPECT_EQ(s.Find(_T("")), 0);
  EXPECT_EQ(s.Find(_T(""), 6), 6);
  EXPECT_EQ(s.Find(_T(""), 7), -1);
  EXPECT_EQ(s.FindOneOf(_T("xc")), 2);
  EXPECT_EQ(s.FindOneOf(_T("x")), -1);
  EXPECT_EQ(s.ReverseFind('b'), 4);
  EXPECT_EQ(s.ReverseFind('x'), -1);
  EXPECT_EQ(CString().Find('a'), -1);
  EXPECT_EQ(CString().Find(_T("")), 0);
}

TEST(CString, ComparesByUnitAndFoldsAsciiOnly) {
  EXPECT_EQ(CString(_T("a")).Compare(_T("a")), 0);
  EXPECT_LT(CString(_T("B")).Compare(_T("a")), 0);
  EXPECT_GT(CString(_T("B")).CompareNoCase(_T("a")), 0);
  EXPECT_EQ(CString(_T("KL墙")).CompareNoCase(_T("kl墙")), 0);
  EXPECT_LT(CString(_T("_")).CompareNoCase(_T("A")), 0);
  EXPECT_NE(CString(TCHAR{0xC9}).CompareNoCase(CString(TCHAR{0xE9})), 0);
  EXPECT_LT(CString(_T("ab")).Compare(_T("abc")), 0);
  EXPECT_LT(CString(TCHAR{0xD800}).Compare(CString(TCHAR{0xFFFF})), 0);
}

TEST(CString, OperatorsCompareWholeTextsAndCompareUpToAZeroUnit) {
  const CString a(_T("a\0b"), 3);
  const CString b(_T("a\0c"), 3);
  const CString same = a;
  EXPECT_TRUE(a == same);
  EXPECT_TRUE(std::is_eq(a <=> same));
  EXPECT_TRUE(a != b);
  EXPECT_TRUE(a < b);
  EXPECT_EQ(a.Compare(b), 0);
  EXPECT_EQ(a.Compare(_T("a")), 0);
  EXPECT_EQ(a.CompareNoCase(_T("A")), 0);
  EXPECT_FALSE(a == _T("a"));
  EXPECT_TRUE(_T("b") > a);
  EXPECT_TRUE(a >= _T("a"));
}

TEST(CString, JoinsTextsPointersAndUnits) {
  const CString a(_T("墙"));
  EXPECT_EQ(Utf8(a + a), "墙墙");
  EXPECT_EQ(Utf8(a + _T("1")), "墙1");
  EXPECT_EQ(Utf8(_T("1") + a), "1墙");
  EXPECT_EQ(Utf8(a + TCHAR{'x'}), "墙x");
  EXPECT_EQ(Utf8(TCHAR{'x'} + a), "x墙");
  CString s;
  s += a;
  s += _T("b");
  s += TCHAR{'c'};
  s.Append(_T("defg"), 2);
  s.AppendChar('!');
  EXPECT_EQ(Utf8(s), "墙bcde!");
}

TEST(CString, MayBeItsOwnArgument) {
  CString s(_T("ab"));
  s += s;
  EXPECT_EQ(Utf8(s), "abab");
  s.Insert(1, s);
  EXPECT_EQ(Utf8(s), "aababbab");
  s = s.GetString() + 5;
  EXPECT_EQ(Utf8(s), "bab");
  s.Append(s.GetString() + 1);
  EXPECT_EQ(Utf8(s), "babab");
  EXPECT_EQ(s.Replace(_T("b"), s), 3);
  EXPECT_EQ(Utf8(s), "bababababababab" + std::string("ab"));
  s = _T("x");
  s.Format(_T("%s%s"), s, s);
  EXPECT_EQ(Utf8(s), "xx");
  s.AppendFormat(_T("-%s"), s);
  EXPECT_EQ(Utf8(s), "xx-xx");
}

TEST(CString, AppendingATextKeepsItsZeroUnits) {
  CString s(_T("x"));
  const CString zero(_T("a\0b"), 3);
  s.Append(zero);
  s += zero;
  EXPECT_EQ(s.GetLength(), 7);
  EXPECT_EQ((s + zero).GetLength(), 10);
}

TEST(CString, ChangesCaseOfAsciiLettersOnly) {
  CString s(_T("aZ墙é_{"));
  EXPECT_EQ(Utf8(s.MakeUpper()), "AZ墙é_{");
  EXPECT_EQ(Utf8(s.MakeLower()), "az墙é_{");
  EXPECT_EQ(Utf8(CString(_T("abc")).MakeReverse()), "cba");
}

TEST(CString, TrimsBlanksUnitsAndSets) {
  EXPECT_EQ(Utf8(CString(_T(" \t\r\n\v\fa b \n")).Trim()), "a b");
  EXPECT_EQ(Utf8(CString(_T("  a ")).TrimLeft()), "a ");
  EXPECT_EQ(Utf8(CString(_T("  a ")).TrimRight()), "  a");
  EXPECT_EQ(Utf8(CString(_T(" \n ")).Trim()), "");
  EXPECT_EQ(Utf8(CString(_T("xxaxx")).Trim('x')), "a");
  EXPECT_EQ(Utf8(CString(_T("xxaxx")).TrimLeft('x')), "axx");
  EXPECT_EQ(Utf8(CString(_T("xxaxx")).TrimRight('x')), "xxa");
  EXPECT_EQ(Utf8(CString(_T("xyaxy")).Trim(_T("xy"))), "a");
  EXPECT_EQ(Utf8(CString(_T("xyaxy")).TrimLeft(_T("xy"))), "axy");
  EXPECT_EQ(Utf8(CString(_T("xyaxy")).TrimRight(_T("xy"))), "xya");
  EXPECT_EQ(CString(TCHAR{0x3000}).Trim().GetLength(), 1);
  CString own(_T("abab"));
  EXPECT_EQ(Utf8(own.TrimRight(own)), "");
}

TEST(CString, ReplacesWithoutSearchingWhatItPutIn) {
  CString s(_T("aaa"));
  EXPECT_EQ(s.Replace(_T("aa"), _T("a")), 1);
  EXPECT_EQ(Utf8(s), "aa");
  EXPECT_EQ(s.Replace(_T("a"), _T("aa")), 2);
  EXPECT_EQ(Utf8(s), "aaaa");
  EXPECT_EQ(s.Replace(_T(""), _T("x")), 0);
  EXPECT_EQ(s.Replace(_T("b"), _T("x")), 0);
  EXPECT_EQ(s.Replace('a', 'b'), 4);
  EXPECT_EQ(s.Replace('b', 'b'), 0);
  EXPECT_EQ(Utf8(s), "bbbb");
  EXPECT_EQ(s.Remove('b'), 4);
  EXPECT_EQ(s.Remove('b'), 0);
  EXPECT_TRUE(s.IsEmpty());
}

TEST(CString, InsertsAndDeletesAtTheEndsNamed) {
  CString s(_T("bc"));
  EXPECT_EQ(s.Insert(0, 'a'), 3);
  EXPECT_EQ(s.Insert(-5, _T("<")), 4);
  EXPECT_EQ(s.Insert(kMost, _T(">")), 5);
  EXPECT_EQ(s.Insert(99, '!'), 6);
  EXPECT_EQ(Utf8(s), "<abc>!");
  EXPECT_EQ(s.Delete(5), 5);
  EXPECT_EQ(s.Delete(0), 4);
  EXPECT_EQ(s.Delete(4, 1), 4);
  EXPECT_EQ(s.Delete(kMost), 4);
  EXPECT_EQ(s.Delete(1, -1), 4);
  EXPECT_EQ(s.Delete(2, kMost), 2);
  EXPECT_EQ(Utf8(s), "ab");
  EXPECT_EQ(s.Delete(-1, 1), 1);
  EXPECT_EQ(Utf8(s), "b");
}

TEST(CString, BufferIsWrittenByTheCallerAndClosed) {
  CString s(_T("ab"));
  LPTSTR buffer = s.GetBuffer(10);
  EXPECT_EQ(buffer[0], 'a');
  EXPECT_EQ(buffer[2], 0);
  std::copy_n(_T("hello"), 6, buffer);
  s.ReleaseBuffer();
  EXPECT_EQ(Utf8(s), "hello");
  s.GetBuffer()[0] = 'j';
  s.ReleaseBuffer(3);
  EXPECT_EQ(Utf8(s), "jel");
  s.GetBuffer(3)[1] = 0;
  s.ReleaseBuffer();
  EXPECT_EQ(Utf8(s), "j");
  std::fill_n(s.GetBufferSetLength(4), 4, TCHAR{'x'});
  s.ReleaseBuffer();
  EXPECT_EQ(Utf8(s), "xxxx");
  s.GetBufferSetLength(-3);
  EXPECT_TRUE(s.IsEmpty());
  s = _T("abc");
  s.GetBuffer(-1);
  s.ReleaseBuffer();
  EXPECT_EQ(Utf8(s), "abc");
}

TEST(CString, TruncatesAndPreallocates) {
  CString s(_T("abc"));
  s.Preallocate(1000);
  s.Truncate(5);
  EXPECT_EQ(Utf8(s), "abc");
  s.Truncate(2);
  EXPECT_EQ(Utf8(s), "ab");
  s.Truncate(-1);
  EXPECT_EQ(Utf8(s), "");
}

TEST(CString, GivesATextForAutomation) {
  const BSTR text = CString(_T("a\0墙"), 3).AllocSysString();
  EXPECT_EQ(SysStringLen(text), 3u);
  EXPECT_EQ(text[2], 0x5899);
  EXPECT_EQ(text[3], 0);
  SysFreeString(text);
}

TEST(CString, GoesThroughUtf8) {
  EXPECT_EQ(CString::FromUtf8("墙a").GetLength(), 2);
  EXPECT_EQ(CString(_T("墙a")).ToUtf8(), "墙a");
}

}  // namespace
}  // namespace lorv
