#include <cstdint>
#include <cstdlib>
#include <string>

#include "compress/zip/zip_writer.h"
#include "framework/objects/exceptions.h"
#include "platform/headless/services/headless_platform.h"
#include "spreadsheet/servers/engine/book/cell_values.h"
#include "spreadsheet/servers/engine/files/workbook_files.h"

// Any bytes as a workbook file, or, unless they begin as an archive does, as the sheet in one: what is read
// comes back unchanged from a file that is written of it.
namespace {

using lorv::engine::Book;

constexpr LPCTSTR kPath = _T("C:\\f.xlsx");

std::string AsWorkbook(const std::string& sheet) {
  const auto add = [](lorv::ZipWriter& zip, const char* name, const std::string& xml) {
    zip.Add(name, xml.data(), xml.size());
  };
  lorv::ZipWriter zip;
  zip.Create(nullptr, 0);
  add(zip, "xl/workbook.xml", "<w xmlns:r='r'><sheets><sheet name='S' r:id='a'/></sheets></w>");
  add(zip, "xl/_rels/workbook.xml.rels",
      "<r><Relationship Id='a' Type='x/worksheet' Target='s.xml'/>"
      "<Relationship Id='b' Type='x/sharedStrings' Target='t.xml'/></r>");
  add(zip, "xl/t.xml", "<sst><si><t>a</t></si><si><r><t>b</t></r></si></sst>");
  add(zip, "xl/s.xml", sheet);
  zip.Close();
  const void* data = nullptr;
  std::size_t size = 0;
  zip.GetMemory(data, size);
  return {static_cast<const char*>(data), size};
}

std::shared_ptr<Book> Read() {
  try {
    return lorv::engine::ReadWorkbook(kPath);
  } catch (CException* refused) {
    refused->Delete();
    return nullptr;
  }
}

void ExpectSameSheet(const Book& a, const Book& b, std::size_t sheet) {
  const auto value = [&](const Book& book, const lorv::engine::Cell& cell) {
    return lorv::engine::CellValue(book, *book.sheets[sheet], cell.row(), cell.column());
  };
  if (a.sheets[sheet]->merges.All() != b.sheets[sheet]->merges.All()) std::abort();
  for (const auto& block : a.sheets[sheet]->cells.Blocks()) {
    for (const auto& cell : block) {
      if (!(value(a, cell) == value(b, cell))) std::abort();
    }
  }
}

void ExpectSame(const Book& a, const Book& b) {
  if (a.sheets.size() != b.sheets.size()) std::abort();
  for (std::size_t i = 0; i < a.sheets.size(); ++i) ExpectSameSheet(a, b, i);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  lorv::HeadlessPlatform machine;
  const lorv::ScopedPlatform scope(machine.Ports());
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  machine.files.Put(kPath, bytes.starts_with("PK") ? bytes : AsWorkbook(bytes));
  const auto first = Read();
  if (!first) return 0;
  lorv::engine::WriteWorkbookFile(*first, kPath);
  const auto second = Read();
  if (!second) std::abort();
  ExpectSame(*first, *second);
  return 0;
}
