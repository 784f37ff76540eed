#include "spreadsheet/servers/office/file_filter.h"

#include "framework/text/text_compare.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// The exchange always asks for the old programs' format, which the office cannot write in that very version;
// the name that the user chose says what he expects to find.

namespace lorv::office {
namespace {

constexpr FileFilter kOld = {"MS Excel 97", 65536, 256};
constexpr FileFilter kPacked = {"Calc MS Excel 2007 XML", engine::kMaxRows, engine::kMaxColumns};
constexpr FileFilter kOpenDocument = {"calc8", engine::kMaxRows, engine::kMaxColumns, false};

bool EndsWith(const CString& path, TextView end) {
  const TextView text = path.View();
  return text.size() >= end.size() && CompareWithoutCase(text.substr(text.size() - end.size()), end) == 0;
}

}  // namespace

const FileFilter& FilterOf(const CString& path) {
  if (EndsWith(path, _T(".xlsx"))) return kPacked;
  return EndsWith(path, _T(".ods")) ? kOpenDocument : kOld;
}

}  // namespace lorv::office
