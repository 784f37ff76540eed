// Workbooks in files beside public peers: a table of numbers and texts written by the engine, by the whole
// exchange and by libxlsxwriter; the same file read by the engine, by the whole exchange, and its one sheet
// by pugixml alone. With COMM_LORV_SPREADSHEET=office also by a real office, in time that passes: it is
// another process.
#include <benchmark/benchmark.h>
#include <xlsxwriter.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "compress/zip/zip_reader.h"
#include "platform/ports/platform.h"
#include "spreadsheet/AdExcel2GridEx.h"
#include "spreadsheet/connection/spreadsheet_system.h"
#include "spreadsheet/servers/native_spreadsheet.h"

namespace {

constexpr int kRows = 100000;
constexpr int kColumns = 10;
constexpr int kCells = kRows * kColumns;

std::string PathOf(const char* name) {
  return (std::filesystem::temp_directory_path() / name).string();
}

// Every third column holds texts, the others numbers with two decimals.
bool IsText(int column) {
  return column % 3 == 0;
}

std::string TextAt(int row, int column) {
  return "KL" + std::to_string(row % 977) + " x " + std::to_string(column);
}

std::string NumberAt(int row, int column) {
  char digits[32];
  std::snprintf(digits, sizeof(digits), "%.2f", 1.25 + row * 0.37 + column);
  return digits;
}

const CXArrayDBToArray& Table() {
  static const CXArrayDBToArray table = [] {
    CXArrayDBToArray fresh;
    fresh.ReDim(kRows, kColumns);
    for (int row = 0; row < kRows; ++row) {
      for (int column = 0; column < kColumns; ++column) {
        const std::string text = IsText(column) ? TextAt(row, column) : NumberAt(row, column);
        fresh.SetValue(row, column, _variant_t(CString::FromUtf8(text)));
      }
    }
    return fresh;
  }();
  return table;
}

void Export(const std::string& path) {
  const lorv::ScopedSpreadsheet scope(lorv::EngineSpreadsheet());
  CAdExcel2GridEx exchange;
  exchange.SetArray(Table());
  exchange.ToExcel(CString::FromUtf8(path), true, false, 1, 1, false, CString(), 0, 0);
}

void WriteExchange(benchmark::State& state) {
  const std::string path = PathOf("lorv_bench_out.xlsx");
  // Made before the time begins.
  Table();
  for (auto _ : state) Export(path);
  state.SetItemsProcessed(state.iterations() * kCells);
}

void WriteByPeer(benchmark::State& state, bool constant_memory) {
  const std::string path = PathOf("lorv_bench_peer.xlsx");
  lxw_workbook_options options = {};
  options.constant_memory = constant_memory ? LXW_TRUE : LXW_FALSE;
  for (auto _ : state) {
    lxw_workbook* const book = workbook_new_opt(path.c_str(), &options);
    lxw_format* const number = workbook_add_format(book);
    // The formats that the exchange gives to numbers and texts.
    format_set_num_format(number, "0.00_ ");
    lxw_format* const text = workbook_add_format(book);
    format_set_num_format(text, "@");
    lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
    for (int row = 0; row < kRows; ++row) {
      for (int column = 0; column < kColumns; ++column) {
        const auto at_row = static_cast<lxw_row_t>(row);
        const auto at_column = static_cast<lxw_col_t>(column);
        if (IsText(column)) {
          worksheet_write_string(sheet, at_row, at_column, TextAt(row, column).c_str(), text);
        } else {
          worksheet_write_number(sheet, at_row, at_column, 1.25 + row * 0.37 + column, number);
        }
      }
    }
    workbook_close(book);
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

void WritePeer(benchmark::State& state) {
  WriteByPeer(state, false);
}

void WritePeerConstantMemory(benchmark::State& state) {
  WriteByPeer(state, true);
}

const std::string& File() {
  static const std::string path = [] {
    const std::string name = PathOf("lorv_bench_in.xlsx");
    Export(name);
    return name;
  }();
  return path;
}

void ReadExchange(benchmark::State& state) {
  const CString path = CString::FromUtf8(File());
  const lorv::ScopedSpreadsheet scope(lorv::EngineSpreadsheet());
  for (auto _ : state) {
    CAdExcel2GridEx exchange;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    exchange.LoadExcel2(path, tables, names, 1);
    benchmark::DoNotOptimize(tables);
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

// The file opened as a template and closed: all its cells are read, none is asked for.
void ReadEngine(benchmark::State& state) {
  const lorv::AutomationFamily family(lorv::Program::kExcel);
  const _variant_t path(CString::FromUtf8(File()));
  for (auto _ : state) {
    const lorv::AutoRef application = lorv::EngineSpreadsheet().CreateDispatch(_T("Excel.Application"));
    benchmark::DoNotOptimize(family.AddWorkbook(family.Workbooks(application), lorv::AutoValue(path)));
    family.Quit(application);
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

// The least that a reader over a tree of the document does: unpack, parse, take each number and text.
void ReadPeerTree(benchmark::State& state) {
  for (auto _ : state) {
    lorv::ZipReader zip;
    zip.Open(File().c_str());
    lorv::ZipEntry entry;
    zip.FindItem("xl/worksheets/sheet1.xml", false, entry);
    std::vector<char> xml(static_cast<std::size_t>(entry.size));
    zip.UnzipItem(entry.index, xml.data(), xml.size());
    pugi::xml_document document;
    // The peer's quickest way: in the buffer, and nothing converted but what is needed here.
    document.load_buffer_inplace(xml.data(), xml.size(), pugi::parse_ws_pcdata_single | pugi::parse_escapes);
    double sum = 0;
    std::vector<std::string> texts;
    for (const auto row : document.child("worksheet").child("sheetData").children("row")) {
      for (const auto cell : row.children("c")) {
        if (const auto number = cell.child("v")) {
          sum += number.text().as_double();
        } else {
          texts.emplace_back(cell.child("is").child("t").text().get());
        }
      }
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(texts);
  }
  state.SetItemsProcessed(state.iterations() * kCells);
}

CXArrayDBToArray TopOfTable(int rows) {
  CXArrayDBToArray top;
  top.ReDim(rows, kColumns);
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < kColumns; ++column)
      top.SetValue(row, column, Table().GetValue(row, column));
  }
  return top;
}

// The start of the office is in it: the difference of two sizes is that of their cells.
void WriteOffice(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  const CXArrayDBToArray table = TopOfTable(rows);
  const CString path = CString::FromUtf8(PathOf("lorv_bench_office.xlsx"));
  const lorv::ScopedSpreadsheet scope(lorv::OfficeSpreadsheet());
  for (auto _ : state) {
    CAdExcel2GridEx exchange;
    exchange.SetArray(table);
    if (!exchange.ToExcel(path, true, false, 1, 1, false, CString(), 0, 0))
      state.SkipWithError("not written");
  }
}

void ReadOffice(benchmark::State& state) {
  const int rows = static_cast<int>(state.range(0));
  const CString path = CString::FromUtf8(PathOf("lorv_bench_office_in.xlsx"));
  {
    const lorv::ScopedSpreadsheet scope(lorv::EngineSpreadsheet());
    CAdExcel2GridEx exchange;
    exchange.SetArray(TopOfTable(rows));
    exchange.ToExcel(path, true, false, 1, 1, false, CString(), 0, 0);
  }
  const lorv::ScopedSpreadsheet scope(lorv::OfficeSpreadsheet());
  for (auto _ : state) {
    CAdExcel2GridEx exchange;
    std::vector<CXArrayDBToArray> tables;
    CStringArray names;
    if (exchange.LoadExcel2(path, tables, names, 1) != 1) state.SkipWithError("not read");
  }
}

[[maybe_unused]] const bool kWithOffice = [] {
  const char* const server = std::getenv("COMM_LORV_SPREADSHEET");
  // Registered when asked for: without an office on the machine they would fail.
  if (server == nullptr || std::string(server) != "office") return false;
  for (const auto& [name, body] :
       {std::pair{"WriteOffice", &WriteOffice}, std::pair{"ReadOffice", &ReadOffice}}) {
    benchmark::RegisterBenchmark(name, body)->Arg(2)->Arg(2002)->Unit(benchmark::kMillisecond)->UseRealTime();
  }
  return true;
}();

BENCHMARK(WriteExchange)->Unit(benchmark::kMillisecond);
BENCHMARK(WritePeer)->Unit(benchmark::kMillisecond);
BENCHMARK(WritePeerConstantMemory)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadExchange)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadEngine)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadPeerTree)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
