#include "platform/ports/code_page.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;

std::string Narrow(LPCTSTR text) {
  return SuiteCodePage().ToNarrow(text);
}
std::string Wide(std::string_view bytes) {
  return Utf8(TextView(SuiteCodePage().ToText(bytes)));
}

TEST(CodePage, ChineseTextHasTwoBytesACharacter) {
  EXPECT_EQ(Narrow(_T("墙a厚")),
            "\xC7\xBD"
            "a"
            "\xBA\xF1");
  EXPECT_EQ(Wide("\xC7\xBD"
                 "a"
                 "\xBA\xF1"),
            "墙a厚");
  EXPECT_EQ(Narrow(_T("€·—￥")), "\x80\xA1\xA4\xA1\xAA\xA3\xA4");
  EXPECT_EQ(Wide("\x80\xA1\xA4\xA1\xAA\xA3\xA4"), "€·—￥");
}

TEST(CodePage, WhatHasNoCodeBecomesAQuestionMark) {
  EXPECT_EQ(Narrow(_T("aéñ☃b")), "a\xA8\xA6??b");
  const TCHAR pair[] = {0xD83D, 0xDE00, 'x', 0xDC00, 0};
  EXPECT_EQ(Narrow(pair), "??x?");
}

TEST(CodePage, BrokenBytesBecomeQuestionMarksAndSwallowNothing) {
  EXPECT_EQ(Wide("\xC7"), "?");
  EXPECT_EQ(Wide("a\xC7\nb"), "a?\nb");
  EXPECT_EQ(Wide("\xC7\x30"), "?0");
  EXPECT_EQ(Wide("\xC7\x7F"), "?\x7F");
}

TEST(CodePage, NullUnitsPass) {
  const TCHAR text[] = {'a', 0, 'b'};
  EXPECT_EQ(SuiteCodePage().ToNarrow({text, 3}), std::string("a\0b", 3));
  EXPECT_EQ(SuiteCodePage().ToText({"a\0b", 3}), (std::basic_string<TCHAR>{text, 3}));
}

TEST(CodePage, EveryUnitWithACodeComesBack) {
  int with_code = 0;
  std::uint64_t sum = 0;
  for (unsigned unit = 0; unit < 0x10000; ++unit) {
    const TCHAR text[] = {static_cast<TCHAR>(unit)};
    const std::string bytes = SuiteCodePage().ToNarrow({text, 1});
    if (bytes == "?" && unit != '?') continue;
    ++with_code;
    for (const char byte : bytes) sum = sum * 31 + static_cast<unsigned char>(byte);
    EXPECT_EQ(SuiteCodePage().ToText(bytes), (std::basic_string<TCHAR>{text, 1})) << unit;
  }
  // The whole table, the same on every system.
  EXPECT_EQ(with_code, 24069);
  EXPECT_EQ(sum, 12874530597326239306U);
}

}  // namespace
}  // namespace lorv
