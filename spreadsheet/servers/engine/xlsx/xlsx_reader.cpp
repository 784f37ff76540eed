#include "spreadsheet/servers/engine/xlsx/xlsx_reader.h"

#include <utility>
#include <vector>

#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/xlsx/sheet_part.h"
#include "spreadsheet/servers/engine/xlsx/workbook_parts.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_text.h"

// A workbook from a file: the list of sheets first, then styles and texts, then each sheet. This order is
// forced, as cells name styles and texts by number, and dates need the workbook's system.

namespace lorv::engine {
namespace {

// The list of sheets, and the date system.
class WorkbookPart : public XmlHandler {
 public:
  struct ListedSheet {
    CString name;
    std::string relation;
  };

  void Start(std::string_view name, XmlAttributes attributes) override {
    if (name == "workbookPr") dates_of_1904 = IsYes(attributes.Value("date1904"));
    if (name == "sheets") in_sheets_ = true;
    if (name != "sheet" || !in_sheets_) return;
    // Each of them is read, even where all name one part.
    if (sheets.size() >= kMaxSheets) Fail(_T("工作簿中的工作表太多。"));
    sheets.push_back(
        {CString(AttributeText(attributes.Value("name"))), std::string(attributes.PrefixedValue("id"))});
  }
  void End(std::string_view name) override {
    if (name == "sheets") in_sheets_ = false;
  }
  void Text(std::string_view /*raw*/, bool /*literal*/) override {}

  std::vector<ListedSheet> sheets;
  bool dates_of_1904 = false;

 private:
  bool in_sheets_ = false;
};

using Relations = std::map<std::string, WorkbookParts::Relation>;

const std::string* TargetOf(const Relations& relations, std::string_view type) {
  for (const auto& [id, relation] : relations) {
    if (relation.type == type) return &relation.target;
  }
  return nullptr;
}

std::string MainPart(WorkbookParts& parts) {
  const Relations relations = parts.Relations("");
  const std::string* const target = TargetOf(relations, "officeDocument");
  // Files without relations at their top are read if the usual part is there.
  std::string path = target == nullptr ? "xl/workbook.xml" : *target;
  if (!parts.Has(path)) Fail(_T("文件不是有效的工作簿。"));
  return path;
}

// A workbook of numbers alone needs neither texts nor styles.
void ReadOptional(WorkbookParts& parts, const Relations& relations, std::string_view type,
                  XmlHandler& handler) {
  const std::string* const target = TargetOf(relations, type);
  if (target != nullptr && parts.Has(*target)) parts.Read(*target, handler);
}

}  // namespace

std::shared_ptr<Book> ReadXlsx(File& file) {
  WorkbookParts parts(file);
  const std::string main = MainPart(parts);
  auto book = std::make_shared<Book>();
  WorkbookPart listed;
  parts.Read(main, listed);
  book->dates_of_1904 = listed.dates_of_1904;
  const Relations relations = parts.Relations(main);
  StylesPart styles(book->styles);
  ReadOptional(parts, relations, "styles", styles);
  SharedTexts shared(book->texts);
  ReadOptional(parts, relations, "sharedStrings", shared);
  std::size_t cell_room = kMaxCells;
  std::size_t worksheets = 0;
  for (const auto& [name, id] : listed.sheets) {
    const auto relation = relations.find(id);
    // Sheets of macros and of dialogs are in the same list.
    if (relation == relations.end()) continue;
    const bool chart = relation->second.type == "chartsheet";
    if (!chart && relation->second.type != "worksheet") continue;
    auto sheet = std::make_shared<Sheet>();
    sheet->name = name;
    sheet->is_chart = chart;
    if (!chart) {
      SheetPart part(*book, *sheet, shared, styles, cell_room);
      parts.Read(relation->second.target, part);
      part.Finish();
      ++worksheets;
    }
    book->sheets.push_back(std::move(sheet));
  }
  if (worksheets == 0) Fail(_T("工作簿中没有工作表。"));
  return book;
}

}  // namespace lorv::engine
