#include "spreadsheet/servers/engine/files/workbook_files.h"

#include <algorithm>
#include <string>

#include "platform/ports/platform.h"
#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/files/text_table.h"
#include "spreadsheet/servers/engine/xlsx/xlsx_reader.h"

// Workbooks by path: the kind of a file is recognised by its first bytes, as users rename files and old
// programs write their tables under any extension. Every refusal names the file and what the user can do.

namespace lorv::engine {
namespace {

constexpr std::string_view kArchiveMark = "PK";
// The old binary format and its container.
constexpr std::string_view kContainerMark = "\xD0\xCF\x11\xE0";
constexpr std::size_t kMarkBytes = 4;
// A text table is taken as a whole, with its text units beside its bytes.
constexpr std::int64_t kMaxTextTable = std::int64_t{1} << 29;

std::unique_ptr<File> Opened(const CString& path) {
  FileError error;
  auto file = PortsInForce().files->Open(path, FileUse::kRead, &error);
  if (!file) {
    // A file that another program has open is refused, too, and is not missing.
    const bool missing = !PortsInForce().files->Exists(path);
    Fail((missing ? _T("找不到文件“") : _T("无法打开文件“")) + path + _T("”。"));
  }
  return file;
}

std::string Beginning(File& file) {
  std::string bytes(kMarkBytes, '\0');
  const std::int64_t count = file.Read(bytes.data(), bytes.size());
  bytes.resize(static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
  // The readers begin at the file's start, whatever was looked at.
  file.Seek(0);
  return bytes;
}

}  // namespace

CString FileTitle(const CString& file) {
  const int separator = std::max(file.ReverseFind(_T('\\')), file.ReverseFind(_T('/')));
  const CString name = file.Mid(separator + 1);
  const int point = name.ReverseFind(_T('.'));
  // A name that begins with its only point has no extension.
  return point > 0 ? name.Left(point) : name;
}

std::shared_ptr<Book> ReadWorkbook(const CString& path) {
  const auto file = Opened(path);
  const std::string mark = Beginning(*file);
  if (mark.starts_with(kArchiveMark)) return ReadXlsx(*file);
  if (mark.starts_with(kContainerMark)) {
    Fail(_T("“") + path + _T("”是旧的二进制格式，请先另存为 .xlsx 文件。"));
  }
  const auto bytes = file->Size() <= kMaxTextTable ? PortsInForce().files->ReadAll(path) : std::nullopt;
  if (!bytes || !LooksLikeText(*bytes)) Fail(_T("“") + path + _T("”不是工作簿文件。"));
  return ReadTextTable(*bytes, FileTitle(path));
}

bool WriteWorkbookFile(const Book& book, const CString& file, const Making& making) {
  // Made whole before the file is touched: a failure on the way leaves what stood there.
  const std::string bytes = XlsxBytes(book, making);
  if (bytes.empty()) return false;
  if (!PortsInForce().files->WriteWhole(file, bytes)) Fail(_T("无法保存文件“") + file + _T("”。"));
  return true;
}

}  // namespace lorv::engine
