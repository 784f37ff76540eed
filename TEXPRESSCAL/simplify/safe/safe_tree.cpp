#include "TEXPRESSCAL/simplify/safe/safe_tree.h"

#include <string>

#include "TEXPRESSCAL/function_table.h"
#include "TEXPRESSCAL/language/operators.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "framework/text/char_class.h"
#include "framework/text/number_text.h"

// The simplifier's own parser: the engine's grammar over the text as typed, with the place of every part, and
// without whatever depends on more than the tree. It only has to be right where it succeeds, as the engine's
// parser is asked about every text as well; a form that it does not know leaves the formula as it is.

namespace lorv {

namespace {

constexpr TCHAR kFirstForeign = 128;
constexpr int kFailed = -2;

// A sign before an operand binds tighter than all operators.
constexpr int kPrefixStrength = kTightestStrength + 1;

bool IsForeign(TCHAR c) {
  return c >= kFirstForeign;
}

}  // namespace

// Recursive descent; kFailed stands for "no tree".
class SafeParser {
 public:
  explicit SafeParser(TextView text) : typed_(text), text_(Capitals(text)) {}

  std::optional<SafeTree> Run() {
    for (const TCHAR c : typed_) {
      // Control characters stand for operators of several units once the engine has rewritten them.
      if (c < ' ') return std::nullopt;
    }
    const int root = Binary(kLoosestStrength);
    SkipBlanks();
    if (root == kFailed || at_ != text_.size()) return std::nullopt;
    return std::move(tree_);
  }

 private:
  TCHAR Here() const { return at_ < text_.size() ? text_[at_] : TCHAR{0}; }
  void SkipBlanks() {
    while (Here() == ' ') ++at_;
  }
  bool Begins(TextView token) const { return TextView(text_).substr(at_, token.size()) == token; }

  int Add(SafeKind kind, std::size_t first, unsigned short code = 0, std::vector<int> parts = {}) {
    SafeNode node{kind, code, static_cast<int>(first), static_cast<int>(at_), 0, std::move(parts)};
    tree_.nodes_.push_back(std::move(node));
    return tree_.Root();
  }

  const Operator* NextOperator();
  int Binary(int lowest);
  int Prefix();
  int Primary();
  int Quoted();
  int Bracket(TCHAR close);
  int Number();
  int NameOrCall();
  int Call(std::size_t first, unsigned short kind);

  TextView typed_;
  std::basic_string<TCHAR> text_;
  std::size_t at_ = 0;
  int depth_ = 0;
  SafeTree tree_;
};

// The operator that follows; null if there is none, the cursor then as it was. The cursor stands on it, or
// on the blank that a word begins with.
const Operator* SafeParser::NextOperator() {
  const std::size_t before = at_;
  SkipBlanks();
  const std::size_t behind_blanks = at_;
  for (const Operator& op : kOperators) {
    at_ = op.IsWord() && behind_blanks > 0 ? behind_blanks - 1 : behind_blanks;
    if (Begins(op.typed)) return &op;
  }
  at_ = before;
  return nullptr;
}

// Operators of one strength join to the left; the right operand is made of tighter ones alone.
int SafeParser::Binary(int lowest) {
  SkipBlanks();
  int left = Prefix();
  while (left != kFailed) {
    const std::size_t before = at_;
    const Operator* op = NextOperator();
    if (op == nullptr || op->strength < lowest) {
      at_ = before;
      break;
    }
    at_ += op->typed.size();
    const int right = op->strength + 1 == kPrefixStrength ? Prefix() : Binary(op->strength + 1);
    if (right == kFailed) return kFailed;
    left = Add(SafeKind::kBinary, static_cast<std::size_t>(tree_.Node(left).first), op->kind, {left, right});
  }
  return left;
}

// The innermost sign becomes the innermost node. A "+" as a sign has no tree here.
int SafeParser::Prefix() {
  SkipBlanks();
  std::vector<std::size_t> signs;
  for (; Here() == '-'; SkipBlanks()) signs.push_back(at_++);
  int node = Primary();
  for (; node != kFailed && !signs.empty(); signs.pop_back()) {
    node = Add(SafeKind::kNegate, signs.back(), kNegate, {node});
  }
  return node;
}

// "||" is an operator, so bars that touch have no tree: which of them opens and which closes is not certain.
int SafeParser::Primary() {
  const TCHAR c = Here();
  if (c == '\'') return Quoted();
  if (c == '(') return Bracket(')');
  if (c == '|') return Begins(_T("||")) ? kFailed : Bracket('|');
  if (IsDigit(c)) return Number();
  return IsAsciiLetter(c) || IsForeign(c) ? NameOrCall() : kFailed;
}

int SafeParser::Quoted() {
  const std::size_t first = at_;
  const std::size_t end = text_.find('\'', at_ + 1);
  if (end == TextView::npos) return kFailed;
  const TextView inside = TextView(text_).substr(first + 1, end - first - 1);
  // Operators are rewritten inside quotes too.
  if (inside.find_first_of(_T("<>=!&|")) != TextView::npos || inside.find(' ') != TextView::npos)
    return kFailed;
  at_ = end + 1;
  return Add(SafeKind::kText, first);
}

// As deep as the engine's own parser goes.
int SafeParser::Bracket(TCHAR close) {
  if (++depth_ > kMaxNesting) return kFailed;
  const std::size_t first = at_++;
  const int inner = Binary(kLoosestStrength);
  --depth_;
  if (inner == kFailed) return kFailed;
  SkipBlanks();
  if (Here() != close || (close == '|' && Begins(_T("||")))) return kFailed;
  ++at_;
  return Add(close == ')' ? SafeKind::kBracket : SafeKind::kBars, first, 0, {inner});
}

int SafeParser::Number() {
  const std::size_t first = at_;
  while (IsDigit(Here()) || Here() == '.') ++at_;
  // A number right before a name is dropped, or multiplied once the name has a value.
  if (IsNameChar(Here()) || IsForeign(Here())) return kFailed;
  const int node = Add(SafeKind::kNumber, first);
  tree_.nodes_.back().value = ReadReal(TextView(text_).substr(first, at_ - first));
  return node;
}

// "AND" without its blanks is a name to the parser, and no estimator means one.
int SafeParser::NameOrCall() {
  const std::size_t first = at_;
  bool ascii = false;
  bool foreign = false;
  for (; IsNameChar(Here()) || IsForeign(Here()); ++at_) (IsForeign(Here()) ? foreign : ascii) = true;
  const TextView name = TextView(text_).substr(first, at_ - first);
  if ((ascii && foreign) || name == _T("AND") || name == _T("OR")) return kFailed;
  const unsigned short kind = foreign ? 0 : FunctionKind(name);
  if (kind == 0) return Add(name == _T("PI") ? SafeKind::kPiConstant : SafeKind::kName, first);
  SkipBlanks();
  return Here() == '(' ? Call(first, kind) : kFailed;
}

// IIF and FIND need their number of arguments, or the formula does not parse.
int SafeParser::Call(std::size_t first, unsigned short kind) {
  if (++depth_ > kMaxNesting) return kFailed;
  ++at_;
  SkipBlanks();
  std::vector<int> arguments;
  arguments.push_back(Here() == ')' || Here() == ',' ? SafeTree::kMissing : Binary(kLoosestStrength));
  while (arguments.back() != kFailed) {
    SkipBlanks();
    if (Here() != ',') break;
    ++at_;
    arguments.push_back(Binary(kLoosestStrength));
  }
  --depth_;
  const std::size_t wanted = kind == kIif ? 3 : kind == kFind ? 2 : arguments.size();
  if (arguments.back() == kFailed || arguments.size() != wanted || Here() != ')') return kFailed;
  ++at_;
  return Add(SafeKind::kCall, first, kind, std::move(arguments));
}

std::optional<SafeTree> SafeTree::Parse(TextView text) {
  return SafeParser(text).Run();
}

}  // namespace lorv
