#include "platform/ports/files.h"

#include <algorithm>
#include <mutex>
#include <random>
#include <utility>

#include "framework/text/char_class.h"
#include "platform/ports/file_parts.h"

// What all file ports share: reading whole files, replacing them so that a reader sees the old or the new
// contents and nothing between, patterns. It uses the port's own operations, so a test's files in memory
// behave the same.

namespace lorv {
namespace {

constexpr std::size_t kBlock = 65536;
constexpr TextView kUnfinishedBegin = _T(".lorv-");
constexpr TextView kUnfinishedEnd = _T(".part");
constexpr std::size_t kUnfinishedLetters = 16;
constexpr TextView kHexLetters = _T("0123456789abcdef");

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

std::uint64_t NumberByChance() {
  // Made once: to find out what the processor offers takes longer than to make a file.
  static std::random_device chance;
  static std::mutex lock;
  const std::lock_guard<std::mutex> hold(lock);
  return static_cast<std::uint64_t>(chance()) << 32 | chance();
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
  const CString beside = UnfinishedPath(path);
  // In the same folder, so that the name can be taken over; created exclusively, so that nobody's link is
  // followed.
  std::unique_ptr<File> file = Open(beside, FileUse::kCreateNew);
  if (!file) return false;
  // On the disk before it takes the name: after a loss of power there must not be an empty file in its place.
  const bool written = file->Write(bytes.data(), bytes.size()) && file->Sync();
  file.reset();
  if (written && Replace(beside, path)) return SyncFolder(FolderOfPath(path));
  Remove(beside);
  return false;
}

CString FolderOfPath(LPCTSTR path) {
  const CString whole(path);
  return whole.Left(std::max(whole.ReverseFind('/'), whole.ReverseFind('\\')) + 1);
}

CString UnfinishedPath(LPCTSTR path) {
  std::uint64_t number = NumberByChance();
  CString name = FolderOfPath(path) + CString(kUnfinishedBegin);
  for (std::size_t i = 0; i < kUnfinishedLetters; ++i, number >>= 4) name += kHexLetters[number & 15];
  return name + CString(kUnfinishedEnd);
}

bool IsUnfinishedName(TextView name) {
  if (name.size() != kUnfinishedBegin.size() + kUnfinishedLetters + kUnfinishedEnd.size()) return false;
  const TextView letters = name.substr(kUnfinishedBegin.size(), kUnfinishedLetters);
  return name.starts_with(kUnfinishedBegin) && name.ends_with(kUnfinishedEnd) &&
         letters.find_first_not_of(kHexLetters) == TextView::npos;
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
  // Means all files, those without a point among them.
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

bool FolderList::Wants(const CString& name) const {
  return name != _T(".") && name != _T("..") && FitsPattern(name.View(), pattern_.View());
}

std::vector<FoundFile> FolderList::InOrder() {
  std::sort(found_.begin(), found_.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
  return std::move(found_);
}

}  // namespace lorv
