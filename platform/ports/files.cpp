#include "platform/ports/files.h"

#include "framework/text/char_class.h"

namespace lorv {
namespace {

constexpr std::size_t kBlock = 65536;
constexpr LPCTSTR kBesideSuffix = _T(".writing");

bool ReadBlocks(File& file, std::string& bytes) {
  std::vector<char> block(kBlock);
  for (;;) {
    const std::int64_t count = file.Read(block.data(), block.size());
    if (count <= 0) return count == 0;
    bytes.append(block.data(), static_cast<std::size_t>(count));
  }
}

bool SameLetter(TCHAR a, TCHAR b) {
  return ToLower(a) == ToLower(b);
}

}  // namespace

std::optional<std::string> Files::ReadAll(LPCTSTR path) {
  const std::unique_ptr<File> file = Open(path, FileUse::kRead);
  if (!file) return std::nullopt;
  std::string bytes;
  if (!ReadBlocks(*file, bytes)) return std::nullopt;
  return bytes;
}

bool Files::WriteWhole(LPCTSTR path, std::string_view bytes) {
  const CString beside = CString(path) + kBesideSuffix;
  std::unique_ptr<File> file = Open(beside, FileUse::kCreate);
  if (!file) return false;
  const bool written = file->Write(bytes.data(), bytes.size()) && file->Flush();
  file.reset();
  if (written && Replace(beside, path)) return true;
  Remove(beside);
  return false;
}

std::string WithCarriageReturns(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 16);
  for (const char byte : text) {
    if (byte == '\n') out += '\r';
    out += byte;
  }
  return out;
}

// On a mismatch the last "*" takes in one unit more; earlier ones never need to change.
bool FitsPattern(TextView name, TextView pattern) {
  if (pattern == TextView(_T("*.*"))) return true;
  std::size_t n = 0;
  std::size_t p = 0;
  std::size_t star = TextView::npos;
  std::size_t taken = 0;
  while (n < name.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      star = p++;
      taken = n;
    } else if (p < pattern.size() && (pattern[p] == '?' || SameLetter(pattern[p], name[n]))) {
      ++p;
      ++n;
    } else if (star != TextView::npos) {
      p = star + 1;
      n = ++taken;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace lorv
