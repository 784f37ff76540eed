#include "tools/lorv/takeoff/output/result_file.h"

#include "tools/lorv/language/spoken_language.h"

// The full table: for each component what it is and what was calculated of it. It is the trail from a total
// of the bill back to components, so nothing is left out: what failed is named in the row.

namespace lorv::tool {

ResultFile::ResultFile(const std::string& path, ResultLayout layout, const ComponentsFile& file,
                       const Quantities& quantities, const RuleSet& rules, Console& console)
    : out_(path, layout.mark, console), layout_(layout), quantities_(quantities), rules_(rules) {
  for (std::size_t column = 0; column < file.Titles().size(); ++column) {
    // What identifies the component, and none of the dimensions: the model's own file has those.
    if (file.RoleAt(column) < 0) continue;
    columns_.push_back(column);
    out_.AddText(file.Titles()[column]);
  }
  for (const Quantity& quantity : quantities.List()) {
    // A ratio is of totals; no single component has one.
    if (quantity.is_ratio) continue;
    out_.AddText(quantity.Title());
    if (layout.explains) out_.AddText(Say("{}, worked out", {quantity.name}));
  }
  // The same in both languages, as other programs look for the column.
  out_.AddText("not worked");
  out_.EndRow();
}

void ResultFile::Add(const ComponentsFile& file, const std::vector<Result>& results,
                     ComponentEvaluator& evaluator) {
  struct Cell {
    std::string number;
    std::string with_values;
  };
  std::vector<Cell> cells(quantities_.List().size());
  std::string failed = results.empty() ? Say("no rule is for this class") : std::string();
  for (std::size_t i = 0; i < results.size(); ++i) {
    const Result& result = results[i];
    // No row of the name fitted: the cell stays blank, which is no failure.
    if (result.state == Result::kNone) continue;
    const int quantity = quantities_.Of(result.rule);
    if (result.state == Result::kFailed) {
      failed += (failed.empty() ? "" : "; ") + rules_.rules[result.rule].name;
    } else if (quantity >= 0) {
      Cell& cell = cells[static_cast<std::size_t>(quantity)];
      cell.number = PlainReal(result.value);
      if (layout_.explains) cell.with_values = evaluator.TextWithValues(i).ToUtf8();
    }
  }
  for (const std::size_t column : columns_) out_.AddText(file.Row()[column]);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (quantities_.List()[i].is_ratio) continue;
    out_.AddNumber(cells[i].number);
    if (layout_.explains) out_.AddText(cells[i].with_values);
  }
  out_.AddText(failed);
  out_.EndRow();
}

}  // namespace lorv::tool
