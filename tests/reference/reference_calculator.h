#pragma once

#include <map>
#include <memory>
#include <vector>

#include "tests/reference/reference_expression.h"
#include "tests/reference/reference_rewriting.h"

// The calculator written plainly: values are written into a copy of the text, what is left is parsed.
namespace lorv::reference {

using KeyWords = std::vector<Text>;

// The sets of names kept once per class id.
class ClassKeyWords {
 public:
  // Null for an empty id.
  KeyWords* Get(const Text& id, const std::vector<Text>& first, const std::vector<Text>& second);
  void Clear() { sets_.clear(); }

 private:
  std::map<Text, KeyWords> sets_;
};

void AddKeyWord(KeyWords& set, const Text& name, bool upper);

class Calculator {
 public:
  void SetExpr(const Text& text);
  const Text& GetExpr() const { return expr_; }
  const Text& GetCalcedExpr() const { return calc_; }

  bool ValidExp(Text& message) const;
  double Calculate(int& error);

  void ClearAllValue() { values_->clear(); }
  int SetVarValue(const Text& name, double value, bool keep_existing);
  int SetVarValue(const ValueMap& map);
  int SetVarValue(const std::shared_ptr<ValueMap>& external);
  int SetVarValue(const std::map<Text, double>& map);
  int SetVarValue(const Text& list);

  int SetKeyWord(const std::vector<Text>& names);
  int SetKeyWord(ClassKeyWords& sets, const Text& id, const std::vector<Text>& first,
                 const std::vector<Text>& second);
  int AppendKeyWord(ClassKeyWords& sets, const Text& id, const std::vector<Text>& first,
                    const std::vector<Text>& second);
  const KeyWords& GetKeywords() const { return keywords_; }

  // The names of a text in the order of the parse; none if it does not parse.
  std::vector<Text> NamesOf(const Text& text) const;
  std::vector<Text> SplitExprVars() const { return NamesOf(expr_); }

  // The longest text that has stood in the working copy, and whether the parse list outgrew its buffer:
  // beyond the limits of the interface nothing is promised but safety.
  std::size_t LongestWork() const { return longest_; }

 private:
  bool Accepts(const Text& name) const;
  Expression WithResolver() const;
  double CalcExpr(const Text& text, int& error) const;
  void Put(const Text& name, double value);
  void OwnMap();

  Text expr_;
  Text calc_;
  bool too_long_ = false;
  bool external_ = false;
  std::shared_ptr<ValueMap> values_ = std::make_shared<ValueMap>();
  KeyWords keywords_;
  std::size_t longest_ = 0;
};

}  // namespace lorv::reference
