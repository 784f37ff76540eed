#include "tools/lorv/screen/display_width.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sstream>

#include "tools/lorv/screen/column_text.h"
#include "tools/lorv/screen/progress_bar.h"
#include "tools/lorv/text/json_text.h"

namespace lorv::tool {
namespace {

TEST(DisplayWidth, CountsColumnsOfATerminal) {
  const struct {
    const char* text;
    int columns;
  } rows[] = {{"", 0},          {"W1", 2},           {"墙", 2},
              {"墙 W1", 5},     {"（）", 4},         {"é", 1},
              {"e\xCC\x81", 1}, {"Länge", 5},        {"\xF0\xA0\x80\x80", 2},
              {"한글", 4},      {"\xEF\xBD\xB1", 1}, {"\xE2\x80\x8B", 0},
              {"\t", 0},        {"\xFF", 1}};
  for (const auto& row : rows) EXPECT_EQ(DisplayWidth(row.text), row.columns) << row.text;
}

TEST(DisplayWidth, WhatNoCharacterIsAssignedToIsNarrowButInBlocksOfChinese) {
  for (const char32_t c :
       {0x0378u, 0x0DF5u, 0xAA37u, 0xE000u, 0xFDD0u, 0xFFFFu, 0x1000Cu, 0x1FBFAu, 0xE00FFu})
    EXPECT_EQ(DisplayWidth(c), 1) << static_cast<unsigned>(c);
  for (const char32_t c : {0x1100u, 0x3400u, 0x9FFFu, 0xAC00u, 0xD7A3u, 0xFA6Eu, 0xFF01u, 0x1F600u, 0x3FFFDu})
    EXPECT_EQ(DisplayWidth(c), 2) << static_cast<unsigned>(c);
  // Beside what is wide: the last syllable of Hangul, the last character of a plane.
  EXPECT_EQ(DisplayWidth(char32_t{0xD7A4}), 1);
  EXPECT_EQ(DisplayWidth(char32_t{0x2FFFE}), 1);
}

TEST(DisplayWidth, BrokenBytesAreTakenOneByOne) {
  std::string_view text = "\xE5\xA2墙\xC0";
  EXPECT_EQ(TakeCharacter(text), 0xFFFDu);
  EXPECT_EQ(TakeCharacter(text), 0xFFFDu);
  EXPECT_EQ(TakeCharacter(text), U'墙');
  EXPECT_EQ(TakeCharacter(text), 0xFFFDu);
  EXPECT_TRUE(text.empty());
}

TEST(DisplayWidth, PaddingCountsColumns) {
  EXPECT_EQ(PadRight("墙", 4), "墙  ");
  EXPECT_EQ(PadLeft("1.5", 5), "  1.5");
  EXPECT_EQ(PadLeft("123456", 3), "123456");
}

TEST(DisplayWidth, ControlsCannotReachTheTerminal) {
  EXPECT_EQ(Printable("a\x1B[31mb\r\n\tc\x7F"), "a [31mb   c ");
  EXPECT_EQ(Printable("\xFF"), "\xEF\xBF\xBD");
}

TEST(DisplayWidth, ShortenedTextEndsInPoints) {
  EXPECT_EQ(Shortened("abcdef", 6), "abcdef");
  EXPECT_EQ(Shortened("abcdefg", 6), "abc...");
  EXPECT_EQ(Shortened("墙墙墙墙", 6), "墙...");
}

TEST(ColumnText, AlignsChineseAndNumbers) {
  TextTable table({{"Class"}, {"Total", TextTable::Side::kRight}});
  table.Add({"墙", "12.5"});
  table.AddLine();
  table.Add({"Window", "3"});
  std::ostringstream out;
  table.Print(out);
  EXPECT_EQ(out.str(), "Class   Total\n-------------\n墙       12.5\n-------------\nWindow      3\n");
}

TEST(JsonText, HeaderExample) {
  JsonText j;
  j.Open('{');
  j.Key("a").Number(1.5);
  j.Close('}');
  EXPECT_EQ(j.Text(), "{\n  \"a\": 1.5\n}\n");
}

TEST(JsonText, EscapesAndNestsAsJsonWantsIt) {
  JsonText json;
  json.Open('[');
  json.String("a\"b\\c\nd\x01墙");
  json.Number(1e300 * 1e300);
  json.Bool(true);
  json.Open('[');
  json.Close(']');
  json.Close(']');
  EXPECT_EQ(json.Text(), "[\n  \"a\\\"b\\\\c\\nd\\u0001墙\",\n  null,\n  true,\n  []\n]\n");
}

TEST(JsonText, NumbersComeBackTheSame) {
  EXPECT_EQ(ShortestReal(0.1), "0.1");
  EXPECT_EQ(ShortestReal(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(PlainReal(0.1 + 0.2), "0.3");
  EXPECT_EQ(PlainReal(-0.0), "0");
}

// What a bar leaves on the error stream in 0.8 seconds of work.
std::string BarOf(bool terminal, std::uint64_t size) {
  std::istringstream in;
  std::ostringstream out, err;
  Console console{in, out, err, terminal, 40};
  {
    ProgressBar bar(console, size);
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(800);
    while (std::chrono::steady_clock::now() < end) bar.Show(size / 2);
  }
  return err.str();
}

TEST(ProgressBar, ShowsItsShareAndLeavesNothingBehind) {
  const std::string drawn = BarOf(true, 1000);
  EXPECT_NE(drawn.find("\r[##############...............] 50 %"), std::string::npos) << drawn;
  EXPECT_EQ(drawn.substr(drawn.size() - 41), "\r" + std::string(39, ' ') + "\r");
}

TEST(ProgressBar, IsSilentWithoutATerminalOrASize) {
  EXPECT_EQ(BarOf(false, 1000), "");
  EXPECT_EQ(BarOf(true, 0), "");
}

}  // namespace
}  // namespace lorv::tool
