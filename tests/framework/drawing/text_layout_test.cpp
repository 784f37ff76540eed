#include "framework/drawing/text_layout.h"

#include <initializer_list>
#include <random>

#include "platform/headless/drawing/headless_canvas.h"
#include "tests/support/headless_desk.h"

namespace {

using lorv::PlacedText;

class TextLayout : public lorv_test::Desk {
 protected:
  PlacedText Lay(LPCTSTR text, const CRect& rect, UINT flags) const {
    return lorv::LayOutText(*desktop.MakeCanvas({1, 1}), text, rect, flags);
  }
  std::vector<std::string> Lines(LPCTSTR text, int width, UINT flags) const {
    std::vector<std::string> lines;
    for (const auto& line : Lay(text, CRect(0, 0, width, 100), flags).lines)
      lines.push_back(line.text.ToUtf8());
    return lines;
  }
};

using Lines_ = std::vector<std::string>;

}  // namespace

TEST_F(TextLayout, HeaderExample) {
  EXPECT_EQ(Lay(_T("ab\ncd"), CRect(0, 0, 90, 90), 0).bounds.bottom, 32);
}

TEST_F(TextLayout, AlignsAcrossAndDown) {
  const CRect rect(10, 10, 110, 60);
  EXPECT_EQ(CPoint(Lay(_T("ab"), rect, DT_SINGLELINE).lines[0].at), CPoint(10, 10));
  EXPECT_EQ(CPoint(Lay(_T("ab"), rect, DT_SINGLELINE | DT_RIGHT | DT_BOTTOM).lines[0].at), CPoint(96, 44));
  EXPECT_EQ(CPoint(Lay(_T("梁"), rect, DT_SINGLELINE | DT_CENTER | DT_VCENTER).lines[0].at), CPoint(53, 27));
  EXPECT_EQ(CPoint(Lay(_T("ab"), rect, DT_VCENTER).lines[0].at), CPoint(10, 10));
}

TEST_F(TextLayout, BreaksAtBlanksAndBetweenIdeographs) {
  EXPECT_EQ(Lines(_T("one two three"), 56, DT_WORDBREAK), (Lines_{"one two", "three"}));
  EXPECT_EQ(Lines(_T("钢筋混凝土"), 30, DT_WORDBREAK), (Lines_{"钢筋", "混凝", "土"}));
  EXPECT_EQ(Lines(_T("abcdefgh ij"), 28, DT_WORDBREAK), (Lines_{"abcdefgh", "ij"}));
  EXPECT_EQ(Lines(_T("abcdefgh"), 28, DT_WORDBREAK | DT_EDITCONTROL), (Lines_{"abcd", "efgh"}));
  EXPECT_EQ(Lines(_T("one two"), 10, 0), Lines_{"one two"});
}

TEST_F(TextLayout, EveryLineEndCounts) {
  EXPECT_EQ(Lines(_T("a\r\nb\nc\rd"), 90, 0), (Lines_{"a", "b", "c", "d"}));
  EXPECT_EQ(Lines(_T("a\r\n\r\nb"), 90, 0), (Lines_{"a", "", "b"}));
  EXPECT_EQ(Lines(_T("a\nb"), 90, DT_SINGLELINE), Lines_{"a\nb"});
  EXPECT_EQ(Lines(_T(""), 90, 0), Lines_{""});
}

TEST_F(TextLayout, MarksOneLetter) {
  const auto placed = Lay(_T("Save && &As"), CRect(0, 0, 90, 20), DT_SINGLELINE);
  EXPECT_EQ(placed.lines[0].text, CString(_T("Save & As")));
  EXPECT_EQ(placed.lines[0].mark, 7);
  EXPECT_EQ(Lines(_T("a&b"), 90, DT_NOPREFIX), Lines_{"a&b"});
  EXPECT_EQ(Lay(_T("&a"), CRect(0, 0, 9, 9), DT_HIDEPREFIX).lines[0].mark, -1);
}

TEST_F(TextLayout, CutsWithPoints) {
  EXPECT_EQ(Lines(_T("abcdefgh"), 42, DT_SINGLELINE | DT_END_ELLIPSIS), Lines_{"abc..."});
  EXPECT_EQ(Lines(_T("abcdef"), 42, DT_SINGLELINE | DT_END_ELLIPSIS), Lines_{"abcdef"});
  EXPECT_EQ(Lines(_T("abc"), 5, DT_SINGLELINE | DT_END_ELLIPSIS), Lines_{"a..."});
  EXPECT_EQ(Lines(_T("C:\\folder\\a.txt"), 77, DT_SINGLELINE | DT_PATH_ELLIPSIS), Lines_{"C:...\\a.txt"});
}

TEST_F(TextLayout, TabsReachTheNextStop) {
  EXPECT_EQ(Lines(_T("ab\tc"), 200, DT_EXPANDTABS), Lines_{"ab      c"});
  EXPECT_EQ(Lines(_T("ab\tc"), 200, 0), Lines_{"ab\tc"});
}

TEST_F(TextLayout, ACharacterOfTwoUnitsIsNeverParted) {
  // Each half is 7 pixels wide, so every other width would part one.
  const CString text = CString::FromUtf8("\U0001F600\U0001F601\U0001F602");
  for (int width = 0; width < 60; ++width) {
    for (const UINT flags : std::initializer_list<UINT>{DT_WORDBREAK, DT_WORDBREAK | DT_EDITCONTROL,
                                                        DT_SINGLELINE | DT_END_ELLIPSIS}) {
      for (const std::string& line : Lines(text, width, flags)) {
        EXPECT_EQ(line.find("\xEF\xBF\xBD"), std::string::npos) << width << " " << flags << " " << line;
        EXPECT_FALSE(line.empty());
      }
    }
  }
  EXPECT_EQ(Lines(text, 21, DT_WORDBREAK | DT_EDITCONTROL).size(), 3U);
  EXPECT_EQ(Lines(text, 28, DT_WORDBREAK | DT_EDITCONTROL).size(), 2U);
  // Too narrow for anything: the first character stands before the dots.
  EXPECT_EQ(Lines(text, 1, DT_SINGLELINE | DT_END_ELLIPSIS), Lines_{"\U0001F600..."});
}

TEST_F(TextLayout, EndsOfPathsStayWhereTheyAreShortened) {
  EXPECT_EQ(Lines(_T("C:\\suite\\sys\\a.ini"), 91, DT_SINGLELINE | DT_PATH_ELLIPSIS),
            Lines_{"C:\\s...\\a.ini"});
  // Without a folder it is shortened at its end.
  EXPECT_EQ(Lines(_T("abcdefgh"), 49, DT_SINGLELINE | DT_PATH_ELLIPSIS), Lines_{"abcd..."});
}

TEST_F(TextLayout, ShortensTheLastLineOrEachOfThem) {
  EXPECT_EQ(Lines(_T("abcdefgh\nabcdefgh"), 49, DT_END_ELLIPSIS), (Lines_{"abcdefgh", "abcd..."}));
  EXPECT_EQ(Lines(_T("abcdefgh\nabcdefgh"), 49, DT_WORD_ELLIPSIS), (Lines_{"abcd...", "abcd..."}));
  EXPECT_EQ(Lines(_T("abcdefg"), 49, DT_END_ELLIPSIS), Lines_{"abcdefg"});
}

TEST_F(TextLayout, AMarkThatIsCutOffIsNotDrawn) {
  const CRect narrow(0, 0, 42, 20);
  EXPECT_EQ(Lay(_T("abc&defgh"), narrow, DT_SINGLELINE | DT_END_ELLIPSIS).lines[0].mark, -1);
  EXPECT_EQ(Lay(_T("a&bcdefgh"), narrow, DT_SINGLELINE | DT_END_ELLIPSIS).lines[0].mark, 1);
  // Of a broken text the mark stands in its own line.
  const auto placed = Lay(_T("one t&wo"), CRect(0, 0, 28, 90), DT_WORDBREAK);
  ASSERT_EQ(placed.lines.size(), 2U);
  EXPECT_EQ(placed.lines[0].mark, -1);
  EXPECT_EQ(placed.lines[1].mark, 1);
}

TEST_F(TextLayout, TabsGoToTheNextStop) {
  EXPECT_EQ(Lines(_T("a\tb"), 900, DT_SINGLELINE | DT_EXPANDTABS), Lines_{"a       b"});
  EXPECT_EQ(Lines(_T("abcdefgh\tb"), 900, DT_SINGLELINE | DT_EXPANDTABS), Lines_{"abcdefgh        b"});
  EXPECT_EQ(Lines(_T("a\tb"), 900, DT_SINGLELINE), Lines_{"a\tb"});
}

// Whatever is typed: no unit is lost but blanks at breaks, no line is wider than it must be, and the bounds
// hold every line.
TEST_F(TextLayout, BreaksLoseNothing) {
  std::mt19937 random(5);
  static constexpr LPCTSTR kUnits = _T("ab c 梁筋 d");
  for (int round = 0; round < 500; ++round) {
    CString text;
    const int length = static_cast<int>(random() % 30);
    for (int i = 0; i < length; ++i) text.AppendChar(kUnits[random() % 9]);
    const int width = static_cast<int>(random() % 80);
    for (const UINT flags : std::initializer_list<UINT>{DT_WORDBREAK, DT_WORDBREAK | DT_EDITCONTROL}) {
      const PlacedText placed = Lay(text, CRect(3, 5, 3 + width, 100), flags | DT_NOPREFIX);
      CString joined;
      for (const auto& line : placed.lines) {
        joined += line.text;
        const int wide = lorv::HeadlessExtent(line.text.View()).cx;
        const bool one_word = line.text.Find(_T(' ')) < 0;
        const bool whole = &line == &placed.lines.back() || one_word;
        EXPECT_TRUE(wide <= width || whole) << text.ToUtf8() << " in " << width << ": " << line.text.ToUtf8();
        EXPECT_GE(line.at.x, placed.bounds.left);
        EXPECT_LE(line.at.x + wide, placed.bounds.right);
      }
      CString expected = text;
      joined.Remove(_T(' '));
      expected.Remove(_T(' '));
      EXPECT_EQ(joined, expected) << text.ToUtf8() << " in " << width;
      EXPECT_EQ(placed.bounds.bottom - placed.bounds.top, 16 * static_cast<int>(placed.lines.size()));
    }
  }
}
