#include "spreadsheet/servers/engine/xlsx/xlsx_writer.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "compress/zip/zip_writer.h"
#include "spreadsheet/cells/exchange_limits.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/xlsx/escaped_units.h"
#include "spreadsheet/servers/engine/xlsx/sheet_writer.h"

// A workbook as the bytes of a file: the few parts that every program asks for, and the sheets, which are
// packed while they are made. The file is whole in memory before it goes to disk, so that saving succeeds
// or leaves what was there.

namespace lorv::engine {
namespace {

// Readers compare these names letter by letter; they are names and not addresses.
constexpr char kXmlHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr char kMainSpace[] = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
constexpr char kRelationSpace[] = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
constexpr char kPackageSpace[] = "http://schemas.openxmlformats.org/package/2006/";
constexpr char kContentType[] = "application/vnd.openxmlformats-officedocument.spreadsheetml.";
// Numbers below this name formats that files leave out.
constexpr unsigned kFirstOwnFormat = 164;
constexpr double kStandardFontSize = 11;

std::string Decimal(std::size_t number) {
  return std::to_string(number);
}

std::string Real(double number) {
  char digits[32];
  return {digits, std::to_chars(digits, digits + sizeof(digits), number).ptr};
}

std::string ContentTypes(const Book& book) {
  std::string xml = std::string(kXmlHead) + "<Types xmlns=\"" + kPackageSpace + "content-types\">" +
                    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package."
                    "relationships+xml\"/><Default Extension=\"xml\" ContentType=\"application/xml\"/>";
  const auto add = [&](const std::string& part, const std::string& type) {
    xml += "<Override PartName=\"/xl/" + part + "\" ContentType=\"" + kContentType + type + "+xml\"/>";
  };
  add("workbook.xml", "sheet.main");
  add("styles.xml", "styles");
  for (std::size_t i = 1; i <= book.sheets.size(); ++i) {
    add("worksheets/sheet" + Decimal(i) + ".xml", "worksheet");
  }
  return xml + "</Types>";
}

std::string RelationXml(std::size_t id, const std::string& type, const std::string& target) {
  return "<Relationship Id=\"rId" + Decimal(id) + "\" Type=\"" + kRelationSpace + "/" + type +
         "\" Target=\"" + target + "\"/>";
}

std::string RelationsXml(const std::string& relations) {
  return std::string(kXmlHead) + "<Relationships xmlns=\"" + kPackageSpace + "relationships\">" + relations +
         "</Relationships>";
}

std::string WorkbookXml(const Book& book) {
  std::string xml = std::string(kXmlHead) + "<workbook xmlns=\"" + kMainSpace + "\" xmlns:r=\"" +
                    kRelationSpace + "\"><workbookPr" + (book.dates_of_1904 ? " date1904=\"1\"" : "") +
                    "/><bookViews><workbookView/></bookViews><sheets>";
  for (std::size_t i = 0; i < book.sheets.size(); ++i) {
    xml += "<sheet name=\"";
    AppendEscaped(book.sheets[i]->name.View(), xml);
    xml += "\" sheetId=\"" + Decimal(i + 1) + "\" r:id=\"rId" + Decimal(i + 1) + "\"/>";
  }
  return xml + "</sheets></workbook>";
}

std::string WorkbookRelations(const Book& book) {
  std::string relations;
  for (std::size_t i = 1; i <= book.sheets.size(); ++i) {
    relations += RelationXml(i, "worksheet", "worksheets/sheet" + Decimal(i) + ".xml");
  }
  // Sheets have the numbers that the workbook gives them; what follows may have any.
  return RelationsXml(relations + RelationXml(book.sheets.size() + 1, "styles", "styles.xml"));
}

LPCTSTR AlignmentWord(int alignment) {
  if (alignment == kAlignLeft) return _T("left");
  if (alignment == kAlignCentre) return _T("center");
  return alignment == kAlignRight ? _T("right") : nullptr;
}

// A font of a style; all have one face.
struct Font {
  double size = 0;  // 0 is the workbook's own
  bool bold = false;
  bool operator==(const Font&) const = default;
};

std::string FontXml(const Font& font) {
  return std::string("<font>") + (font.bold ? "<b/>" : "") + "<sz val=\"" +
         Real(font.size > 0 ? font.size : kStandardFontSize) +
         "\"/><name val=\"宋体\"/><family val=\"3\"/><charset val=\"134\"/></font>";
}

// The number formats that are used, from the first number of own ones on; 0 is "General".
std::string FormatsXml(const StylePool& styles) {
  if (styles.FormatCount() < 2) return {};
  std::string xml = "<numFmts count=\"" + Decimal(styles.FormatCount() - 1) + "\">";
  for (std::uint32_t i = 1; i < styles.FormatCount(); ++i) {
    xml += "<numFmt numFmtId=\"" + Decimal(kFirstOwnFormat + i) + "\" formatCode=\"";
    AppendEscaped(styles.FormatText(i).View(), xml);
    xml += "\"/>";
  }
  return xml + "</numFmts>";
}

std::string CellFormatXml(const CellStyle& style, std::size_t font) {
  std::string xml = "<xf numFmtId=\"" + Decimal(style.format == 0 ? 0 : kFirstOwnFormat + style.format) +
                    "\" fontId=\"" + Decimal(font) + "\" fillId=\"0\" borderId=\"0\" xfId=\"0\"";
  // Without these marks some programs take the named style's format instead.
  if (style.format != 0) xml += " applyNumberFormat=\"1\"";
  if (font != 0) xml += " applyFont=\"1\"";
  const LPCTSTR word = AlignmentWord(style.alignment);
  if (word == nullptr) return xml + "/>";
  xml += " applyAlignment=\"1\"><alignment horizontal=\"";
  AppendEscaped(word, xml);
  return xml + "\"/></xf>";
}

std::string StylesXml(const Book& book) {
  std::vector<Font> known = {Font()};
  std::string fonts = FontXml(Font());
  std::string formats;
  for (std::size_t i = 0; i < book.styles.StyleCount(); ++i) {
    const CellStyle& style = book.styles.Style(static_cast<std::uint16_t>(i));
    const Font wanted = {style.font_size, style.bold};
    // A workbook has a handful of fonts; a search through them is no cost.
    auto font = std::find(known.begin(), known.end(), wanted);
    if (font == known.end()) {
      fonts += FontXml(wanted);
      font = known.insert(known.end(), wanted);
    }
    formats += CellFormatXml(style, static_cast<std::size_t>(font - known.begin()));
  }
  // Two fills, a border and a named style that nothing uses: programs take them for granted, and offer to
  // repair a file without them.
  return std::string(kXmlHead) + "<styleSheet xmlns=\"" + kMainSpace + "\">" + FormatsXml(book.styles) +
         "<fonts count=\"" + Decimal(known.size()) + "\">" + fonts +
         "</fonts><fills count=\"2\"><fill><patternFill patternType=\"none\"/></fill><fill><patternFill "
         "patternType=\"gray125\"/></fill></fills><borders count=\"1\"><border><left/><right/><top/><bottom/>"
         "<diagonal/></border></borders><cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" "
         "fillId=\"0\" borderId=\"0\"/></cellStyleXfs><cellXfs count=\"" +
         Decimal(book.styles.StyleCount()) + "\">" + formats +
         "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/>"
         "</cellStyles></styleSheet>";
}

void Check(DWORD result) {
  if (result != kZipOk) Fail(_T("工作簿太大，无法保存。"));
}

void AddPart(ZipWriter& zip, const std::string& name, const std::string& xml) {
  Check(zip.Add(name.c_str(), xml.data(), xml.size()));
}

}  // namespace

std::string XlsxBytes(const Book& book, const Making& making) {
  std::uint64_t before = 0;
  std::uint64_t all = 0;
  bool ended = false;
  // Cells are what takes the time; the other parts are small whatever the workbook is.
  for (const auto& sheet : book.sheets) all += sheet->cells.Size();
  const auto goes_on = [&](std::uint64_t cells) {
    ended = making && !making(before + cells, all);
    return !ended;
  };
  ZipWriter zip;
  Check(zip.Create(nullptr, 0));
  // First in the archive, where tools that look at a file's beginning expect it.
  AddPart(zip, "[Content_Types].xml", ContentTypes(book));
  AddPart(zip, "_rels/.rels", RelationsXml(RelationXml(1, "officeDocument", "xl/workbook.xml")));
  AddPart(zip, "xl/workbook.xml", WorkbookXml(book));
  AddPart(zip, "xl/_rels/workbook.xml.rels", WorkbookRelations(book));
  AddPart(zip, "xl/styles.xml", StylesXml(book));
  for (std::size_t i = 0; i < book.sheets.size(); ++i) {
    SheetDocument document(book, *book.sheets[i], goes_on);
    const DWORD result =
        zip.Add(("xl/worksheets/sheet" + Decimal(i + 1) + ".xml").c_str(), document, nullptr);
    // Ended by the caller: the archive's own failure would be the wrong reason.
    if (ended) return {};
    Check(result);
    before += book.sheets[i]->cells.Size();
  }
  Check(zip.Close());
  const void* data = nullptr;
  std::size_t size = 0;
  Check(zip.GetMemory(data, size));
  return {static_cast<const char*>(data), size};
}

}  // namespace lorv::engine
