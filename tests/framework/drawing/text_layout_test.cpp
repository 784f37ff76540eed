#include "framework/drawing/text_layout.h"

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
