#include <algorithm>

#include "comm/AdLorvComm.h"
#include "comm/comm_limits.h"
#include "platform/ports/platform.h"

// Lists of texts in text files: code page 936, carriage return and line feed on every system, as other
// programs of the suite read them. Reading takes either line end. A line over the limit empties the list, so
// that no caller works on half a file.

namespace {

using lorv::Files;
using lorv::FileUse;

constexpr LPCTSTR kTrimmedOfLines = _T("\r\n\t ");

// Takes the next line off, its end included.
std::string_view TakeLine(std::string_view& bytes) {
  const std::size_t end = std::min(bytes.find('\n'), bytes.size());
  std::string_view line = bytes.substr(0, end);
  const bool ended = end < bytes.size();
  bytes.remove_prefix(ended ? end + 1 : end);
  if (ended && line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool IsComment(const CString& line) {
  return line.Left(2) == _T("//") || line.Left(1) == _T(";");
}

// False when a line is too long.
bool ReadLines(std::string_view bytes, bool skip_comments, CStringArray& list) {
  const lorv::CodePage& code_page = *lorv::PortsInForce().code_page;
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    if (line.size() > lorv::kLongestTextFileLine) return false;
    // A line is a text, and a text ends at its first null byte.
    CString text(code_page.ToText(line.substr(0, line.find('\0'))));
    text.Trim(kTrimmedOfLines);
    if (!text.IsEmpty() && !(skip_comments && IsComment(text))) list.Add(text);
  }
  return true;
}

}  // namespace

bool CAdLorvComm::WriteStringArrayToTextFile(LPCTSTR path, const CStringArray& list, bool keep_existing) {
  Files& files = *lorv::PortsInForce().files;
  if (files.Exists(path)) {
    if (keep_existing) return false;
    // Taken away and not overwritten: a read-only file stays and the call fails.
    files.Remove(path);
  }
  CString joined;
  for (const CString& element : list) {
    joined += element;
    joined += TCHAR('\n');
  }
  const auto file = files.Open(path, FileUse::kCreate);
  if (!file) return false;
  const std::string narrow = lorv::PortsInForce().code_page->ToNarrow(joined.View());
  const std::string bytes = lorv::WithCarriageReturns(narrow);
  return file->Write(bytes.data(), bytes.size()) && file->Flush();
}

bool CAdLorvComm::ReadTextFileToStringArray(LPCTSTR path, CStringArray& list, bool skip_comments) {
  const auto bytes = lorv::PortsInForce().files->ReadAll(path);
  if (!bytes) return false;
  list.RemoveAll();
  if (ReadLines(*bytes, skip_comments, list)) return true;
  list.RemoveAll();
  return false;
}
