#include "grid/export/text_export.h"

#include "tests/grid/suite_desk.h"

namespace {

class TextExports : public lorv_test::SuiteDesk<CBCGPBasicGridCtrl> {
 protected:
  TextExports() {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    Run();
  }
  std::string Exported(const lorv::TextExport& how = {}) {
    std::string all;
    EXPECT_TRUE(lorv::ExportText(*grid, how, [&](std::string_view piece) { return all += piece, true; }));
    return all;
  }
};

}  // namespace

TEST_F(TextExports, QuoteWhatWouldBeReadOtherwise) {
  Fill(3, 2);
  Put(0, 0, _T("墙,梁"));
  Put(0, 1, _T("a \"b\""));
  Put(1, 0, _T("two\r\nlines"));
  Put(1, 1, _T(" blank"));
  Put(2, 0, _T("x;y"));
  EXPECT_EQ(Exported(), "c,c\r\n\"墙,梁\",\"a \"\"b\"\"\"\r\n\"two\r\nlines\",\" blank\"\r\nx;y,21\r\n");
  lorv::TextExport how;
  how.separator = ';';
  how.column_names = false;
  EXPECT_EQ(Exported(how), "墙,梁;\"a \"\"b\"\"\"\r\n\"two\r\nlines\";\" blank\"\r\n\"x;y\";21\r\n");
}

TEST_F(TextExports, WriteWhatIsShownOrAll) {
  Fill(3, 3);
  grid->SetColumnVisible(1, FALSE);
  grid->SetRowVisible(1, false);
  grid->AdjustLayout();
  EXPECT_EQ(Exported(), "c,c\r\n0,2\r\n20,22\r\n");
  lorv::TextExport how;
  how.hidden_cells = true;
  EXPECT_EQ(Exported(how), "c,c,c\r\n0,1,2\r\n10,11,12\r\n20,21,22\r\n");
}

TEST_F(TextExports, ComeInPieces) {
  Fill(20000, 2);
  std::size_t pieces = 0;
  std::size_t longest = 0;
  EXPECT_TRUE(lorv::ExportText(*grid, {}, [&](std::string_view piece) {
    longest = std::max(longest, piece.size());
    return ++pieces > 0;
  }));
  EXPECT_GT(pieces, 3U);
  EXPECT_LT(longest, lorv::kExportPiece + 100);
}

TEST_F(TextExports, EndWhereTheWriterSaysSoOrTheGridEnds) {
  Fill(20000, 2);
  int pieces = 0;
  EXPECT_FALSE(lorv::ExportText(*grid, {}, [&](std::string_view) { return ++pieces < 2; }));
  EXPECT_EQ(pieces, 2);
  EXPECT_FALSE(lorv::ExportText(*grid, {}, [&](std::string_view) { return grid.reset(), true; }));
}

TEST_F(TextExports, NothingIsReportedAGridWithoutColumns) {
  EXPECT_FALSE(lorv::ExportText(*grid, {}, [](std::string_view) { return true; }));
  Fill(0, 1);
  EXPECT_EQ(Exported(), "c\r\n");
  grid->SetColumnVisible(0, FALSE);
  EXPECT_FALSE(lorv::ExportText(*grid, {}, [](std::string_view) { return true; }));
}
