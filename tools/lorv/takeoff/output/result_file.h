#pragma once

#include <string>
#include <vector>

#include "tools/lorv/takeoff/evaluate/component_evaluator.h"
#include "tools/lorv/takeoff/evaluate/quantities.h"
#include "tools/lorv/takeoff/output/table_file.h"

namespace lorv::tool {

// How the full table is written.
struct ResultLayout {
  bool mark = false;      // begin with the byte order mark that spreadsheet programs want for Chinese text
  bool explains = false;  // a column more for each quantity: its formula with the values in it
};

// The full table: a row a component, a column a quantity, written as the work goes on. A quantity that a
// component does not have is blank; one that could not be evaluated is named in the last column, and so is a
// component for whose class there is no rule.
class ResultFile {
 public:
  // As TableFile takes them.
  ResultFile(const std::string& path, ResultLayout layout, const ComponentsFile& file,
             const Quantities& quantities, const RuleSet& rules, Console& console);

  // `evaluator` has just evaluated the component that the file stands at.
  void Add(const ComponentsFile& file, const std::vector<Result>& results, ComponentEvaluator& evaluator);
  void Commit(const Bill& bill) { out_.Commit(bill); }

 private:
  TableFile out_;
  ResultLayout layout_;
  const Quantities& quantities_;
  const RuleSet& rules_;
  std::vector<std::size_t> columns_;  // of the components file that identify the component
};

}  // namespace lorv::tool
