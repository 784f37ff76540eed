#include "spreadsheet/servers/engine/xlsx/workbook_parts.h"

#include <algorithm>

#include "spreadsheet/servers/engine/engine_failure.h"
#include "spreadsheet/servers/engine/engine_limits.h"

// The archive of a workbook as its parts. Which part is which is given by relations, never by name: writers
// are free in their names, and some use other cases or slashes than the relations do.

namespace lorv::engine {
namespace {

std::string SmallLetters(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](char c) {
    return c == '\\' ? '/' : c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  });
  return name;
}

// A target as a path from the file's top: it is given from the folder of its part, or with "/" from the top.
std::string ResolvedPath(const std::string& folder, std::string target) {
  std::replace(target.begin(), target.end(), '\\', '/');
  std::string path = target.starts_with("/") ? std::string() : folder;
  for (std::size_t at = 0; at <= target.size();) {
    const std::size_t end = std::min(target.find('/', at), target.size());
    const std::string piece = target.substr(at, end - at);
    at = end + 1;
    if (piece.empty() || piece == ".") continue;
    if (piece == "..") {
      // Above the top there is only the top.
      path.erase(path.find_last_of('/') == std::string::npos ? 0 : path.find_last_of('/'));
      continue;
    }
    path += (path.empty() ? "" : "/") + piece;
  }
  return path;
}

class RelationHandler : public XmlHandler {
 public:
  RelationHandler(std::string folder, std::map<std::string, WorkbookParts::Relation>& relations)
      : folder_(std::move(folder)), relations_(relations) {}

  void Start(std::string_view name, XmlAttributes attributes) override {
    // What lies outside the file is never opened: a workbook must not reach into the network.
    if (name != "Relationship" || attributes.Value("TargetMode") == "External") return;
    // Only the last word counts: the standard's two variants differ in front of it.
    const std::string_view type = attributes.Value("Type");
    std::string target;
    AppendXmlText(attributes.Value("Target"), false, target);
    relations_[std::string(attributes.Value("Id"))] = {std::string(type.substr(type.find_last_of('/') + 1)),
                                                       ResolvedPath(folder_, target)};
  }
  void End(std::string_view /*name*/) override {}
  void Text(std::string_view /*raw*/, bool /*literal*/) override {}

 private:
  std::string folder_;
  std::map<std::string, WorkbookParts::Relation>& relations_;
};

}  // namespace

WorkbookParts::WorkbookParts(File& file) {
  ZipEntry entry;
  if (zip_.Open(file) != kZipOk || zip_.GetItem(-1, entry) != kZipOk) {
    Fail(_T("文件不是有效的工作簿。"));
  }
  const int count = entry.index;
  for (int i = 0; i < count; ++i) {
    // An entry that the archive's reader refuses is none; a workbook that needs it lacks it then.
    // Of two entries of a name the first one is taken.
    if (zip_.GetItem(i, entry) == kZipOk) entries_.emplace(SmallLetters(entry.name), i);
  }
}

int WorkbookParts::Index(const std::string& path) const {
  const auto found = entries_.find(SmallLetters(path));
  return found == entries_.end() ? -1 : found->second;
}

void WorkbookParts::Read(const std::string& path, XmlHandler& handler) {
  const int index = Index(path);
  if (index < 0) Fail(_T("工作簿文件已损坏：缺少组成部分。"));
  ZipEntry entry;
  // What it claims is believed before a byte of it is unpacked: one that claims less than it holds fails
  // below.
  if (zip_.GetItem(index, entry) == kZipOk &&
      unpacked_ + static_cast<std::uint64_t>(entry.size) > kMaxUnpacked) {
    Fail(_T("工作簿文件展开后过大。"));
  }
  XmlFeed feed(handler);
  const DWORD result = zip_.UnzipItem(index, [&](std::span<const unsigned char> bytes) {
    // Counted at each reading: many sheets of a list may name one and the same part.
    unpacked_ += bytes.size();
    if (unpacked_ > kMaxUnpacked) Fail(_T("工作簿文件展开后过大。"));
    // Parts are unpacked into the reader block by block and are never in memory as a whole.
    feed.Feed(std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
    return true;
  });
  if (result != kZipOk) Fail(_T("工作簿文件已损坏：无法展开。"));
  feed.Finish();
}

std::map<std::string, WorkbookParts::Relation> WorkbookParts::Relations(const std::string& part) {
  const std::size_t slash = part.find_last_of('/');
  const std::string folder = slash == std::string::npos ? std::string() : part.substr(0, slash);
  const std::string name = slash == std::string::npos ? part : part.substr(slash + 1);
  const std::string path = (folder.empty() ? "" : folder + "/") + "_rels/" + name + ".rels";
  std::map<std::string, Relation> relations;
  // A part without relations has no such file.
  if (!Has(path)) return relations;
  RelationHandler handler(folder, relations);
  Read(path, handler);
  return relations;
}

}  // namespace lorv::engine
