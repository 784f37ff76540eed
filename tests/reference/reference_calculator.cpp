#include "tests/reference/reference_calculator.h"

#include <algorithm>
#include <string>

#include "tests/reference/reference_sorted.h"

namespace lorv::reference {

namespace {

constexpr std::size_t kFormulaUnits = 1023;
constexpr std::size_t kFlaggedUnits = 1024;

bool IsPlainNumber(const Text& text) {
  if (text.empty()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool sign = i == 0 && text[i] == '-';
    if (!sign && !IsDecimalDigit(text[i]) && text[i] != '.') return false;
  }
  return true;
}

Text Decimal(int value) {
  const std::string digits = std::to_string(value);
  return Text(digits.begin(), digits.end());
}

}  // namespace

KeyWords* ClassKeyWords::Get(const Text& id, const std::vector<Text>& first,
                             const std::vector<Text>& second) {
  if (id.empty()) return nullptr;
  const bool known = sets_.count(id) != 0;
  KeyWords& set = sets_[id];
  if (!known) {
    for (const Text& name : first) AddKeyWord(set, name, true);
  }
  for (const Text& name : second) AddKeyWord(set, name, true);
  return &set;
}

void AddKeyWord(KeyWords& set, const Text& name, bool upper) {
  const Text key = FirstTwenty(name);
  AddSorted(set, upper ? Upper(key) : key, CompareFolded);
}

void Calculator::SetExpr(const Text& text) {
  const Text given = AsPointerText(text);
  too_long_ = given.size() > kFlaggedUnits;
  expr_ = Upper(given.substr(0, kFormulaUnits));
  calc_ = expr_;
  longest_ = calc_.size();
}

bool Calculator::Accepts(const Text& name) const {
  return FindKey(keywords_, name, CompareFolded) >= 0;
}

Expression Calculator::WithResolver() const {
  Expression expression;
  expression.resolver = [this](const Text& name) { return Accepts(name); };
  return expression;
}

bool Calculator::ValidExp(Text& message) const {
  message.clear();
  if (too_long_) {
    message = _T("字符太长,最长只能处理1024个字符的表达式!");
    return false;
  }
  Expression expression = WithResolver();
  const int failed = expression.ChangeExpression(expr_);
  if (failed >= 0) {
    message = _T("表达式在第 ") + Decimal(failed) + _T(" 个字符有误");
    return false;
  }
  double value = 0;
  const int code = expression.Value(value);
  if (code == 1) message = _T("除数为零");
  if (code == 5) message = _T("表达式非法");
  return message.empty();
}

double Calculator::CalcExpr(const Text& text, int& error) const {
  error = 0;
  Expression expression = WithResolver();
  const int failed = expression.ChangeExpression(text);
  if (failed >= 0) {
    error = failed;
    return 0;
  }
  double value = 0;
  const int code = expression.Value(value);
  if (code == 1 || code == 5) error = 1;
  return value;
}

void Calculator::Put(const Text& name, double value) {
  ReplExprWithOneValue(calc_, name, value);
  longest_ = std::max(longest_, calc_.size());
}

double Calculator::Calculate(int& error) {
  if (IsPlainNumber(calc_)) {
    error = 0;
    return ReadNumber(calc_);
  }
  for (const auto& [name, value] : *values_) Put(name, value);
  for (const Text& name : NamesOf(calc_)) {
    if (values_->count(FirstTwenty(name)) == 0) Put(FirstTwenty(name), 0);
  }
  const double value = CalcExpr(calc_, error);
  return error != 0 ? 0 : value;
}

int Calculator::SetVarValue(const Text& name, double value, bool keep_existing) {
  const Text key = FirstTwenty(Upper(name));
  if (!keep_existing || values_->count(key) == 0) (*values_)[key] = value;
  AddKeyWord(keywords_, name, false);
  return 1;
}

int Calculator::SetVarValue(const ValueMap& map) {
  external_ = false;
  *values_ = map;
  return 1;
}

int Calculator::SetVarValue(const std::shared_ptr<ValueMap>& external) {
  if (external == values_) return 1;
  values_ = external;
  external_ = true;
  return 1;
}

void Calculator::OwnMap() {
  if (external_) {
    values_ = std::make_shared<ValueMap>();
  } else {
    values_->clear();
  }
  external_ = false;
}

int Calculator::SetVarValue(const std::map<Text, double>& map) {
  OwnMap();
  for (const auto& [name, value] : map) SetVarValue(name, value, false);
  return static_cast<int>(values_->size());
}

int Calculator::SetVarValue(const Text& list) {
  OwnMap();
  if (list.empty()) return 0;
  for (const Text& piece : Pieces(list, ';')) {
    const std::vector<Text> parts = Pieces(piece, ':');
    if (parts.size() == 2) SetVarValue(parts[0], ReadNumber(parts[1]), false);
  }
  return static_cast<int>(values_->size());
}

int Calculator::SetKeyWord(const std::vector<Text>& names) {
  keywords_.clear();
  for (const Text& name : names) AddKeyWord(keywords_, name, true);
  return static_cast<int>(keywords_.size());
}

int Calculator::SetKeyWord(ClassKeyWords& sets, const Text& id, const std::vector<Text>& first,
                           const std::vector<Text>& second) {
  const KeyWords* set = sets.Get(id, first, second);
  if (set == nullptr) return 0;
  keywords_ = *set;
  return static_cast<int>(set->size());
}

int Calculator::AppendKeyWord(ClassKeyWords& sets, const Text& id, const std::vector<Text>& first,
                              const std::vector<Text>& second) {
  const KeyWords* set = sets.Get(id, first, second);
  if (set == nullptr) return 0;
  for (const Text& name : *set) AddSorted(keywords_, name, CompareFolded);
  return static_cast<int>(set->size());
}

std::vector<Text> Calculator::NamesOf(const Text& text) const {
  Expression expression = WithResolver();
  if (expression.ChangeExpression(text) >= 0) return {};
  Text list = expression.var_list;
  std::vector<Text> names;
  while (!list.empty()) {
    list = list.substr(1);
    const std::size_t comma = list.find(TCHAR{','});
    names.push_back(list.substr(0, comma));
    list = comma == Text::npos ? Text() : list.substr(comma);
  }
  return names;
}

}  // namespace lorv::reference
