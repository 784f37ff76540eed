#include "tools/lorv/takeoff/plan/plan.h"

#include <algorithm>

#include "TEXPRESSCAL/formula_words.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/formula/circle_number.h"
#include "tools/lorv/language/spoken_language.h"

// Binds the rows of a rules file to the columns of a components file: says what each name in a formula stands
// for and which rows a class gets. A plan is made for each set of rows that some class fits, as models have
// hundreds of classes and rule sets only a few patterns.

namespace lorv::tool {
namespace {

// Messages that are thrown have no terminal to ask for its width.
constexpr int kMessageColumns = 100;

CString Key(const std::string& name) {
  return NameKey(CString::FromUtf8(name).View());
}

// A constant has nothing to take values from.
class NoValues : public ValueSource {
 public:
  std::optional<double> DimensionOf(std::size_t /*index*/) override { return std::nullopt; }
  std::optional<double> ResultOf(std::size_t /*index*/) override { return std::nullopt; }
  CString TextOf(std::size_t /*column*/) override { return {}; }
};

}  // namespace

Planner::Planner(const RuleSet& rules, const ComponentsFile& file, PlanOptions options)
    : rules_(rules), file_(file), options_(options) {
  for (std::size_t column = 0; column < file.Titles().size(); ++column) {
    const std::string& title = file.Titles()[column];
    // A column without a title has no name that a formula could use.
    if (title.empty()) continue;
    names_[Key(title)] = {Symbol::kDimension, DimensionNamed(title, column, 1)};
  }
  // After all other columns: a title such as "类型" is a word, although any column could be a number.
  DeclareSpecialTexts(file);
  for (std::size_t index = 0; index < rules.rules.size(); ++index) {
    Declare(index);
    // PI is a number of the language and hides what is called so; a file that names something PI gets a
    // warning.
    names_the_circle_ = names_the_circle_ || Key(rules.rules[index].name) == _T("PI");
  }
  names_the_circle_ = names_the_circle_ || names_.contains(_T("PI"));
  // After all rows, as a row may compare with a column that one below it declares.
  for (std::size_t index = 0; index < rules.rules.size(); ++index) stored_.push_back(FindStored(index));
  for (const auto& [name, symbol] : names_) known_.AddSorted(CStrCmp(name));
}

void Planner::Fail(const Rule& rule, const std::string& message) const {
  throw BadInput(PlaceText(rules_.file, rule.formula_place) + message);
}

std::size_t Planner::DimensionNamed(const std::string& name, std::optional<std::size_t> column,
                                    double factor) {
  dimensions_.push_back({name, column, factor});
  return dimensions_.size() - 1;
}

// Class, name, storey and type are words under both their names, whichever the file uses. The count
// is a number.
void Planner::DeclareSpecialTexts(const ComponentsFile& file) {
  for (const KnownColumn& known : ComponentColumns()) {
    const auto column = file.Column(static_cast<ComponentRole>(known.role));
    if (!column || known.role == kCountOf) continue;
    for (const std::string_view name : known.names) {
      names_[Key(std::string(name))] = {Symbol::kText, *column};
    }
  }
}

void Planner::Declare(std::size_t index) {
  const Rule& rule = rules_.rules[index];
  if (rule.kind == RuleKind::kConstant) return DeclareConstant(index);
  if (rule.kind == RuleKind::kColumn || rule.kind == RuleKind::kText) return DeclareColumn(index);
  // A default names a dimension that the file may lack as a whole: without this the name would be unknown.
  if (rule.kind != RuleKind::kDefault || names_.contains(Key(rule.name))) return;
  names_[Key(rule.name)] = {Symbol::kDimension, DimensionNamed(rule.name, {}, 1)};
}

void Planner::DeclareColumn(std::size_t index) {
  const Rule& rule = rules_.rules[index];
  const std::string title = rule.formula.ToUtf8();
  const auto column = file_.Column(title);
  // Reported and not refused: one rule set serves models of several programs, and not each exports all
  // columns.
  if (!column) absences_.push_back({index, title, Absence::kColumn});
  if (rule.kind == RuleKind::kText) {
    // A cell outside its row is empty.
    names_[Key(rule.name)] = {Symbol::kText, column.value_or(file_.Titles().size())};
  } else {
    names_[Key(rule.name)] = {Symbol::kDimension, DimensionNamed(rule.name, column, rule.factor)};
  }
}

void Planner::DeclareConstant(std::size_t index) {
  const Rule& rule = rules_.rules[index];
  // Constants lean on constants above them only: there is no component from which a value could come.
  BoundFormula formula(rule.formula, [this](const CString& key) {
    const auto found = names_.find(key);
    return found != names_.end() && found->second.kind == Symbol::kConstant ? found->second : Symbol();
  });
  NoValues none;
  const Outcome outcome = formula.Evaluate(none, std::nullopt);
  // A constant that fails would fail every rule that uses it, in words that do not name it.
  if (outcome.state != Outcome::kEvaluated) {
    Fail(rule, Say("the constant {} cannot be calculated: {}", {rule.name, outcome.fault.message}) + "\n" +
                   CaretText(rule.formula, outcome.fault.position, outcome.fault.length, kMessageColumns));
  }
  for (const Fault& doubt : formula.Doubts()) constant_doubts_.emplace_back(index, doubt);
  if (outcome.doubt) constant_doubts_.emplace_back(index, *outcome.doubt);
  names_[Key(rule.name)] = {Symbol::kConstant, 0, outcome.value * rule.factor};
}

std::optional<Stored> Planner::FindStored(std::size_t index) {
  const Rule& rule = rules_.rules[index];
  // Asked for only with --compare: else the absence of the column would be noted without a reason.
  if (!options_.compares || rule.compare.empty()) return std::nullopt;
  const auto declared = names_.find(Key(rule.compare));
  if (declared != names_.end() && declared->second.kind == Symbol::kDimension) {
    const Dimension& dimension = dimensions_[declared->second.index];
    if (dimension.column) return Stored{*dimension.column, dimension.factor};
  }
  absences_.push_back({index, rule.compare, Absence::kCompare});
  return std::nullopt;
}

Plan& Planner::PlanOf(const std::string& class_name) {
  Plan*& plan = by_class_[class_name];
  if (plan != nullptr) return *plan;
  std::vector<bool> fits;
  for (const Rule& rule : rules_.rules) fits.push_back(rule.classes.Fits(class_name));
  // Classes are held against their patterns once, whatever the number of components.
  std::unique_ptr<Plan>& made = plans_[fits];
  if (made == nullptr) made = MakePlan(fits);
  plan = made.get();
  return *plan;
}

std::unique_ptr<Plan> Planner::MakePlan(const std::vector<bool>& fits) {
  auto plan = std::make_unique<Plan>();
  Names results;
  for (std::size_t index = 0; index < rules_.rules.size(); ++index) {
    if (!fits[index]) continue;
    if (rules_.rules[index].kind == RuleKind::kDefault) {
      BindDefault(index, *plan);
    } else {
      BindQuantity(index, *plan, results);
    }
  }
  return plan;
}

// What stands nearer goes first: a quantity calculated above, then what is declared for all classes.
Symbol Planner::Find(const CString& key, const Names& results) const {
  const auto result = results.find(key);
  if (result != results.end()) return result->second;
  const auto named = names_.find(key);
  return named == names_.end() ? Symbol() : named->second;
}

// A rule that says what to do without a value does it for a name that the file knows nothing of, too.
Symbol Planner::FindFor(std::size_t rule, const CString& key, const Names& results) {
  const Symbol found = Find(key, results);
  if (found.kind != Symbol::kUnknown || rules_.rules[rule].missing == Missing::kReport) return found;
  const std::string name = key.ToUtf8();
  // Reported once a rule and name, as the name is looked up again for each plan.
  const bool is_told = std::any_of(absences_.begin(), absences_.end(), [&](const Absence& absence) {
    return absence.rule == rule && absence.name == name;
  });
  if (!is_told) absences_.push_back({rule, name, Absence::kName});
  return {Symbol::kDimension, DimensionNamed(name, {}, 1)};
}

BoundFormula Planner::Bound(const CString& formula, const Lookup& lookup) {
  BoundFormula bound(formula, lookup, known_, options_.digits);
  // Looked for only where something is called PI: elsewhere the number is what is meant.
  const auto circle = names_the_circle_ ? CircleNumberIn(formula) : std::nullopt;
  if (circle && !bound.FaultOfText()) {
    bound.AddDoubt({circle->position, circle->length,
                    Say("'{}' is the number 3.14159 here, not what is called so", {circle->name.ToUtf8()}),
                    false, false});
  }
  return bound;
}

std::vector<const Plan*> Planner::Plans() const {
  std::vector<const Plan*> plans;
  for (const auto& [fits, plan] : plans_) plans.push_back(plan.get());
  return plans;
}

void Planner::BindQuantity(std::size_t index, Plan& plan, Names& results) {
  const Rule& rule = rules_.rules[index];
  const CString key = Key(rule.name);
  // Alternatives of one name do not see each other: the name is then what it is to the first of them.
  const auto lookup = [&](const CString& name) {
    return FindFor(index, name, name == key ? Names() : results);
  };
  std::optional<BoundFormula> condition;
  if (!rule.condition.IsEmpty()) condition.emplace(Bound(rule.condition, lookup));
  BoundFormula formula = Bound(rule.formula, lookup);
  // All rows of a name share one result: the first that counts gives it.
  if (!results.contains(key)) results[key] = {Symbol::kResult, plan.results++};
  plan.rules.push_back({index, results[key].index, std::move(formula), std::move(condition)});
}

// A default may lean on the component's columns and on constants, not on quantities: those come after it.
void Planner::BindDefault(std::size_t index, Plan& plan) {
  const Rule& rule = rules_.rules[index];
  const Symbol& dimension = names_.at(Key(rule.name));
  // A default for a constant or for words would never be asked for.
  if (dimension.kind != Symbol::kDimension)
    Fail(rule, Say("\"{}\" is no dimension and has no default", {rule.name}));
  const auto lookup = [&](const CString& key) { return FindFor(index, key, {}); };
  std::optional<BoundFormula> condition;
  if (!rule.condition.IsEmpty()) condition.emplace(Bound(rule.condition, lookup));
  plan.defaults.push_back({index, dimension.index, Bound(rule.formula, lookup), std::move(condition)});
}

// Any row above may be for a component that this one is for, too: all their quantities are known to it. Those
// of a default are not, as quantities are evaluated after it.
BoundRule Planner::BindAlone(std::size_t index) {
  const Rule& rule = rules_.rules[index];
  Names results;
  std::size_t count = 0;
  for (std::size_t above = 0; above < index && rule.kind != RuleKind::kDefault; ++above) {
    const RuleKind kind = rules_.rules[above].kind;
    if (kind == RuleKind::kQuantity || kind == RuleKind::kStep)
      results[Key(rules_.rules[above].name)] = {Symbol::kResult, count++};
  }
  const auto lookup = [&](const CString& name) { return FindFor(index, name, results); };
  std::optional<BoundFormula> condition;
  if (!rule.condition.IsEmpty()) condition.emplace(Bound(rule.condition, lookup));
  return {index, 0, Bound(rule.formula, lookup), std::move(condition)};
}

}  // namespace lorv::tool
