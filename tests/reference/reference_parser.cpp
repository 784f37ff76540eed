#include <string>

#include "tests/reference/reference_expression.h"

namespace lorv::reference {

namespace {

struct Rewriting {
  const TCHAR* from;
  TCHAR to;
};

const Rewriting kRewritings[] = {
    {_T(">="), kGreaterEqual}, {_T("=>"), kGreaterEqual}, {_T("<="), kLessEqual}, {_T("=<"), kLessEqual},
    {_T("!="), kNotEqual},     {_T("<>"), kNotEqual},     {_T("=="), kEqual},     {_T("="), kEqual},
    {_T(" AND "), kAnd},       {_T("&&"), kAnd},          {_T(" OR "), kOr},      {_T("||"), kOr},
};

const TCHAR kChainOperators[] = {'>', '=', '<'};

bool IsLiteral(const Text& text) {
  for (const TCHAR c : text) {
    if (!IsDecimalDigit(c) && c != '.' && c != '-') return false;
  }
  return !text.empty();
}

void PartChainedComparisons(Text& text) {
  for (const TCHAR first : kChainOperators) {
    const std::size_t found = text.find(first);
    if (found == Text::npos) continue;
    const std::size_t start = found + 1;
    for (const TCHAR second : kChainOperators) {
      const std::size_t end = text.find(second, start);
      if (end == Text::npos) continue;
      const Text middle = text.substr(start, end - start);
      if (!IsLiteral(middle)) continue;
      ReplacePlain(text, start, middle, middle + _T(" AND ") + middle, false);
    }
  }
}

// Thrown to the top: one way out of every failing level, with the position where it stands.
struct Failure {};

// One function per level of binding, loosest first.
class Parser {
 public:
  explicit Parser(Expression& expression) : e_(expression) {}

  NodePtr Whole() {
    NodePtr node = Joins();
    if (e_.position != e_.rewritten.size()) throw Failure{};
    return node;
  }

 private:
  TCHAR Here() const { return e_.position < e_.rewritten.size() ? e_.rewritten[e_.position] : TCHAR{0}; }
  bool AtEnd() const { return e_.position >= e_.rewritten.size(); }
  void Step() { ++e_.position; }
  void SkipBlanks() {
    while (Here() == ' ') Step();
  }
  void Expect(TCHAR c) {
    if (Here() != c) throw Failure{};
    Step();
  }
  // Is the unit here one of these operators? (The terminator never is.)
  bool HereIs(const Text& operators) const { return !AtEnd() && operators.find(Here()) != Text::npos; }

  static NodePtr Binary(TCHAR sign, NodePtr left, NodePtr right) {
    NodePtr node = std::make_shared<Node>();
    node->kind = NodeKind::kOperator;
    node->sign = sign;
    node->left = std::move(left);
    node->right = std::move(right);
    return node;
  }
  static NodePtr Number(double value) {
    NodePtr node = std::make_shared<Node>();
    node->number = value;
    return node;
  }

  // All binary levels have the same shape: an operand, then any number of operator and operand.
  NodePtr LeftLoop(const Text& operators, NodePtr (Parser::*operand)()) {
    NodePtr node = (this->*operand)();
    while (HereIs(operators)) {
      const TCHAR sign = Here();
      Step();
      node = Binary(sign, node, (this->*operand)());
    }
    return node;
  }

  NodePtr Joins() {
    if (++depth_ > kDepthGuard) {
      e_.too_deep = true;
      throw Failure{};
    }
    NodePtr node = LeftLoop(Text{kAnd, kOr}, &Parser::Comparisons);
    --depth_;
    return node;
  }
  // Blanks behind these operators are skipped; the operand's own rule does that already.
  NodePtr Comparisons() {
    return LeftLoop(Text{'<', '>', kGreaterEqual, kLessEqual, kNotEqual, kEqual}, &Parser::Sums);
  }
  NodePtr Sums() { return LeftLoop(_T("+-"), &Parser::Products); }
  NodePtr Products() { return LeftLoop(_T("*/"), &Parser::Powers); }
  NodePtr Powers() { return LeftLoop(_T("^"), &Parser::Nots); }
  NodePtr Nots() { return LeftLoop(_T("!"), &Parser::Signed); }

  NodePtr Signed() {
    SkipBlanks();
    if (Here() == '+') {
      Step();
      return Primary();
    }
    if (Here() != '-') return Primary();
    Step();
    if (++depth_ > kDepthGuard) {
      e_.too_deep = true;
      throw Failure{};
    }
    NodePtr node = std::make_shared<Node>();
    node->kind = NodeKind::kNegate;
    node->left = Signed();
    --depth_;
    return node;
  }

  NodePtr Primary() {
    SkipBlanks();
    if (Here() == '\'') return Quoted();
    if (Here() == '(') {
      Step();
      NodePtr node = Joins();
      Expect(')');
      SkipBlanks();
      return node;
    }
    if (Here() == '|') {
      Step();
      NodePtr node = std::make_shared<Node>();
      node->kind = NodeKind::kBars;
      node->left = Joins();
      Expect('|');
      return node;
    }
    return NumberOrName();
  }

  NodePtr Quoted() {
    Step();
    NodePtr node = std::make_shared<Node>();
    node->kind = NodeKind::kText;
    while (!AtEnd() && Here() != '\'') {
      node->text += Here();
      Step();
    }
    Expect('\'');
    SkipBlanks();
    return node;
  }

  NodePtr NumberOrName() {
    NodePtr number;
    if (IsDecimalDigit(Here())) {
      Text token;
      while (IsDecimalDigit(Here()) || Here() == '.') {
        token += Here();
        Step();
      }
      number = Number(ReadNumber(token));
    }
    if (!IsLetter(Here())) {
      SkipBlanks();
      if (number == nullptr) throw Failure{};
      return number;
    }
    Text name;
    while (IsNameUnit(Here())) {
      name += Here();
      Step();
    }
    NodePtr node = Named(name, number);
    SkipBlanks();
    return node;
  }

  NodePtr Named(const Text& name, const NodePtr& number) {
    if (IsFunctionName(name)) return Call(name);
    if (CompareFolded(name, _T("PI")) == 0) return Number(3.1415926536);
    if (e_.resolver) {
      if (!e_.resolver(name)) {
        e_.var_list = name;
        throw Failure{};
      }
      e_.var_list += _T(",") + name;
      return Number(1000000);
    }
    if (number == nullptr) throw Failure{};
    return number;
  }

  NodePtr Call(const Text& name) {
    SkipBlanks();
    Expect('(');
    NodePtr node = std::make_shared<Node>();
    node->kind = NodeKind::kCall;
    node->text = Upper(name);
    SkipBlanks();
    // Only a first argument may be left out.
    node->arguments.push_back(Here() == ')' || Here() == ',' ? nullptr : Joins());
    while (Here() == ',') {
      Step();
      node->arguments.push_back(Joins());
    }
    Expect(')');
    SkipBlanks();
    if (node->text == _T("IIF") && node->arguments.size() != 3) throw Failure{};
    if (node->text == _T("FIND") && node->arguments.size() != 2) throw Failure{};
    return node;
  }

  Expression& e_;
  int depth_ = 0;
};

}  // namespace

Text RewriteForParsing(const Text& formula) {
  Text text = Upper(AsPointerText(formula));
  PartChainedComparisons(text);
  for (const Rewriting& rule : kRewritings) ReplacePlain(text, 0, rule.from, Text(1, rule.to), true);
  return text;
}

bool IsFunctionName(const Text& name) {
  static const TCHAR* const kNames[] = {
      _T("ABS"),  _T("ACOS"), _T("ASIN"), _T("ATAN"), _T("ATG"), _T("CEIL"), _T("COS"),
      _T("COSA"), _T("CTG"),  _T("CTGA"), _T("DTOR"), _T("EXP"), _T("FIND"), _T("FLOOR"),
      _T("IIF"),  _T("INT"),  _T("LEN"),  _T("LOG"),  _T("MAX"), _T("MIN"),  _T("ROUND"),
      _T("RTOD"), _T("SIN"),  _T("SINA"), _T("SQRT"), _T("TAN"), _T("TANA"), _T("TG")};
  for (const TCHAR* known : kNames) {
    if (CompareFolded(name, known) == 0) return true;
  }
  return false;
}

int Expression::ChangeExpression(const Text& formula) {
  rewritten = RewriteForParsing(formula);
  if (rewritten.empty()) return 0;
  root = nullptr;
  position = 0;
  too_deep = false;
  try {
    root = Parser(*this).Whole();
  } catch (const Failure&) {
    return static_cast<int>(position);
  }
  return -1;
}

}  // namespace lorv::reference
