#include "framework/text/utf8.h"

#include <gtest/gtest.h>

#include "framework/text/surrogates.h"
#include "framework/text/utf8_bytes.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

// The units of a text, in hexadecimal.
std::string Units(const std::string& bytes) {
  std::string text;
  for (const TCHAR unit : Utf8ToText(bytes)) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "%04X ", static_cast<unsigned>(unit));
    text += hex;
  }
  return text;
}

std::string Bytes(std::initializer_list<TCHAR> units) {
  return TextToUtf8(TextView(units.begin(), units.size()));
}

TEST(Utf8, HeaderExample) {
  EXPECT_TRUE(Utf8ToText("\xE5\xA2\x99") == _T("墙"));
}

TEST(Utf8, FirstAndLastOfEveryLength) {
  EXPECT_EQ(Units(std::string("\x00\x7F", 2)), "0000 007F ");
  EXPECT_EQ(Units("\xC2\x80\xDF\xBF"), "0080 07FF ");
  EXPECT_EQ(Units("\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"), "0800 D7FF E000 FFFF ");
  EXPECT_EQ(Units("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), "D800 DC00 DBFF DFFF ");
}

TEST(Utf8, OverlongFormsAreNoCharacters) {
  EXPECT_EQ(Units("\xC0\x80"), "FFFD FFFD ");
  EXPECT_EQ(Units("\xC1\xBF"), "FFFD FFFD ");
  EXPECT_EQ(Units("\xE0\x9F\xBF"), "FFFD FFFD FFFD ");
  EXPECT_EQ(Units("\xF0\x8F\xBF\xBF"), "FFFD FFFD FFFD FFFD ");
}

TEST(Utf8, SurrogatesAndCodesBeyondTheEndAreNoCharacters) {
  EXPECT_EQ(Units("\xED\xA0\x80"), "FFFD FFFD FFFD ");
  EXPECT_EQ(Units("\xED\xBF\xBF"), "FFFD FFFD FFFD ");
  EXPECT_EQ(Units("\xF4\x90\x80\x80"), "FFFD FFFD FFFD FFFD ");
  EXPECT_EQ(Units("\xF5\xFE\xFF"), "FFFD FFFD FFFD ");
}

TEST(Utf8, CutSequencesGiveOneMarkForEachByteAndLoseNothingBehind) {
  EXPECT_EQ(Units("\xE5"), "FFFD ");
  EXPECT_EQ(Units("\xE5\xA2"), "FFFD FFFD ");
  EXPECT_EQ(Units("\xE5"
                  "a"),
            "FFFD 0061 ");
  EXPECT_EQ(Units("\xE5\xA2"
                  "a"),
            "FFFD FFFD 0061 ");
  EXPECT_EQ(Units("\xF0\x9F\x98"), "FFFD FFFD FFFD ");
  EXPECT_EQ(Units("\xE5\xE5\xA2\x99"), "FFFD 5899 ");
  EXPECT_EQ(Units("\x80\xBF"), "FFFD FFFD ");
}

TEST(Utf8, MarkOfByteOrderIsACharacter) {
  EXPECT_EQ(Units("\xEF\xBB\xBF"
                  "a"),
            "FEFF 0061 ");
}

TEST(HasLoneHalf, HalvesWithoutTheirOtherHalf) {
  EXPECT_FALSE(HasLoneHalf(_T("a")));
  const TCHAR units[] = {0xD834, 0xDD1E, 0xD834, 0xD834, 0xDD1E};
  using View = std::basic_string_view<TCHAR>;
  EXPECT_FALSE(HasLoneHalf(View(units, 2)));
  EXPECT_TRUE(HasLoneHalf(View(units, 1)));
  EXPECT_TRUE(HasLoneHalf(View(units + 1, 1)));
  EXPECT_TRUE(HasLoneHalf(View(units, 5)));
  EXPECT_FALSE(HasLoneHalf({}));
}

TEST(Utf8, LoneSurrogatesGoOutAsMarks) {
  EXPECT_EQ(Bytes({0xD800}), "\xEF\xBF\xBD");
  EXPECT_EQ(Bytes({0xDC00}), "\xEF\xBF\xBD");
  EXPECT_EQ(Bytes({0xDC00, 0xD800}), "\xEF\xBF\xBD\xEF\xBF\xBD");
  EXPECT_EQ(Bytes({0xD800, 'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(Bytes({0xD800, 0xD800, 0xDC00}), "\xEF\xBF\xBD\xF0\x90\x80\x80");
}

TEST(Utf8, EveryCharacterGoesThereAndBack) {
  std::basic_string<TCHAR> text;
  for (std::uint32_t code = 0; code < 0x10000; ++code) {
    if (code < 0xD800 || code > 0xDFFF) text.push_back(static_cast<TCHAR>(code));
  }
  for (std::uint32_t high = 0xD800; high < 0xDC00; high += 7) {
    text.push_back(static_cast<TCHAR>(high));
    text.push_back(static_cast<TCHAR>(0xDC00 + high % 0x400));
  }
  EXPECT_TRUE(Utf8ToText(TextToUtf8(text)) == text);
}

TEST(Utf8, EmptyStaysEmpty) {
  EXPECT_TRUE(Utf8ToText("").empty());
  EXPECT_TRUE(TextToUtf8(TextView()).empty());
}

TEST(Utf8, BytesOfOneCharacterAtATime) {
  std::string out = "x";
  for (const std::uint32_t code : {0x7Fu, 0x80u, 0x7FFu, 0x800u, 0x5899u, 0xFFFFu, 0x10000u, 0x10FFFFu})
    AppendUtf8(out, code);
  EXPECT_EQ(out, "x\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xE5\xA2\x99\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
  out.clear();
  AppendUtf8(out, 0xD800);
  EXPECT_EQ(out, "\xED\xA0\x80") << "a lone half is not looked at";
}

}  // namespace
}  // namespace lorv
