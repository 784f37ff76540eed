#include "tools/lorv/takeoff/input/rules_file.h"

#include <array>
#include <cmath>
#include <set>

#include "TEXPRESSCAL/formula_words.h"
#include "framework/text/number_text.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/takeoff/input/column_names.h"
#include "tools/lorv/takeoff/input/takeoff_limits.h"
#include "tools/lorv/text/folded_text.h"
#include "tools/lorv/text/typed_number.h"

// Reads a rules file. It is written by people in a spreadsheet, so every cell is checked and refused with
// its place and what was meant to stand there; what a slip would make of a bill is known only to a person
// who knows the building. Formulas are not read here: they need the columns of a model.

namespace lorv::tool {
namespace {

constexpr struct {
  RuleKind kind;
  const char* names[3];
} kKinds[] = {
    {RuleKind::kQuantity, {"quantity", "工程量", ""}},   {RuleKind::kStep, {"step", "中间量", "中间量"}},
    {RuleKind::kConstant, {"constant", "常量", "常数"}}, {RuleKind::kDefault, {"default", "默认", "缺省"}},
    {RuleKind::kColumn, {"column", "列", "列"}},         {RuleKind::kText, {"text", "文字", "文字"}},
    {RuleKind::kRatio, {"ratio", "比值", "指标"}},
};

constexpr struct {
  Totalling totalling;
  const char* names[2];
} kTotallings[] = {{Totalling::kSum, {"sum", "合计"}},
                   {Totalling::kAverage, {"average", "平均"}},
                   {Totalling::kLeast, {"least", "最小"}},
                   {Totalling::kMost, {"most", "最大"}}};

class RulesReader {
 public:
  RulesReader(InputBytes& bytes, Encoding encoding) : reader_(bytes, encoding, true) {
    set_.file = bytes.Name();
  }

  RuleSet Read() {
    if (!reader_.Next(row_)) throw BadInput(reader_.Name() + Say(": the file is empty"));
    ReadHeader();
    while (reader_.Next(row_)) {
      // Names are looked up in lists for each rule: beyond this the time would grow out of all measure.
      if (set_.rules.size() == kMaxRules) Fail(0, Say("more than {} rules", {std::to_string(kMaxRules)}));
      set_.rules.push_back(ReadRule());
    }
    if (set_.rules.empty()) throw BadInput(reader_.Name() + Say(": there is no rule below the header"));
    return std::move(set_);
  }

 private:
  [[noreturn]] void Fail(std::size_t cell, const std::string& message) const {
    throw BadInput(PlaceText(reader_.Name(), row_.Place(cell)) + message);
  }
  std::string_view Cell(RuleRole role) const {
    return columns_[role] ? row_[*columns_[role]] : std::string_view();
  }
  [[noreturn]] void FailAt(RuleRole role, const std::string& message) const {
    Fail(columns_[role].value_or(0), message);
  }

  void ReadHeader();
  void CheckSurplus() const;
  Rule ReadRule();
  RuleKind ReadKind() const;
  void ReadClass(Rule& rule);
  void ReadMissing(Rule& rule) const;
  void ReadTotalling(Rule& rule) const;
  void ReadDetails(Rule& rule) const;
  void CheckName(const Rule& rule);
  double NumberOf(RuleRole role, double otherwise) const;

  CsvReader reader_;
  CsvRow row_;
  std::size_t titles_ = 0;
  RuleSet set_;
  std::array<std::optional<std::size_t>, kRuleRoles> columns_;
  ClassSelector classes_;       // of the row above
  std::set<CString> declared_;  // names that hold for all classes
};

void RulesReader::ReadHeader() {
  titles_ = row_.Size();
  for (std::size_t cell = 0; cell < row_.Size(); ++cell) {
    const std::string_view title = row_[cell];
    // Columns of people's own, for their eyes only.
    if (title.empty() || title[0] == '#') continue;
    const int role = RoleOf(RuleColumns(), title);
    // A misspelt title would leave its whole column out without a word.
    if (role < 0) {
      Fail(cell,
           Say("there is no column \"{}\" in a rules file; known are {}, and any title that begins with #",
               {title, NamesForUser(RuleColumns())}));
    }
    auto& column = columns_[static_cast<std::size_t>(role)];
    if (column) Fail(cell, Say("the column \"{}\" stands here a second time", {title}));
    column = cell;
  }
  for (const RuleRole role : {kSelectorOf, kQuantityOf, kFormulaOf}) {
    if (columns_[role]) continue;
    Fail(0, Say("the header has no column {}",
                {NamesForUser(RuleColumns().subspan(static_cast<std::size_t>(role), 1))}));
  }
}

RuleKind RulesReader::ReadKind() const {
  const std::string kind = Folded(Cell(kKindOf));
  // Most rows are quantities: a file without the column has nothing else.
  if (kind.empty()) return RuleKind::kQuantity;
  std::string known;
  for (const auto& entry : kKinds) {
    for (const char* name : entry.names) {
      if (kind == name) return entry.kind;
    }
    known += std::string(known.empty() ? "" : ", ") + entry.names[0] + " (" + entry.names[1] + ")";
  }
  FailAt(kKindOf, Say("there is no kind \"{}\"; known are {}", {kind, known}));
}

// A blank class is that of the row above, as in a spreadsheet whose cells are merged.
void RulesReader::ReadClass(Rule& rule) {
  const std::string_view cell = Cell(kSelectorOf);
  const bool for_all = rule.kind == RuleKind::kConstant || rule.kind == RuleKind::kColumn ||
                       rule.kind == RuleKind::kText || rule.kind == RuleKind::kRatio;
  if (for_all) {
    // A class there would seem to limit the row, and does not.
    if (!cell.empty())
      FailAt(kSelectorOf, Say("a row of this kind holds for all classes: leave the class blank"));
    return;
  }
  if (!cell.empty()) classes_ = ClassSelector(cell);
  if (classes_.IsEmpty()) FailAt(kSelectorOf, Say("the class is missing, here and in the rows above"));
  rule.classes = classes_;
}

double RulesReader::NumberOf(RuleRole role, double otherwise) const {
  if (Cell(role).empty()) return otherwise;
  const std::optional<double> number = WholeNumber(Cell(role));
  // Numbers of spreadsheets come as people see them: the hint says which sign is in the way.
  if (!number) FailAt(role, Say("\"{}\" is no number", {Cell(role)}) + NumberHint(Cell(role)));
  return *number;
}

void RulesReader::ReadMissing(Rule& rule) const {
  const std::string word = Folded(Cell(kMissingOf));
  if (word.empty() || word == "report" || word == "报告") return;
  if (word == "skip" || word == "跳过") {
    rule.missing = Missing::kSkip;
    return;
  }
  if (!WholeNumber(word))
    FailAt(kMissingOf, Say("\"{}\" is neither report (报告), skip (跳过) nor a number", {word}));
  rule.missing = Missing::kUseNumber;
  rule.missing_value = *WholeNumber(word);
}

void RulesReader::ReadTotalling(Rule& rule) const {
  const std::string word = Folded(Cell(kTotalOf));
  if (word.empty()) return;
  for (const auto& entry : kTotallings) {
    if (word != entry.names[0] && word != entry.names[1]) continue;
    rule.totalling = entry.totalling;
    return;
  }
  FailAt(kTotalOf, Say("\"{}\" is neither sum (合计), average (平均), least (最小) nor most (最大)", {word}));
  // Any other word would total in a way that nobody asked for.
}

void RulesReader::ReadDetails(Rule& rule) const {
  const double decimals = NumberOf(kDecimalsOf, kDecimals);
  if (decimals < 0 || decimals > kMostDecimals || decimals != std::floor(decimals)) {
    FailAt(kDecimalsOf, Say("decimals go from 0 to {}", {std::to_string(kMostDecimals)}));
  }
  // Only what the row says, so that rows of one quantity can be joined.
  if (!Cell(kDecimalsOf).empty()) rule.decimals = static_cast<int>(decimals);
  rule.factor = NumberOf(kFactorOf, 1);
  if (rule.factor == 0) FailAt(kFactorOf, Say("a factor of 0 makes every result 0"));
  ReadMissing(rule);
  ReadTotalling(rule);
  if (columns_[kConditionOf]) rule.condition_place = row_.Place(*columns_[kConditionOf]);
  if (columns_[kTotalOf]) rule.total_place = row_.Place(*columns_[kTotalOf]);
  rule.unit = Cell(kUnitOf);
  rule.condition = CString::FromUtf8(Cell(kConditionOf));
  rule.compare = Cell(kCompareOf);
  rule.group = Cell(kGroupOf);
}

// Names that formulas use must be names; those that hold for all classes stand once.
void RulesReader::CheckName(const Rule& rule) {
  if (rule.name.empty()) FailAt(kQuantityOf, Say("the name is missing"));
  if (rule.kind == RuleKind::kQuantity || rule.kind == RuleKind::kStep || rule.kind == RuleKind::kRatio)
    return;
  const CString name = CString::FromUtf8(rule.name);
  if (!IsName(name.View())) {
    FailAt(kQuantityOf, Say("\"{}\" cannot be a name in a formula: letters, digits and _ only, no digit "
                            "in front, and no name of a function",
                            {rule.name}));
  }
  if (rule.kind != RuleKind::kDefault && !declared_.insert(NameKey(name.View())).second) {
    FailAt(kQuantityOf, Say("\"{}\" is declared a second time", {rule.name}));
  }
}

// A formula with an unquoted comma falls apart into two cells: the row is then longer than the header.
void RulesReader::CheckSurplus() const {
  for (std::size_t cell = titles_; cell < row_.Size(); ++cell) {
    if (!row_[cell].empty())
      Fail(cell, Say("more cells than the header has; a formula with a comma stands in quotes"));
  }
}

Rule RulesReader::ReadRule() {
  Rule rule;
  // First of all: behind a comma too many every other cell would be called wrong.
  CheckSurplus();
  rule.place = row_.Place();
  rule.kind = ReadKind();
  ReadClass(rule);
  rule.name = Cell(kQuantityOf);
  CheckName(rule);
  rule.formula = CString::FromUtf8(Cell(kFormulaOf));
  rule.formula_place = row_.Place(*columns_[kFormulaOf]);
  if (rule.formula.IsEmpty()) FailAt(kFormulaOf, Say("the formula is missing"));
  ReadDetails(rule);
  return rule;
}

}  // namespace

RuleSet ReadRules(InputBytes& bytes, Encoding encoding) {
  return RulesReader(bytes, encoding).Read();
}

}  // namespace lorv::tool
