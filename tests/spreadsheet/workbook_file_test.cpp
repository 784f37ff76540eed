#include "spreadsheet/workbook_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "compress/zip/zip_reader.h"
#include "framework/objects/exceptions.h"
#include "platform/headless/services/headless_platform.h"
#include "tests/support/print.h"

namespace lorv {
namespace {

using test::Utf8;
using Texts = std::vector<std::string>;

constexpr LPCTSTR kPath = _T("C:\\b.xlsx");

class WholeWorkbook : public testing::Test {
 protected:
  static Texts Row(const WorkbookFile& from, long row, int sheet = 0) {
    Texts texts;
    for (const CString& text : from.RowTexts(sheet, row)) texts.push_back(Utf8(text));
    return texts;
  }

  WorkbookFile Reread() {
    machine.files.Put(kPath, book.Bytes());
    return WorkbookFile(kPath);
  }

  // A part of the file that the workbook makes.
  std::string Part(const char* name) const {
    const std::string bytes = book.Bytes();
    ZipReader zip;
    ZipEntry entry;
    EXPECT_EQ(zip.Open(bytes.data(), bytes.size()), kZipOk);
    EXPECT_EQ(zip.FindItem(name, false, entry), kZipOk) << name;
    std::string xml(static_cast<std::size_t>(entry.size), '\0');
    zip.UnzipItem(entry.index, xml.data(), xml.size());
    return xml;
  }

  template <class Body>
  static std::string RefusalOf(Body&& body) {
    try {
      body();
      return {};
    } catch (COleDispatchException* failure) {
      std::string text = Utf8(failure->m_strDescription);
      failure->Delete();
      return text;
    }
  }

  HeadlessPlatform machine;
  ScopedPlatform platform{machine.Ports()};
  WorkbookFile book;
};

TEST_F(WholeWorkbook, HeaderExample) {
  book.AddSheet(_T("清单"));
  book.Put(0, 0, 0, _variant_t(1.5));
  EXPECT_EQ(Row(book, 0), Texts{"1.5"});
}

TEST_F(WholeWorkbook, ValuesAreTextsWithAllTheirDigits) {
  book.AddSheet(_T("a"));
  book.Put(0, 0, 0, _variant_t(0.1 + 0.2), {_T("0.00")});
  book.Put(0, 0, 1, _variant_t(_T("007")));
  book.Put(0, 0, 3, _variant_t(true));
  book.Put(0, 0, 4, _variant_t(45358.0), {_T("yyyy-mm-dd")});
  book.Put(0, 0, 5, _variant_t(45358.5625), {_T("yyyy-mm-dd hh:mm")});
  book.Put(0, 0, 6, _variant_t(0.25), {_T("hh:mm")});
  book.Put(0, 0, 7, _variant_t(long{DISP_E_PARAMNOTFOUND}, VT_ERROR));
  book.Put(0, 0, 8, _variant_t(-1e300));
  const Texts expected = {"0.30000000000000004", "007",  "",     "TRUE",   "2024-03-07",
                          "2024-03-07 13:30:00", "0.25", "#N/A", "-1e+300"};
  EXPECT_EQ(Row(book, 0), expected);
  EXPECT_EQ(Row(Reread(), 0), expected);
}

TEST_F(WholeWorkbook, RowsEndWithTheLastValue) {
  book.AddSheet(_T("a"));
  EXPECT_EQ(book.RowCount(0), 0);
  book.Put(0, 4, 2, _variant_t(_T("x")));
  book.Put(0, 4, 9, _variant_t(), {_T("0.00")});
  book.Put(0, 90000, 0, _variant_t(), {_T("0.00")});
  EXPECT_EQ(book.RowCount(0), 5);
  EXPECT_EQ(Row(book, 4), (Texts{"", "", "x"}));
  EXPECT_TRUE(Row(book, 3).empty());
  EXPECT_TRUE(Row(book, 5).empty());
  EXPECT_TRUE(Row(book, 90000).empty());
}

// Cells lie in blocks; a row may begin in one and end in the next.
TEST_F(WholeWorkbook, ARowOfThousandsOfCellsIsReadWhole) {
  book.AddSheet(_T("a"));
  for (int column = 0; column < 16384; ++column)
    book.Put(0, 1, column, _variant_t(static_cast<double>(column)));
  book.Put(0, 2, 0, _variant_t(_T("next")));
  const Texts row = Row(Reread(), 1);
  ASSERT_EQ(row.size(), 16384U);
  for (std::size_t column = 0; column < row.size(); ++column) ASSERT_EQ(row[column], std::to_string(column));
  EXPECT_EQ(Row(book, 2), Texts{"next"});
}

TEST_F(WholeWorkbook, SheetsStandWhereTheyWereAdded) {
  EXPECT_EQ(book.AddSheet(_T("b")), 0);
  EXPECT_EQ(book.AddSheet(_T("c")), 1);
  EXPECT_EQ(book.AddSheet(_T("a"), 0), 0);
  ASSERT_EQ(book.SheetCount(), 3);
  const WorkbookFile read = Reread();
  EXPECT_EQ(Utf8(read.SheetName(0)) + Utf8(read.SheetName(1)) + Utf8(read.SheetName(2)), "abc");
}

TEST_F(WholeWorkbook, ARefusedNameLeavesNoSheet) {
  book.AddSheet(_T("清单"));
  EXPECT_NE(RefusalOf([&] { book.AddSheet(_T("a/b")); }), "");
  EXPECT_NE(RefusalOf([&] { book.AddSheet(_T("清单")); }), "");
  EXPECT_NE(RefusalOf([&] { book.AddSheet(CString()); }), "");
  EXPECT_EQ(book.SheetCount(), 1);
}

TEST_F(WholeWorkbook, PlacesAndValuesBeyondASheetAreRefused) {
  book.AddSheet(_T("a"));
  const auto put = [&](long row, int column, const _variant_t& value) {
    return RefusalOf([&] { book.Put(0, row, column, value); });
  };
  EXPECT_EQ(put(1048575, 16383, _variant_t(1.0)), "");
  EXPECT_NE(put(1048576, 0, _variant_t(1.0)), "");
  EXPECT_NE(put(0, 16384, _variant_t(1.0)), "");
  EXPECT_NE(put(-1, 0, _variant_t(1.0)), "");
  EXPECT_NE(put(0, -1, _variant_t(1.0)), "");
  EXPECT_NE(put(0, 0, _variant_t(std::numeric_limits<double>::infinity())), "");
  EXPECT_EQ(put(0, 0, _variant_t(CString(_T('x'), 32767))), "");
  EXPECT_NE(put(0, 0, _variant_t(CString(_T('x'), 32768))), "");
  EXPECT_NE(RefusalOf([&] { book.SetRowLevel(0, 1048576, 1); }), "");
  EXPECT_NE(RefusalOf([&] { book.SetWidth(0, 16384, 1); }), "");
}

TEST_F(WholeWorkbook, WidthsAreThoseOfThePrograms) {
  book.AddSheet(_T("a"));
  const auto set = [&](double width) { return RefusalOf([&] { book.SetWidth(0, 2, width); }); };
  const auto columns = [&] {
    const std::string sheet = Part("xl/worksheets/sheet1.xml");
    const std::size_t at = sheet.find("<cols>");
    return at == std::string::npos ? std::string() : sheet.substr(at + 6, sheet.find("</cols>") - at - 6);
  };
  EXPECT_EQ(set(255), "");
  EXPECT_NE(columns().find("width=\"255.7"), std::string::npos) << columns();
  for (const double wrong :
       {-0.001, -1.0, 255.001, 1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_EQ(set(wrong), "列宽须为0至255。") << wrong;
  }
  EXPECT_NE(columns().find("width=\"255.7"), std::string::npos) << columns();
  EXPECT_EQ(set(0.5), "");
  EXPECT_NE(columns().find("width=\"1.2"), std::string::npos) << columns();
  // Hidden, and as wide as before when its user shows it again.
  EXPECT_EQ(set(0), "");
  EXPECT_NE(columns().find("width=\"1.2"), std::string::npos) << columns();
  EXPECT_NE(columns().find("hidden=\"1\""), std::string::npos) << columns();
  EXPECT_EQ(set(20), "");
  EXPECT_EQ(columns().find("hidden"), std::string::npos) << columns();
}

class SavedWorkbook : public WholeWorkbook {
 protected:
  SavedWorkbook() {
    machine.files.Put(kPath, "old");
    for (int sheet = 0; sheet < 3; ++sheet) {
      book.AddSheet(sheet == 0 ? _T("a") : sheet == 1 ? _T("b") : _T("c"));
      for (long row = 0; row < 5000; ++row)
        book.Put(sheet, row, 0, _variant_t(_T("a text that fills the blocks")));
    }
  }
};

TEST_F(SavedWorkbook, ProgressGoesUpToAllCells) {
  std::vector<std::uint64_t> reported;
  EXPECT_TRUE(book.Save(kPath, [&](std::uint64_t cells, std::uint64_t all) {
    EXPECT_EQ(all, 15000U);
    reported.push_back(cells);
    return true;
  }));
  EXPECT_GT(reported.size(), 12U);
  EXPECT_TRUE(std::is_sorted(reported.begin(), reported.end()));
  EXPECT_EQ(reported.back(), 15000U);
  EXPECT_EQ(WorkbookFile(kPath).RowCount(2), 5000);
  // What is reported changes nothing in the file.
  EXPECT_EQ(machine.files.BytesOf(kPath).size(), book.Bytes().size());
}

TEST_F(SavedWorkbook, EndedAtAnyPointTheOldFileStays) {
  for (int point = 1;; ++point) {
    int asked = 0;
    const bool saved =
        book.Save(kPath, [&](std::uint64_t /*cells*/, std::uint64_t /*all*/) { return ++asked < point; });
    if (saved) {
      EXPECT_LT(asked, point);
      EXPECT_GT(point, 12);
      break;
    }
    EXPECT_EQ(asked, point) << "nobody is asked again";
    EXPECT_EQ(machine.files.BytesOf(kPath), "old");
  }
  EXPECT_NE(machine.files.BytesOf(kPath), "old");
  EXPECT_EQ(book.Bytes([](std::uint64_t, std::uint64_t) { return false; }), "");
}

TEST_F(SavedWorkbook, AFullDiskLeavesTheOldFile) {
  machine.files.room_left = 100;
  EXPECT_NE(RefusalOf([&] { book.Save(kPath); }), "");
  EXPECT_EQ(machine.files.BytesOf(kPath), "old");
}

TEST_F(WholeWorkbook, GroupsBoldWidthsAndFrozenRowsAreWritten) {
  book.AddSheet(_T("a"));
  book.Put(0, 0, 0, _variant_t(_T("title")), {CString(), true});
  book.Put(0, 1, 0, _variant_t(2.5), {_T("0.00")});
  book.Put(0, 2, 0, _variant_t(2.5), {_T("0.00"), true});
  book.SetRowLevel(0, 1, 2);
  book.SetRowLevel(0, 2, 99);  // as deep as programs show
  book.SetRowLevel(0, 0, -1);
  book.SetWidth(0, 0, 20);
  book.FreezeRows(0, 1);
  const std::string sheet = Part("xl/worksheets/sheet1.xml");
  EXPECT_NE(sheet.find("<row r=\"1\">"), std::string::npos) << sheet;
  EXPECT_NE(sheet.find("<row r=\"2\" outlineLevel=\"2\">"), std::string::npos);
  EXPECT_NE(sheet.find("<row r=\"3\" outlineLevel=\"7\">"), std::string::npos);
  EXPECT_NE(sheet.find("<sheetFormatPr defaultRowHeight=\"15\" outlineLevelRow=\"7\"/>"), std::string::npos);
  EXPECT_NE(sheet.find("<pane ySplit=\"1\" topLeftCell=\"A2\" activePane=\"bottomLeft\" state=\"frozen\"/>"),
            std::string::npos);
  EXPECT_NE(sheet.find("<col min=\"1\" max=\"1\" width=\"20.71"), std::string::npos);
  const std::string styles = Part("xl/styles.xml");
  EXPECT_NE(styles.find("<fonts count=\"2\">"), std::string::npos) << styles;
  EXPECT_NE(styles.find("<font><b/><sz val=\"11\"/>"), std::string::npos);
  EXPECT_EQ(Row(Reread(), 2), Texts{"2.5"});
}

TEST_F(WholeWorkbook, ASheetWithoutGroupsSaysNothingOfThem) {
  book.AddSheet(_T("a"));
  book.Put(0, 0, 0, _variant_t(1.0));
  EXPECT_EQ(Part("xl/worksheets/sheet1.xml").find("outline"), std::string::npos);
  EXPECT_EQ(Part("xl/styles.xml").find("<b/>"), std::string::npos);
}

TEST_F(WholeWorkbook, WhatIsNoWorkbookIsRefused) {
  EXPECT_NE(RefusalOf([] { WorkbookFile none(_T("C:\\none.xlsx")); }), "");
  machine.files.Put(kPath, "PK\x03\x04 and no more");
  EXPECT_NE(RefusalOf([] { WorkbookFile damaged(kPath); }), "");
}

}  // namespace
}  // namespace lorv
