#pragma once

#include <map>
#include <string>
#include <vector>

#include "compress/zip/zip_reader.h"
#include "spreadsheet/servers/engine/xlsx/xml_feed.h"

namespace lorv::engine {

// The parts of a workbook file, by their paths in it.
class WorkbookParts {
 public:
  // Raises the engine's failure for what is no archive.
  explicit WorkbookParts(File& file);

  bool Has(const std::string& path) const { return Index(path) >= 0; }
  // Feeds a part to a handler; raises the engine's failure for a damaged one, and when all that was unpacked
  // so far is more than kMaxUnpacked.
  void Read(const std::string& path, XmlHandler& handler);

  // A relation of a part to another.
  struct Relation {
    std::string type;    // behind its last "/"
    std::string target;  // path of the part
  };
  // By their names; none where the part has no relations.
  std::map<std::string, Relation> Relations(const std::string& part);

 private:
  int Index(const std::string& path) const;

  ZipReader zip_;
  std::map<std::string, int> entries_;  // in small letters, as the names of parts ignore case
  std::uint64_t unpacked_ = 0;
};

}  // namespace lorv::engine
