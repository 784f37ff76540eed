#pragma once

#include <string>
#include <vector>

#include "tools/lorv/csv/output_file.h"
#include "tools/lorv/takeoff/bill.h"
#include "tools/lorv/takeoff/component_worker.h"

namespace lorv::tool {

// The full table: a row a component, a column a quantity, written as the work goes on. A quantity that a
// component does not have is blank; one that could not be worked is named in the last column.
class ResultFile {
 public:
  // With `mark` the file begins with the byte order mark that spreadsheet programs want for Chinese text.
  // "-" is `standard_output`.
  ResultFile(const std::string& path, bool mark, const ComponentsFile& file, const Quantities& quantities,
             const RuleSet& rules, std::ostream& standard_output);

  void Add(const ComponentsFile& file, const std::vector<Result>& results);
  void Commit() { out_.Commit(); }

 private:
  OutputFile out_;
  const Quantities& quantities_;
  const RuleSet& rules_;
  std::vector<std::size_t> columns_;  // of the components file that tell which component it is
};

}  // namespace lorv::tool
