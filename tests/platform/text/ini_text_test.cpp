#include "platform/text/ini_text.h"

#include <gtest/gtest.h>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

TEST(IniText, ValuesAreFoundBySectionAndKey) {
  const struct {
    LPCTSTR text;
    int value;
  } cases[] = {
      {_T("[Product]\nCustomFlag=72"), 72},
      {_T("[product]\r\n customflag = 72 \r\n"), 72},
      {_T("[Other]\nCustomFlag=1\n[Product]\nCustomFlag=2"), 2},
      {_T("CustomFlag=1\n[Product]\nCustomFlag=2"), 2},
      {_T("[Product]\nCustomFlag=3\nCustomFlag=4"), 3},
      {_T("[Product]\n;CustomFlag=5\nCustomFlag=6"), 6},
      {_T("[Product]\nCustomFlag=\"7\""), 7},
      {_T("[Product]\nCustomFlag='8'"), 8},
      {_T("[ Product ]\nCustomFlag=9"), 9},
      {_T("[Product]\nCustomFlag=-10"), -10},
      {_T("[Product]\nCustomFlag=+11"), 11},
      {_T("[Product]\nCustomFlag=0x1048"), 0x1048},
      {_T("[Product]\nCustomFlag=12abc"), 12},
      {_T("[Product]\nCustomFlag=abc"), 0},
      {_T("[Product]\nCustomFlag=4294967295"), -1},
      {_T("[Product]\nCustomFlag=0"), 0},
  };
  for (const auto& c : cases)
    EXPECT_EQ(IniInteger(c.text, _T("Product"), _T("CustomFlag"), 99), c.value) << Utf8(c.text);
}

TEST(IniText, MissingOrEmptyGivesTheFallback) {
  for (const LPCTSTR text : {_T(""), _T("[Product]"), _T("[Product]\nOther=1"), _T("[Product]\nCustomFlag="),
                             _T("[Product]\nCustomFlag"), _T("[Product\n"), _T("["), _T("[]\nCustomFlag=1"),
                             _T("[Product]\nCustomFlag=  "), _T("[Product]\n[Other]\nCustomFlag=1"),
                             _T("[Product]\n[Other]\n[Product]\nCustomFlag=1")}) {
    EXPECT_EQ(IniInteger(text, _T("Product"), _T("CustomFlag"), 99), 99) << Utf8(text);
  }
}

TEST(IniText, FileMayBeOfTheCodePageOrMarked) {
  EXPECT_EQ(Utf8(IniTextOf("\xC7\xBD", SuiteCodePage())), "墙");
  EXPECT_EQ(Utf8(IniTextOf("\xEF\xBB\xBF"
                           "墙",
                           SuiteCodePage())),
            "墙");
  EXPECT_EQ(Utf8(IniTextOf(std::string_view("\xFF\xFE"
                                            "a\0\x99\x58"
                                            "x",
                                            7),
                           SuiteCodePage())),
            "a墙");
}

}  // namespace
}  // namespace lorv
