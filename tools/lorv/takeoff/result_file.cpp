#include "tools/lorv/takeoff/result_file.h"

#include "tools/lorv/csv/csv_writer.h"

namespace lorv::tool {

ResultFile::ResultFile(const std::string& path, bool mark, const ComponentsFile& file,
                       const Quantities& quantities, const RuleSet& rules, std::ostream& standard_output)
    : out_(path, standard_output), quantities_(quantities), rules_(rules) {
  CsvLine line;
  for (std::size_t column = 0; column < file.Titles().size(); ++column) {
    if (RoleOf(ComponentColumns(), file.Titles()[column]) < 0) continue;
    columns_.push_back(column);
    line.Add(file.Titles()[column]);
  }
  for (const Quantity& quantity : quantities.List()) line.Add(quantity.Title());
  line.Add("not worked");
  out_.Write((mark ? "\xEF\xBB\xBF" : "") + line.Take());
}

void ResultFile::Add(const ComponentsFile& file, const std::vector<Result>& results) {
  std::vector<std::string> cells(quantities_.List().size());
  std::string failed;
  for (const Result& result : results) {
    if (result.state == Result::kNone) continue;
    const int quantity = quantities_.Of(result.rule);
    if (result.state == Result::kFailed) {
      failed += (failed.empty() ? "" : "; ") + rules_.rules[result.rule].name;
    } else if (quantity >= 0) {
      cells[static_cast<std::size_t>(quantity)] = PlainReal(result.value);
    }
  }
  CsvLine line;
  for (const std::size_t column : columns_) line.Add(file.Row()[column]);
  for (const std::string& cell : cells) line.Add(cell);
  line.Add(failed);
  out_.Write(line.Take());
}

}  // namespace lorv::tool
