#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>

#include "compress/zip/zip_writer.h"
#include "framework/objects/exceptions.h"
#include "spreadsheet/servers/engine/areas/cell_reference.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/styles/number_format_kind.h"
#include "spreadsheet/workbook_file.h"
#include "tests/spreadsheet/exchange_desk.h"
#include "tests/spreadsheet/random_table.h"

namespace lorv::engine {
namespace {

using test::RowsOf;
using test::Utf8;
using Texts = std::vector<std::string>;
using Rows = std::vector<Texts>;

constexpr LPCTSTR kPath = _T("C:\\f.xlsx");

class EngineFiles : public test::ExchangeDesk {
 protected:
  // The message to the user when the file is read; empty where it is read.
  static std::string Refusal() {
    try {
      book = ReadWorkbook(kPath);
      return {};
    } catch (COleDispatchException* failure) {
      std::string text = Utf8(failure->m_strDescription);
      failure->Delete();
      return text;
    }
  }

  void PutParts(const std::vector<std::pair<std::string, std::string>>& parts) {
    ZipWriter zip;
    zip.Create(nullptr, 0);
    for (const auto& [name, xml] : parts) zip.Add(name.c_str(), xml.data(), xml.size());
    zip.Close();
    const void* data = nullptr;
    std::size_t size = 0;
    zip.GetMemory(data, size);
    machine.files.Put(kPath, std::string(static_cast<const char*>(data), size));
  }

  // A workbook of one sheet with this content, and these texts and styles.
  void PutSheet(const std::string& inside, const std::string& shared = "", const std::string& styles = "",
                const std::string& workbook = "<workbookPr/>") {
    PutParts({{"xl/workbook.xml", "<workbook xmlns:r='r'>" + workbook +
                                      "<sheets><sheet name='S' sheetId='1' r:id='a'/></sheets></workbook>"},
              {"xl/_rels/workbook.xml.rels",
               "<Relationships><Relationship Id='a' Type='x/worksheet' Target='worksheets/sheet1.xml'/>"
               "<Relationship Id='b' Type='x/sharedStrings' Target='sharedStrings.xml'/>"
               "<Relationship Id='c' Type='x/styles' Target='/xl/styles.xml'/></Relationships>"},
              {"xl/sharedStrings.xml", "<sst>" + shared + "</sst>"},
              {"xl/styles.xml", "<styleSheet>" + styles + "</styleSheet>"},
              {"xl/worksheets/sheet1.xml", "<worksheet>" + inside + "</worksheet>"}});
  }

  static std::string At(long row, long column) {
    return Utf8(VariantToText(CellValue(*book, *book->sheets[0], row, column)));
  }

  static std::shared_ptr<Book> book;
};

std::shared_ptr<Book> EngineFiles::book;

TEST_F(EngineFiles, KindsOfCells) {
  PutSheet(
      "<sheetData><row r='2'><c r='B2' t='s'><v>0</v></c><c r='C2' t='s'><v> 1 </v></c>"
      "<c t='inlineStr'><is><r><t>in</t></r><r><t xml:space='preserve'> line</t></r></is></c>"
      "<c t='str'><f>A1</f><v>&lt;f&gt;</v></c><c t='b'><v>1</v></c><c t='b'><v>true</v></c>"
      "<c t='e'><v>#REF!</v></c><c><f>1+1</f><v>2.5</v></c><c t='n'><v>1E3</v></c><c><v>12x</v></c>"
      "<c t='d'><v>2024-03-07T12:00:00</v></c></row><row><c><v>7</v></c></row></sheetData>",
      "<si><t>sh&#97;red</t></si><si><r><t>ri</t></r><rPh><t>aid</t></rPh><r><t>ch\r\n_x0041__x000D_</t></"
      "r></si>");
  ASSERT_EQ(Refusal(), "");
  EXPECT_EQ(At(1, 1), "shared");
  EXPECT_EQ(At(1, 2), "rich\nA\r");
  EXPECT_EQ(At(1, 3), "in line");
  EXPECT_EQ(At(1, 4), "<f>");
  EXPECT_EQ(CellValue(*book, *book->sheets[0], 1, 5).vt, VT_BOOL);
  EXPECT_EQ(CellValue(*book, *book->sheets[0], 1, 6).boolVal, VARIANT_TRUE);
  EXPECT_EQ(CellValue(*book, *book->sheets[0], 1, 7).vt, VT_ERROR);
  EXPECT_EQ(At(1, 8), "2.5");
  EXPECT_EQ(At(1, 9), "1000");
  EXPECT_EQ(At(1, 10), "12x");
  EXPECT_EQ(At(1, 11), "45358.5");
  EXPECT_EQ(At(2, 0), "7");
  EXPECT_EQ(book->sheets[0]->UsedArea(), (Area{1, 0, 2, 11}));
}

TEST_F(EngineFiles, FormatsWidthsMergesAndTheDateSystem) {
  const std::string sheet =
      "<cols><col min='2' max='3' width='20.7109375' customWidth='1'/><col min='4' max='16384' "
      "hidden='true'/></cols>"
      "<sheetData><row r='1'><c r='A1' s='1'><v>1</v></c><c r='B1' s='2'><v>2</v></c><c "
      "s='9'><v>3</v></c></row></sheetData>"
      "<mergeCells><mergeCell ref='A1:B2'/><mergeCell ref='$C$3:D4'/><mergeCell ref='B2:C3'/></mergeCells>";
  const std::string styles =
      "<numFmts><numFmt numFmtId='170' formatCode='yyyy\\-mm\\-dd'/></numFmts><fonts><font><sz "
      "val='11'/></font>"
      "<font><sz val='14'/></font></fonts><cellStyleXfs><xf numFmtId='9'/></cellStyleXfs>"
      "<cellXfs><xf numFmtId='0'/><xf numFmtId='170' fontId='1'><alignment horizontal='center'/></xf>"
      "<xf numFmtId='10'/></cellXfs>";
  PutSheet(sheet, "", styles, "<workbookPr date1904='1'/>");
  ASSERT_EQ(Refusal(), "");
  const Sheet& read = *book->sheets[0];
  const _variant_t date = CellValue(*book, read, 0, 0);
  EXPECT_EQ(date.vt, VT_DATE);
  EXPECT_EQ(date.date, 1463);
  const CellStyle& style = StyleOf(*book, read, 0, 0);
  EXPECT_EQ(Utf8(book->styles.FormatText(style.format)), "yyyy\\-mm\\-dd");
  EXPECT_EQ(style.font_size, 14);
  EXPECT_EQ(style.alignment, -4108);
  EXPECT_EQ(Utf8(book->styles.FormatText(StyleOf(*book, read, 0, 1).format)), "0.00%");
  EXPECT_EQ(StyleOf(*book, read, 0, 2).format, 0U);
  EXPECT_NEAR(read.columns.At(1).width, 20, 0.01);
  EXPECT_FALSE(read.columns.At(2).hidden);
  EXPECT_TRUE(read.columns.At(16383).hidden);
  EXPECT_EQ(read.merges.Size(), 2U);  // of two that meet the first stays
  ASSERT_NE(read.merges.Find(3, 3), nullptr);
  EXPECT_EQ(*read.merges.Find(3, 3), (Area{2, 2, 3, 3}));
  EXPECT_EQ(read.merges.Find(2, 1), nullptr);
}

TEST_F(EngineFiles, DatesWrittenOutAreTheSameDayInBothSystems) {
  const std::string sheet = "<sheetData><row><c t='d' s='1'><v>2024-03-07T12:00:00</v></c></row></sheetData>";
  const std::string styles = "<cellXfs><xf numFmtId='0'/><xf numFmtId='14'/></cellXfs>";
  for (const char* const system : {"<workbookPr/>", "<workbookPr date1904='1'/>"}) {
    PutSheet(sheet, "", styles, system);
    ASSERT_EQ(Refusal(), "");
    const _variant_t date = CellValue(*book, *book->sheets[0], 0, 0);
    EXPECT_EQ(date.vt, VT_DATE) << system;
    EXPECT_EQ(date.date, 45358.5) << system;
  }
}

TEST_F(EngineFiles, WidthsAndFontSizesBeyondThePrograms) {
  const std::string sheet =
      "<cols><col min='1' max='1' width='1e999'/><col min='2' max='2' width='-3'/><col min='3' max='3' "
      "width='300'/></cols><sheetData><row><c s='1'><v>1</v></c><c s='2'><v>2</v></c></row></sheetData>";
  const std::string styles =
      "<fonts><font><sz val='11'/></font><font><sz val='1e999'/></font><font><sz val='-4'/></font></fonts>"
      "<cellXfs><xf numFmtId='0'/><xf numFmtId='2' fontId='1'/><xf numFmtId='2' fontId='2'/></cellXfs>";
  PutSheet(sheet, "", styles);
  ASSERT_EQ(Refusal(), "");
  const Sheet& read = *book->sheets[0];
  EXPECT_EQ(read.columns.At(0).width, 255);
  EXPECT_TRUE(read.columns.At(1).hidden);
  EXPECT_EQ(read.columns.At(2).width, 255);
  EXPECT_EQ(StyleOf(*book, read, 0, 0).font_size, 0);
  EXPECT_EQ(StyleOf(*book, read, 0, 1).font_size, 0);
}

TEST_F(EngineFiles, NameSpacesAndCommentsDoNotMatter) {
  PutParts(
      {{"_rels/.rels",
        "<p:Relationships><p:Relationship Id='1' Type='http://x/officeDocument' "
        "Target='/b.xml'/></p:Relationships>"},
       {"b.xml",
        "\xEF\xBB\xBF<?xml version='1.0'?><!-- <sheet> --><x:workbook xmlns:q='q'><x:sheets>"
        "<x:sheet name='a&amp;b' q:id=\"R\" /></x:sheets></x:workbook>"},
       {"_rels/b.xml.rels",
        "<Relationships><Relationship Id='R' Type='y/worksheet' Target='./d/../S.XML'/></Relationships>"},
       {"s.xml",
        "<x:worksheet><x:sheetData><x:row><x:c t='str'><x:v><![CDATA[a<b]]>&amp;c</x:v></x:c></x:row>"
        "</x:sheetData></x:worksheet>"}});
  ASSERT_EQ(Refusal(), "");
  EXPECT_EQ(Utf8(book->sheets[0]->name), "a&b");
  EXPECT_EQ(At(0, 0), "a<b&c");
}

TEST_F(EngineFiles, HostileFilesAreRefused) {
  const auto of_sheet = [&](const std::string& inside) {
    PutSheet(inside);
    return Refusal();
  };
  const auto row = [](const std::string& cells) { return "<sheetData><row>" + cells + "</row></sheetData>"; };
  EXPECT_NE(of_sheet("<sheetData><row r='1000000000'><c><v>1</v></c></row></sheetData>"), "");
  EXPECT_NE(of_sheet("<sheetData><row r='0'><c><v>1</v></c></row></sheetData>"), "");
  EXPECT_NE(of_sheet(row("<c r='XFE1'><v>1</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c r='A1048577'><v>1</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c r='1A'><v>1</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c t='s'><v>0</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c t='s'><v>-1</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c t='str'><v>&unknown;</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c t='str'><v>&#xD800;</v></c>")), "");
  EXPECT_NE(of_sheet(row("<c t='str'><v>&amp</v></c>")), "");
  EXPECT_NE(of_sheet("<sheetData>"), "");
  EXPECT_NE(of_sheet("</worksheet><worksheet>"), "");
  EXPECT_NE(of_sheet(std::string((std::size_t{1} << 20) + 70000, 'x')), "");
  std::string deep;
  for (int i = 0; i < 300; ++i) deep += "<a>";
  EXPECT_NE(of_sheet(deep), "");
  EXPECT_EQ(of_sheet("<sheetData/>"), "");
}

TEST_F(EngineFiles, EntitiesThatUnfoldAreRefused) {
  PutSheet("");
  PutParts(
      {{"xl/workbook.xml", "<!DOCTYPE w [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;'>]><workbook>&b;</workbook>"}});
  EXPECT_EQ(Refusal(), "工作簿文件已损坏：其中的XML无效。");
}

TEST_F(EngineFiles, FilesThatAreNoWorkbooks) {
  const auto of_bytes = [&](const std::string& bytes) {
    machine.files.Put(kPath, bytes);
    return Refusal();
  };
  EXPECT_EQ(of_bytes("PK\x03\x04 and nothing more"), "文件不是有效的工作簿。");
  EXPECT_NE(of_bytes(std::string("a\0b", 3)), "");
  EXPECT_NE(of_bytes("\xD0\xCF\x11\xE0 an old workbook").find("旧的二进制格式"), std::string::npos);
  PutParts({{"a.txt", "text"}});
  EXPECT_EQ(Refusal(), "文件不是有效的工作簿。");
  PutParts({{"xl/workbook.xml", "<workbook><sheets/></workbook>"}});
  EXPECT_EQ(Refusal(), "工作簿中没有工作表。");
  machine.files.Remove(kPath);
  EXPECT_EQ(Refusal(), "找不到文件“C:\\f.xlsx”。");
  machine.files.Put(kPath, "x");
  machine.files.refused.insert(kPath);
  EXPECT_EQ(Refusal(), "无法打开文件“C:\\f.xlsx”。");
}

TEST_F(EngineFiles, RelationsInACircleEnd) {
  const std::string relations =
      "<Relationships><Relationship Id='a' Type='x/worksheet' Target='workbook.xml'/>"
      "<Relationship Id='b' Type='x/sharedStrings' Target='_rels/workbook.xml.rels'/>"
      "<Relationship Id='c' Type='x/styles' Target='../../../xl/workbook.xml'/></Relationships>";
  PutParts({{"xl/workbook.xml",
             "<workbook xmlns:r='r'><sheets><sheet name='S' r:id='a'/><sheet name='T' "
             "r:id='b'/></sheets></workbook>"},
            {"xl/_rels/workbook.xml.rels", relations}});
  ASSERT_EQ(Refusal(), "");
  EXPECT_EQ(book->sheets.size(), 1U);
  EXPECT_EQ(book->sheets[0]->cells.Size(), 0U);
}

// What a part unpacks to counts for each sheet that names it.
TEST_F(EngineFiles, SheetsThatShareAPartHaveTheirCellsEach) {
  PutParts({{"xl/workbook.xml",
             "<workbook xmlns:r='r'><sheets><sheet name='S' r:id='a'/><sheet name='T' "
             "r:id='a'/></sheets></workbook>"},
            {"xl/_rels/workbook.xml.rels",
             "<Relationships><Relationship Id='a' Type='x/worksheet' Target='s.xml'/></Relationships>"},
            {"xl/s.xml", "<worksheet><sheetData><row><c><v>1</v></c></row></sheetData></worksheet>"}});
  ASSERT_EQ(Refusal(), "");
  ASSERT_EQ(book->sheets.size(), 2U);
  EXPECT_EQ(book->sheets[1]->cells.Size(), 1U);
}

TEST_F(EngineFiles, ACutArchiveNeverCrashes) {
  PutSheet("<sheetData><row><c><v>1</v></c></row></sheetData>");
  const std::string whole = machine.files.BytesOf(kPath);
  for (std::size_t length = 0; length < whole.size(); length += 7) {
    machine.files.Put(kPath, whole.substr(0, length));
    if (length < 2) continue;
    EXPECT_NE(Refusal(), "") << length;
  }
}

TEST_F(EngineFiles, AFullDiskLeavesTheOldFile) {
  Book fresh;
  PutCellValue(fresh, *fresh.AddSheet(0), 0, 0, _variant_t(_T("new")));
  machine.files.Put(kPath, "old");
  machine.files.room_left = 100;
  EXPECT_THROW(
      {
        try {
          WriteWorkbookFile(fresh, kPath);
        } catch (COleDispatchException* failure) {
          EXPECT_EQ(Utf8(failure->m_strDescription), "无法保存文件“C:\\f.xlsx”。");
          failure->Delete();
          throw 1;
        }
      },
      int);
  EXPECT_EQ(machine.files.BytesOf(kPath), "old");
}

TEST_F(EngineFiles, ManySheets) {
  Book many;
  for (int i = 0; i < 300; ++i) many.AddSheet(many.sheets.size());
  WriteWorkbookFile(many, kPath);
  ASSERT_EQ(Refusal(), "");
  EXPECT_EQ(book->sheets.size(), 300U);
  EXPECT_EQ(Utf8(book->sheets[299]->name), "Sheet300");
}

TEST_F(EngineFiles, TextTables) {
  const auto rows_of = [&](const std::string& bytes) {
    machine.files.Put(kPath, bytes);
    EXPECT_EQ(Refusal(), "");
    std::string all;
    for (const auto& block : book->sheets[0]->cells.Blocks()) {
      for (const auto& cell : block) {
        all += std::to_string(cell.row()) + std::to_string(cell.column()) + "=" +
               At(cell.row(), cell.column()) + " ";
      }
    }
    return all;
  };
  EXPECT_EQ(rows_of("a,007\r\n\"x \"\"y\"\",\n\",z\r\rlast"), "00=a 01=007 10=x \"y\",\n 11=z 30=last ");
  EXPECT_EQ(rows_of("a\tb,c\td\n"), "00=a 01=b,c 02=d ");
  EXPECT_EQ(rows_of("\xEF\xBB\xBF墙,1"), "00=墙 01=1 ");
  EXPECT_EQ(rows_of("\xC7\xBD\xBA\xF1,1"), "00=墙厚 01=1 ");  // no UTF-8: code page 936
  EXPECT_EQ(rows_of(std::string("\xFF\xFE\x99\x58,\0001\0", 8)), "00=墙 01=1 ");
  EXPECT_EQ(rows_of("\"open"), "00=open ");
  EXPECT_EQ(rows_of(""), "");
  EXPECT_EQ(Utf8(book->sheets[0]->name), "f");
}

TEST(CellReference, LettersAndNumbers) {
  char letters[4] = {};
  for (long column = 0; column < 16384; ++column) {
    const int length = ColumnLetters(column, letters);
    const auto place = ParseCell(std::string(letters, static_cast<std::size_t>(length)) + "1");
    ASSERT_TRUE(place);
    EXPECT_EQ(place->column, column);
  }
  for (const char* wrong :
       {"", "A", "1", "A0", "A1B", "XFE1", "A1048577", "AAAAAAAAAAAAAAAA1", "A99999999999", "A-1"}) {
    EXPECT_FALSE(ParseCell(std::string_view(wrong))) << wrong;
  }
  EXPECT_EQ(*ParseArea("C4:B2"), (Area{1, 1, 3, 2}));
  EXPECT_FALSE(ParseArea("B2:"));
}

TEST_F(EngineFiles, WhatIsDrawnIsUsed) {
  const std::string styles =
      "<fills><fill><patternFill patternType='none'/></fill><fill><patternFill "
      "patternType='solid'/></fill></fills>"
      "<borders><border><left/></border><border><left style='none'/><top style='thin'/></border></borders>"
      "<cellXfs><xf/><xf borderId='1'/><xf fillId='1'/><xf borderId='7' fillId='7'/><xf fontId='1' "
      "borderId='1'/>"
      "</cellXfs>";
  const std::string columns = "<cols><col min='8' max='9' width='9' style='1'/></cols>";
  const auto used = [&](const std::string& rows) {
    PutSheet(columns + "<sheetData>" + rows + "</sheetData>", "<si><t></t></si>", styles);
    EXPECT_EQ(Refusal(), "");
    return book->sheets[0]->UsedArea();
  };
  const std::string value = "<row r='3'><c r='C3'><v>1</v></c></row>";
  EXPECT_EQ(used(value + "<row r='5'><c r='B5' s='1'/></row>"), (Area{2, 1, 4, 2}));
  EXPECT_EQ(used("<row r='1'><c r='D1' s='2'/></row>" + value), (Area{0, 2, 2, 3}));
  EXPECT_EQ(used(value + "<row r='5'><c r='B5' s='3'/><c r='D5'/></row>"), (Area{2, 2, 2, 2}));
  // A formula or a text may be empty.
  EXPECT_EQ(used(value + "<row r='4'><c r='A4' t='str'><f>A1</f></c></row>"), (Area{2, 0, 3, 2}));
  EXPECT_EQ(used(value + "<row r='4'><c r='D4' t='s'><v>0</v></c></row>"), (Area{2, 2, 3, 3}));
  // What is drawn as its whole column goes on to the last row of the sheet.
  EXPECT_EQ(used(value + "<row r='9'><c r='H9' s='1'/><c r='I9' s='4'/></row>"), (Area{2, 2, 2, 2}));
  EXPECT_EQ(used(value + "<row r='9'><c r='H9' s='2'/></row>"), (Area{2, 2, 8, 7}));
  // Rows have their height only, and none where there is no cell.
  EXPECT_EQ(used(value + "<row r='6' s='2' customFormat='1'/>"), (Area{2, 2, 5, 2}));
  EXPECT_EQ(used(value + "<row r='6' s='2'/>"), (Area{2, 2, 2, 2}));
  EXPECT_EQ(used("<row r='6' s='2' customFormat='1'/>"), Area());
  // Too far out to be read as one table.
  EXPECT_EQ(used(value + "<row r='9'><c r='ZZ9' s='1'/></row>"), (Area{2, 2, 2, 2}));
}

TEST_F(EngineFiles, ChartSheetsHaveTheirNames) {
  const auto put = [&](const char* first) {
    PutParts(
        {{"xl/workbook.xml",
          "<workbook xmlns:r='r'><sheets><sheet name='C' r:id='c'/><sheet name='S' r:id='s'/><sheet name='D' "
          "r:id='d'/></sheets></workbook>"},
         {"xl/_rels/workbook.xml.rels",
          std::string("<Relationships><Relationship Id='s' Type='x/") + first + "' Target='sheet1.xml'/>" +
              "<Relationship Id='d' Type='x/dialogsheet' Target='none.xml'/>"
              "<Relationship Id='c' Type='x/chartsheet' Target='none.xml'/></Relationships>"},
         {"xl/sheet1.xml", "<worksheet><sheetData><row><c><v>7</v></c></row></sheetData></worksheet>"}});
  };
  put("worksheet");
  ASSERT_EQ(Refusal(), "");
  ASSERT_EQ(book->sheets.size(), 2U);
  EXPECT_EQ(Utf8(book->sheets[0]->name), "C");
  EXPECT_EQ(book->sheets[0]->UsedArea(), Area());
  EXPECT_EQ(Utf8(book->sheets[1]->name), "S");
  // Whoever wants tables gets none of a chart.
  EXPECT_EQ(WorkbookFile(kPath).SheetCount(), 1);
  put("chartsheet");
  EXPECT_NE(Refusal(), "");
}

TEST(NumberFormatKind, BracketsAreSpelledAsByThePrograms) {
  for (const auto& [from, to] : std::map<std::string, std::string>{{"0.00;[RED]-0.00", "0.00;[Red]-0.00"},
                                                                   {"[HH]:MM", "[hh]:MM"},
                                                                   {"\"[RED]\"0\\[", "\"[RED]\"0\\["},
                                                                   {"[$USD]0[<5]", "[$USD]0[<5]"},
                                                                   {"[RED", "[RED"},
                                                                   {"", ""}}) {
    EXPECT_EQ(Utf8(SpelledFormat(CString::FromUtf8(from).View())), to);
  }
}

TEST(NumberFormatKind, DatesAndTimes) {
  for (const char* date :
       {"yyyy\\-mm\\-dd", "m/d/yy", "D-MMM", "mmmm", "[$-804]yyyy\"年\"m\"月\"", "h:mm d", "[Red]d;0"}) {
    EXPECT_TRUE(IsDateFormat(CString::FromUtf8(date).View())) << date;
  }
  for (const char* none : {"General", "0.00", "h:mm:ss", "[h]:mm", "mm:ss.0", "[mm]:ss", "\"day\"0", "0\\d",
                           "_d0", "*y0", "[Red]0", "0;d", "h:mm AM/PM", "@", "", "\"open d"}) {
    EXPECT_FALSE(IsDateFormat(CString::FromUtf8(none).View())) << none;
  }
  EXPECT_EQ(Utf8(BuiltInFormat(10)), "0.00%");
  EXPECT_EQ(Utf8(BuiltInFormat(23)), "General");
  EXPECT_EQ(Utf8(BuiltInFormat(4000000000U)), "General");
}

TEST(CellStore, IsAMapInTheOrderOfRowsAndColumns) {
  std::mt19937 random(7);
  for (const long spread : {3L, 200L, 16384L}) {
    CellStore store;
    std::map<std::pair<long, long>, double> model;
    for (int i = 0; i < 20000; ++i) {
      const long row = static_cast<long>(random() % 300);
      const long column = static_cast<long>(random() % static_cast<unsigned>(spread));
      if (random() % 3 == 0) {
        const Cell* const cell = store.Find(row, column);
        const auto found = model.find({row, column});
        ASSERT_EQ(cell != nullptr, found != model.end());
        if (cell != nullptr) {
          ASSERT_EQ(cell->number(), found->second);
        }
        continue;
      }
      store.At(row, column).SetNumber(i);
      model[{row, column}] = i;
    }
    ASSERT_EQ(store.Size(), model.size());
    auto expected = model.begin();
    for (const auto& block : store.Blocks()) {
      for (const Cell& cell : block) {
        ASSERT_EQ(std::pair(cell.row(), cell.column()), expected->first);
        ASSERT_EQ(cell.number(), (expected++)->second);
      }
    }
  }
}

TEST(MergeList, AgreesWithAPlainList) {
  std::mt19937 random(11);
  for (int round = 0; round < 60; ++round) {
    MergeList merges;
    std::vector<Area> plain;
    for (int i = 0; i < 12; ++i) {
      const long top = static_cast<long>(random() % 20);
      const long left = static_cast<long>(random() % 20);
      Area area = {top, left, top + static_cast<long>(random() % 4), left + static_cast<long>(random() % 4)};
      merges.Add(area);
      for (bool again = true; again;) {
        again = false;
        for (std::size_t j = 0; j < plain.size() && !again; ++j) {
          if (!plain[j].Meets(area)) continue;
          area = Union(area, plain[j]);
          plain.erase(plain.begin() + static_cast<std::ptrdiff_t>(j));
          again = true;
        }
      }
      if (area.Rows() > 1 || area.Columns() > 1) plain.push_back(area);
    }
    ASSERT_EQ(merges.Size(), plain.size());
    MergeList assigned;
    assigned.Assign(plain);
    for (int ask = 0; ask < 400; ++ask) {
      const long row = ask % 2 == 0 ? ask / 16 : static_cast<long>(random() % 25);
      const long column = static_cast<long>(random() % 25);
      const auto found = std::find_if(plain.begin(), plain.end(),
                                      [&](const Area& area) { return area.Contains(row, column); });
      for (const MergeList* each : {&merges, &assigned}) {
        const Area* const area = each->Find(row, column);
        ASSERT_EQ(area != nullptr, found != plain.end());
        if (area != nullptr) {
          ASSERT_EQ(*area, *found);
        }
      }
    }
  }
}

class RoundTrip : public test::ExchangeDesk, public testing::WithParamInterface<Program> {
 protected:
  RoundTrip() : ExchangeDesk(GetParam()) {}
};

INSTANTIATE_TEST_SUITE_P(BothPrograms, RoundTrip, testing::Values(Program::kExcel, Program::kEt),
                         [](const auto& each) { return each.param == Program::kExcel ? "Excel" : "Et"; });

TEST_P(RoundTrip, WhatGoesOutComesBackByTheRulesOfCells) {
  std::mt19937 random(GetParam() == Program::kExcel ? 2024 : 4202);
  const ScopedSpreadsheet plain(engine);
  for (int round = 0; round < 120; ++round) {
    const CXArrayDBToArray table = test::RandomTable(random, round == 0 ? 32767 : 1);
    test::OpenExchange out;
    out.SetArray(table);
    ASSERT_TRUE(out.ToExcel(_T("C:\\t.xlsx"), true, false, 1, 1, false, CString(), 0, 0));
    test::OpenExchange in;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    ASSERT_EQ(in.LoadExcel2(_T("C:\\t.xlsx"), tables, names, 1), 1);
    ASSERT_EQ(RowsOf(tables[0]), test::ShownRows(table));
  }
  EXPECT_TRUE(machine.dialogs.messages.empty());
}

TEST_P(RoundTrip, ATextThatIsTooLongIsReportedAndNotCut) {
  const ScopedSpreadsheet plain(engine);
  test::OpenExchange out;
  CXArrayDBToArray table;
  table.ReDim(1, 1);
  table.SetValue(0, 0, _variant_t(CString(_T('x'), 32768)));
  out.SetArray(table);
  EXPECT_FALSE(out.ToExcel());
  EXPECT_EQ(Messages(), Texts{"文字超过32767个字符，无法写入单元格。"});
}

TEST_P(RoundTrip, ANumberWithoutEndIsReported) {
  const ScopedSpreadsheet plain(engine);
  test::OpenExchange out;
  out.SetArray(test::TextTable({{std::string(400, '9')}}));
  EXPECT_FALSE(out.ToExcel());
  EXPECT_EQ(Messages(), Texts{"数值超出范围，无法写入单元格。"});
}

TEST_P(RoundTrip, AShownWorkbookIsHandedToTheDesktopAndReadBack) {
  test::OpenExchange out;
  out.SetArray(test::TextTable({{"a", "1.50"}, {"b", "2.00"}}));
  ASSERT_TRUE(out.ToExcel());
  ASSERT_EQ(machine.shell.started.size(), 1U);
  EXPECT_EQ(Utf8(machine.shell.started[0].file).find("C:\\Suite\\Temp\\"), 0U);
  EXPECT_TRUE(machine.files.Exists(machine.shell.started[0].file));
  test::OpenExchange in;
  ASSERT_TRUE(in.FromExcel());
  EXPECT_EQ(RowsOf(in.GetArray()), (Rows{{"a", "1.50"}, {"b", "2.00"}}));
  // The next one takes its place.
  ASSERT_TRUE(out.ToExcel());
  EXPECT_EQ(engine.Running().size(), 1U);
}

}  // namespace
}  // namespace lorv::engine
