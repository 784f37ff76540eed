#include "gridcore/items/check_item.h"

#include "gridcore/editors/mask_edit.h"
#include "gridcore/items/color_item.h"
#include "tests/gridcore/control/grid_desk.h"

namespace {

using CheckItem = lorv_test::GridDesk;
using ColorItem = lorv_test::GridDesk;
using MaskEdit = lorv_test::Desk;

}  // namespace

TEST_F(CheckItem, HeaderExample) {
  EXPECT_EQ(CBCGPGridCheckItem(true, 0).FormatItem(), _T("-1"));
}

TEST_F(CheckItem, ClickAndSpaceTurnItOver) {
  Fill(2, 1);
  auto* box = new CBCGPGridCheckItem(false);
  grid->GetRow(0)->ReplaceItem(0, box);
  ClickOn(0, 0);
  EXPECT_TRUE(box->IsOn());
  EXPECT_EQ(grid->Taken().back(), "changed 0,0 -1");
  Key(VK_SPACE);
  EXPECT_FALSE(box->IsOn());
  Key(VK_F2);
  EXPECT_EQ(grid->GetInPlaceWnd(), nullptr);
  box->AllowEdit(FALSE);
  ClickOn(0, 0);
  EXPECT_FALSE(box->IsOn());
}

TEST_F(CheckItem, EmptyIsOffAndSoIsATextThatIsNoTruth) {
  CBCGPGridCheckItem box(true);
  box.SetValue(_variant_t());
  EXPECT_FALSE(box.IsOn());
  box.SetValue(_variant_t(_T("梁")));
  EXPECT_FALSE(box.IsOn());
  EXPECT_EQ(box.GetValue().vt, VT_BSTR) << "asking changes nothing";
}

TEST_F(ColorItem, HeaderExamples) {
  EXPECT_EQ(CBCGPGridColorItem(RGB(255, 0, 0), nullptr, 0).FormatItem(), _T("FF0000"));
  EXPECT_EQ(lorv::ColourOfText(_T("FF0000"), 0), RGB(255, 0, 0));
}

TEST_F(ColorItem, ReadsPartsAsTheyCome) {
  const COLORREF before = RGB(1, 2, 3);
  EXPECT_EQ(lorv::ColourOfText(_T(""), before), before);
  EXPECT_EQ(lorv::ColourOfText(_T("G"), before), before);
  EXPECT_EQ(lorv::ColourOfText(_T("0aBc"), before), RGB(0x0A, 0xBC, 3));
  EXPECT_EQ(lorv::ColourOfText(_T("F    "), before), RGB(15, 2, 3));
  EXPECT_EQ(lorv::ColourOfText(_T("102030405060"), before), RGB(0x10, 0x20, 0x30));
}

TEST_F(ColorItem, AutomaticColourHasNoText) {
  CBCGPGridColorItem item(lorv::kNoColour, nullptr);
  EXPECT_EQ(item.FormatItem(), _T(""));
  item.SetColor(RGB(0, 16, 255));
  EXPECT_EQ(item.FormatItem(), _T("0010FF"));
  item.SetValue(_variant_t(_T("no number")));
  EXPECT_EQ(item.GetColor(), lorv::kNoColour);
}

TEST_F(MaskEdit, TakesOnlyWhatThePlaceAllows) {
  CBCGPMaskEdit edit;
  edit.EnableMask(_T("DdCcAa*"), _T("_______"));
  const std::pair<int, const TCHAR*> good[] = {{0, _T("09")}, {1, _T("5 ")}, {2, _T("aZ")},    {3, _T("b ")},
                                               {4, _T("a0")}, {5, _T("z ")}, {6, _T("梁 %a0")}};
  for (const auto& [place, text] : good)
    for (const TCHAR* c = text; *c != 0; ++c) EXPECT_TRUE(edit.Takes(place, *c)) << place;
  const std::pair<int, const TCHAR*> bad[] = {{0, _T("a ")}, {1, _T("x")}, {2, _T("1 梁")}, {3, _T("1")},
                                              {4, _T(" %")}, {5, _T("%")}, {7, _T("1")},    {-1, _T("1")}};
  for (const auto& [place, text] : bad)
    for (const TCHAR* c = text; *c != 0; ++c) EXPECT_FALSE(edit.Takes(place, *c)) << place;
}

TEST_F(MaskEdit, TypingOverwrites) {
  CBCGPMaskEdit edit;
  edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &top, 5);
  edit.EnableMask(_T("AA AA"), _T("__-__"), _T(' '));
  edit.SetValidChars(_T("0123456789ABCDEF"));
  edit.SetFocus();
  desktop.Type(_T("1G2A"));
  Run();
  EXPECT_EQ(TextOf(edit), _T("12-A"));
  edit.SetSel(0, 1);
  desktop.Type(_T("F"));
  Run();
  EXPECT_EQ(TextOf(edit), _T("F2-A"));
  desktop.Press(VK_DELETE);
  Run();
  EXPECT_EQ(TextOf(edit), _T("F -A"));
  desktop.Press(VK_BACK);
  Run();
  EXPECT_EQ(TextOf(edit), _T("  -A"));
}

TEST_F(MaskEdit, PasteKeepsToTheMask) {
  CBCGPMaskEdit edit;
  edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 90, 20), &top, 5);
  edit.EnableMask(_T("DD"), _T("__"), _T(' '));
  desktop.SetClipboardText(_T("x1y23"));
  edit.Paste();
  EXPECT_EQ(TextOf(edit), _T("12"));
}
