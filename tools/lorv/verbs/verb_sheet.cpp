#include <algorithm>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string_view>
#include <vector>

#include "framework/values/variant_text.h"
#include "platform/ports/platform.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/command/verb_syntax.h"
#include "tools/lorv/csv/csv_reader.h"
#include "tools/lorv/csv/csv_writer.h"
#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/csv/sheet_table.h"
#include "tools/lorv/csv/workbook_bytes.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/display_width.h"
#include "tools/lorv/takeoff/output/sheet_rows.h"
#include "tools/lorv/takeoff/output/table_file.h"
#include "tools/lorv/text/json_text.h"

// The verb `sheet`: workbooks into tables and tables into workbooks, without a spreadsheet program. Workbooks
// are read by the suite's own exchange, so cells come as the suite would get them.

namespace lorv::tool {

Work DeclareSheet(VerbSyntax& syntax);

namespace {

constexpr const char* kHelp =
    "Without --sheet and --out the sheets of a workbook are listed: number, name, rows x columns. Cells are "
    "written\n"
    "as the sheet shows them. A table becomes a workbook whose numbers are numbers; texts such as 007 stay "
    "as "
    "they\n"
    "are. - is standard input or output; one name for both is fine, as files are written at the end.\n"
    "\n"
    "Examples:\n"
    "  lorv sheet bill.xlsx\n"
    "  lorv sheet bill.xlsx --sheet 2 --out walls.csv\n"
    "  lorv sheet walls.csv --out walls.xlsx --sheet 墙\n"
    "  lorv sheet bill.xlsx -s 1 --json\n"
    "\n"
    "Exit code 2: a file cannot be read or written, or there is no such sheet.";

struct SheetArguments {
  std::string source;
  std::string target;
  std::string sheet;
  std::string encoding = "auto";
  bool json = false;
};

// What the exchange would say in a box is what the tool ends with.
class KeptMessages : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    // The first one is the cause.
    if (text.IsEmpty()) text = request.text;
    return kAnswerOk;
  }
  CString text;
};

// The engine, whatever programs there are, unless the user asks for an office by name: it reads what the
// engine does not.
SpreadsheetSystem& SheetServer() {
  const char* const named = std::getenv("COMM_LORV_SPREADSHEET");
  return named != nullptr && std::string_view(named) == "office" ? OfficeSpreadsheet() : EngineSpreadsheet();
}

// The exchange without a program of the user's, for a scope. Its boxes would wait for a user who is not
// there.
class FileExchange {
 public:
  FileExchange() : dialogs_scope_(Ports()), server_scope_(SheetServer()) {}

  const CString& Report() const { return messages_.text; }
  CAdExcel2GridEx exchange;

 private:
  Platform Ports() {
    Platform ports;
    ports.dialogs = &messages_;
    return ports;
  }

  // In this order, so that the scope ends before the messages that it leads to.
  KeptMessages messages_;
  ScopedPlatform dialogs_scope_;
  ScopedSpreadsheet server_scope_;
};

struct Sheets {
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
};

Sheets ReadSheets(const std::string& path) {
  FileExchange files;
  Sheets sheets;
  const int read = files.exchange.LoadExcel2(CString::FromUtf8(path), sheets.tables, sheets.names, 0);
  // What it reported is a fault even where some sheets came: a table with a part missing looks whole.
  if (read == 0 || !files.Report().IsEmpty())
    throw BadInput(Quoted(path) + ": " + WorkbookWords(files.Report()));
  return sheets;
}

std::string NameOf(const Sheets& sheets, std::size_t index) {
  return sheets.names.GetAt(static_cast<int>(index)).ToUtf8();
}

void WriteSize(JsonText& json, const CXArrayDBToArray& table) {
  json.Key("rows").Number(static_cast<long long>(table.GetRowCount()));
  json.Key("columns").Number(static_cast<long long>(table.GetColCount()));
}

void ListAsJson(const Sheets& sheets, Console& console) {
  JsonText json;
  json.Open('{');
  json.Key("sheets").Open('[');
  for (std::size_t i = 0; i < sheets.tables.size(); ++i) {
    json.Open('{');
    json.Key("number").Number(static_cast<long long>(i) + 1);
    json.Key("name").String(NameOf(sheets, i));
    WriteSize(json, sheets.tables[i]);
    json.Close('}');
  }
  json.Close(']');
  json.Close('}');
  console.out << json.Text();
}

// Names are shown without their control characters, which a program gets by --json.
void List(const Sheets& sheets, Console& console) {
  for (std::size_t i = 0; i < sheets.tables.size(); ++i) {
    const auto& table = sheets.tables[i];
    console.out << i + 1 << '\t' << Printable(NameOf(sheets, i)) << '\t' << table.GetRowCount() << " x "
                << table.GetColCount() << '\n';
  }
}

// Names before numbers: a sheet that is called 2 is meant wherever it stands.
std::size_t FindSheet(const Sheets& sheets, const std::string& wanted) {
  const std::size_t count = sheets.tables.size();
  for (std::size_t i = 0; i < count; ++i) {
    if (NameOf(sheets, i) == wanted) return i;
  }
  for (std::size_t i = 0; i < count; ++i) {
    if (std::to_string(i + 1) == wanted) return i;
  }
  throw BadInput(Say("there is no sheet \"{}\"", {wanted}));
}

std::string CellOf(const CXArrayDBToArray& table, int row, int column) {
  return VariantToText(table.GetValue(row, column)).ToUtf8();
}

void WriteTable(const CXArrayDBToArray& table, OutputFile& file) {
  CsvLine line;
  for (int row = 0; row < table.GetRowCount(); ++row) {
    for (int column = 0; column < table.GetColCount(); ++column) line.Add(CellOf(table, row, column));
    file.Write(line.Take());
  }
  file.Commit();
}

void TableAsJson(const std::string& name, const CXArrayDBToArray& table, Console& console) {
  JsonText json;
  json.Open('{');
  json.Key("name").String(name);
  json.Key("cells").Open('[');
  for (int row = 0; row < table.GetRowCount(); ++row) {
    json.Open('[');
    for (int column = 0; column < table.GetColCount(); ++column) json.String(CellOf(table, row, column));
    json.Close(']');
  }
  json.Close(']');
  json.Close('}');
  console.out << json.Text();
}

void ReportWritten(const SheetArguments& arguments, const CXArrayDBToArray& table, Console& console) {
  if (!arguments.json) return;
  JsonText json;
  json.Open('{');
  json.Key("file").String(arguments.target);
  WriteSize(json, table);
  json.Close('}');
  console.out << json.Text();
}

int ToCsv(const SheetArguments& arguments, Console& console) {
  const Sheets sheets = ReadSheets(arguments.source);
  if (arguments.sheet.empty() && arguments.target.empty()) {
    (arguments.json ? ListAsJson : List)(sheets, console);
    return kFine;
  }
  // A target asks for a table: without a name that of the first sheet.
  const std::size_t index = FindSheet(sheets, arguments.sheet.empty() ? "1" : arguments.sheet);
  const CXArrayDBToArray& table = sheets.tables[index];
  if (arguments.target.empty() && arguments.json) {
    TableAsJson(NameOf(sheets, index), table, console);
    return kFine;
  }
  OutputFile target(arguments.target.empty() ? "-" : arguments.target, console.out);
  WriteTable(table, target);
  ReportWritten(arguments, table, console);
  return kFine;
}

CXArrayDBToArray ReadTable(const SheetArguments& arguments, Console& console) {
  InputBytes bytes(arguments.source, console.in);
  CsvReader reader(bytes, EncodingByName(arguments.encoding), false);
  // Columns are known when the last row is read: some are longer than the first.
  std::vector<std::vector<std::string>> rows;
  std::size_t widest = 1;
  for (CsvRow row; reader.Next(row);) {
    auto& cells = rows.emplace_back();
    for (std::size_t i = 0; i < row.Size(); ++i) cells.emplace_back(row[i]);
    widest = std::max(widest, cells.size());
  }
  CXArrayDBToArray table;
  table.ReDim(static_cast<long long>(rows.size()), static_cast<int>(widest));
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < rows[i].size(); ++j) {
      table.SetValue(static_cast<int>(i), static_cast<int>(j), _variant_t(CString::FromUtf8(rows[i][j])));
    }
  }
  return table;
}

// A number that a cell shows again as it is typed: neither 007 nor 1e3, and no more digits than it keeps.
bool IsPlainNumber(std::string_view text) {
  // A cell holds a double, which gives back up to 15 decimal digits as they were.
  constexpr std::size_t kDigitsKept = 15;
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const bool is_digits = text.find_first_not_of("0123456789.") == std::string_view::npos &&
                         std::count(text.begin(), text.end(), '.') <= 1 && !text.ends_with('.');
  return is_digits && point > 0 && (point == 1 || text[0] != '0') && text.size() <= kDigitsKept;
}

void AddCell(const std::string& cell, SheetRows& rows) {
  if (IsPlainNumber(cell)) {
    rows.AddNumber(cell);
  } else {
    rows.AddText(cell);
  }
}

std::string BookOf(const CXArrayDBToArray& table, const std::string& name, Console& console) {
  WorkbookFile book;
  SheetRows rows(book, book.AddSheet(CString::FromUtf8(name.empty() ? "Sheet1" : name)));
  for (int row = 0; row < table.GetRowCount(); ++row) {
    for (int column = 0; column < table.GetColCount(); ++column) AddCell(CellOf(table, row, column), rows);
    rows.EndRow();
  }
  rows.Finish();
  return WorkbookBytes(book, console);
}

int ToWorkbook(const SheetArguments& arguments, Console& console) {
  // Read to its end before the target is opened: both may be one file.
  const CXArrayDBToArray table = ReadTable(arguments, console);
  OutputFile target(arguments.target, console.out);
  WithWorkbook(arguments.target, [&] { target.Write(BookOf(table, arguments.sheet, console)); });
  target.Commit();
  ReportWritten(arguments, table, console);
  return kFine;
}

int RunSheet(const SheetArguments& arguments, Console& console) {
  if (arguments.json && arguments.target == "-")
    throw BadInput(Say("--json and a table cannot both go to standard output"));
  return NamesWorkbook(arguments.target) ? ToWorkbook(arguments, console) : ToCsv(arguments, console);
}

}  // namespace

Work DeclareSheet(VerbSyntax& syntax) {
  const auto arguments = std::make_shared<SheetArguments>();
  syntax.Value("FILE", arguments->source, "a workbook (.xlsx), or a table to be made into one").Required();
  syntax.Value("-s,--sheet", arguments->sheet, "the name or number of the sheet; without it all are listed");
  syntax.Value("-o,--out", arguments->target, "the file to be made: .xlsx of a table, else .csv of a sheet");
  syntax.Value("--encoding", arguments->encoding, "of the table: auto, utf-8, gbk, utf-16le, utf-16be");
  syntax.Flag("-j,--json", arguments->json, "print the sheets, the rows of one or what was written as JSON");
  syntax.Footer(kHelp);
  return [arguments](Console& console) { return RunSheet(*arguments, console); };
}

}  // namespace lorv::tool
