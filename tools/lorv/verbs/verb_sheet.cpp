#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <ostream>
#include <vector>

#include "framework/values/variant_text.h"
#include "platform/ports/platform.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/csv/csv_reader.h"
#include "tools/lorv/csv/csv_writer.h"
#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/text/spoken_language.h"

namespace lorv::tool {

Work DeclareSheet(CLI::App& app);

namespace {

struct SheetArguments {
  std::string source;
  std::string target;
  std::string sheet;
  std::string encoding = "auto";
};

// What the exchange would say in a box is what the tool ends with.
class KeptMessages : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    text += (text.empty() ? "" : "\n") + request.text.ToUtf8();
    return kAnswerOk;
  }
  std::string text;
};

// The exchange without a program, for a scope.
class FileExchange {
 public:
  FileExchange() : dialogs_scope_(Ports()), engine_scope_(EngineSpreadsheet()) {}

  const std::string& Told() const { return messages_.text; }
  CAdExcel2GridEx exchange;

 private:
  Platform Ports() {
    Platform ports;
    ports.dialogs = &messages_;
    return ports;
  }

  KeptMessages messages_;
  ScopedPlatform dialogs_scope_;
  ScopedSpreadsheet engine_scope_;
};

struct Sheets {
  std::vector<CXArrayDBToArray> tables;
  CStringArray names;
};

Sheets ReadSheets(const std::string& path) {
  FileExchange files;
  Sheets sheets;
  const int read = files.exchange.LoadExcel2(CString::FromUtf8(path), sheets.tables, sheets.names, 0);
  if (read == 0 || !files.Told().empty()) throw BadInput(files.Told());
  return sheets;
}

void List(const Sheets& sheets, Console& console) {
  for (std::size_t i = 0; i < sheets.tables.size(); ++i) {
    const auto& table = sheets.tables[i];
    console.out << i + 1 << '\t' << sheets.names.GetAt(static_cast<int>(i)).ToUtf8() << '\t'
                << table.GetRowCount() << " x " << table.GetColCount() << '\n';
  }
}

std::size_t FindSheet(const Sheets& sheets, const std::string& wanted) {
  for (std::size_t i = 0; i < sheets.tables.size(); ++i) {
    if (sheets.names.GetAt(static_cast<int>(i)).ToUtf8() == wanted || std::to_string(i + 1) == wanted)
      return i;
  }
  throw BadInput(Say("there is no sheet \"{}\"", {wanted}));
}

// All rows, by a receiver of lines.
template <class Receiver>
void WriteRows(const CXArrayDBToArray& table, const Receiver& receive) {
  CsvLine line;
  for (int row = 0; row < table.GetRowCount(); ++row) {
    for (int column = 0; column < table.GetColCount(); ++column) {
      line.Add(VariantToText(table.GetValue(row, column)).ToUtf8());
    }
    receive(line.Take());
  }
}

int ToCsv(const SheetArguments& arguments, Console& console) {
  const Sheets sheets = ReadSheets(arguments.source);
  if (arguments.sheet.empty() && arguments.target.empty()) {
    List(sheets, console);
    return kFine;
  }
  const auto& table = sheets.tables[FindSheet(sheets, arguments.sheet.empty() ? "1" : arguments.sheet)];
  if (arguments.target.empty()) {
    WriteRows(table, [&](const std::string& row) { console.out << row; });
    return kFine;
  }
  OutputFile target(arguments.target, console.out);
  WriteRows(table, [&](const std::string& row) { target.Write(row); });
  target.Commit();
  return kFine;
}

CXArrayDBToArray ReadTable(const SheetArguments& arguments, Console& console) {
  InputBytes bytes(arguments.source, console.in);
  CsvReader reader(bytes, EncodingByName(arguments.encoding), false);
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

int ToWorkbook(const SheetArguments& arguments, Console& console) {
  const CXArrayDBToArray table = ReadTable(arguments, console);
  FileExchange files;
  files.exchange.SetArray(table);
  const bool written = files.exchange.ToExcel(CString::FromUtf8(arguments.target), true, false, 1, 1, false,
                                              CString::FromUtf8(arguments.sheet), 0, 0);
  if (!written || !files.Told().empty()) throw BadInput(files.Told());
  return kFine;
}

int RunSheet(const SheetArguments& arguments, Console& console) {
  return arguments.target.ends_with(".xlsx") ? ToWorkbook(arguments, console) : ToCsv(arguments, console);
}

}  // namespace

Work DeclareSheet(CLI::App& app) {
  const auto arguments = std::make_shared<SheetArguments>();
  app.add_option("FILE", arguments->source, "a workbook (.xlsx), or a table to be made into one")->required();
  app.add_option("--sheet", arguments->sheet, "the name or number of the sheet; without it all are listed");
  app.add_option("--out", arguments->target, "the file to be made: .xlsx of a table, else .csv of a sheet");
  app.add_option("--encoding", arguments->encoding, "of the table: auto, utf-8, gbk, utf-16le, utf-16be");
  app.footer(
      "Examples:\n  lorv sheet bill.xlsx\n  lorv sheet bill.xlsx --sheet 2 --out walls.csv\n"
      "  lorv sheet walls.csv --out walls.xlsx --sheet 墙");
  return [arguments](Console& console) { return RunSheet(*arguments, console); };
}

}  // namespace lorv::tool
