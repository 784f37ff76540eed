#include "TEXPRESSCAL/language/parser.h"

#include <algorithm>
#include <cstdint>

#include "TEXPRESSCAL/function_table.h"
#include "TEXPRESSCAL/language/formula_number.h"
#include "TEXPRESSCAL/language/operators.h"
#include "framework/text/char_class.h"

// From text to tree by recursive descent, with all strengths of operators in one loop. The text is in
// capitals and its operators are single units already. Positions of faults are part of the interface: every
// failure leaves the cursor where callers expect it, and returns at once without a tree.

namespace lorv {
namespace {

// What a name counts as that the resolver has accepted but nobody has given a value.
constexpr double kPlaceholder = 1000000;

}  // namespace

void NameList::Accept(TextView name) {
  const std::size_t length = TextLength(text_);
  // The list of the interface has a fixed size and holds whole names; once one has found no room, later ones
  // go behind it, in order.
  if (!rest_.empty() || length + 1 + name.size() >= kVarListSize) {
    rest_.append(1, ',').append(name);
    return;
  }
  text_[length] = ',';
  std::copy(name.begin(), name.end(), text_ + length + 1);
  text_[length + 1 + name.size()] = 0;
}

void NameList::Refuse(TextView name) {
  rest_.clear();
  const TextView kept = name.substr(0, kVarListSize - 1);
  std::copy(kept.begin(), kept.end(), text_);
  text_[kept.size()] = 0;
}

ExprNode* Parser::Parse() {
  ExprNode* root = Binary(kLoosestStrength);
  if (root == nullptr || *at_ == 0) return root;
  return Fail(ParseFault::kTrailing, at_);
}

unsigned int Parser::OperandEnd(unsigned int place, unsigned short kind) {
  at_ = text_ + place;
  const int strength = StrengthOf(kind);
  Binary(strength + 1);
  while (at_ > text_ + place && at_[-1] == ' ') --at_;
  return PlaceOf(at_);
}

inline ExprNode* Parser::ReadNumber() {
  const LPTSTR start = at_;
  LPCTSTR end = start;
  const double value = ReadFormulaNumber(end);
  at_ = start + (end - start);
  return Number(value, start);
}

// A prefixed primary. Most are numbers with an operator or bracket behind them, which need no more looking
// at.
inline ExprNode* Parser::Operand() {
  if (!IsDigit(*at_)) return Prefix();
  ExprNode* const number = ReadNumber();
  if (IsAsciiLetter(*at_)) return NameBehind(number);
  SkipBlanks();
  return number;
}

// level(n) = level(n + 1) { operator(n) level(n + 1) }, all levels in one loop: an operand that a tighter
// operator follows becomes that operator's left one first.
ExprNode* Parser::Climb(ExprNode* left, int lowest) {
  while (left != nullptr) {
    const int strength = StrengthOf(*at_);
    if (strength < lowest || strength == 0) break;
    const LPCTSTR place = at_++;
    ExprNode* right = Operand();
    if (right != nullptr && StrengthOf(*at_) > strength) right = Climb(right, strength + 1);
    if (right == nullptr) return nullptr;
    left = Node(static_cast<unsigned short>(*place), place, left, right);
  }
  return left;
}

// prefix = { "-" } [ "+" ] primary
ExprNode* Parser::Prefix() {
  SkipBlanks();
  if (*at_ != '-') {
    if (*at_ == '+') ++at_;
    return Primary();
  }
  ExprNode* const outer = Node(kNegate, at_++, nullptr, nullptr);
  ExprNode* inner = outer;
  for (SkipBlanks(); *at_ == '-'; SkipBlanks()) {
    inner->right = Node(kNegate, at_++, nullptr, nullptr);
    inner = inner->right;
  }
  if (*at_ == '+') ++at_;
  inner->right = Primary();
  return inner->right == nullptr ? nullptr : outer;
}

ExprNode* Parser::Primary() {
  SkipBlanks();
  switch (*at_) {
    case '\'':
      return QuotedText();
    case '(':
      return Bracket(')');
    case '|':
      return Bracket('|');
    default:
      return NumberOrName();
  }
}

// There is no escape: the text ends at the next quote.
ExprNode* Parser::QuotedText() {
  const LPCTSTR start = ++at_;
  while (*at_ != '\'' && *at_ != 0) ++at_;
  const auto length = static_cast<unsigned int>(at_ - start);
  if (!Take('\'')) return Fail(ParseFault::kOpenText, start - 1);
  SkipBlanks();
  ExprNode* node = Node(kText, start, nullptr, nullptr);
  node->text = pool_.KeepText({start, length});
  node->length = length;
  return node;
}

// "(" level 1 ")" or "|" level 1 "|". Blanks behind a closing bar stay, so "|A| +1" fails at the blank.
ExprNode* Parser::Bracket(TCHAR close) {
  const LPCTSTR open = at_;
  if (depth_ == kMaxNesting) return Fail(ParseFault::kTooDeep, open);
  ++depth_;
  ++at_;
  ExprNode* inner = Binary(kLoosestStrength);
  --depth_;
  if (inner == nullptr) return nullptr;
  if (!Take(close)) return Fail(ParseFault::kOpenBracket, open);
  if (close == '|') return Node(kAbsolute, open, inner, nullptr);
  SkipBlanks();
  return inner;
}

ExprNode* Parser::NumberOrName() {
  ExprNode* number = IsDigit(*at_) ? ReadNumber() : nullptr;
  if (IsAsciiLetter(*at_)) return NameBehind(number);
  SkipBlanks();
  return number != nullptr ? number : Fail(ParseFault::kNoOperand, at_);
}

// A number in front of a name is dropped: "2PI" is plain PI.
ExprNode* Parser::NameBehind(ExprNode* number) {
  const LPTSTR start = at_;
  LPTSTR at = start;
  std::uint64_t word = 0;
  for (; IsNameChar(*at); ++at) word = AppendToWord(word, *at);
  at_ = at;
  const TextView name(start, static_cast<std::size_t>(at - start));
  const unsigned short kind = FunctionKind(word, name.size());
  ExprNode* result = number;
  if (kind != 0) {
    result = Call(kind, start);
  } else if (name == _T("PI")) {
    result = Number(kPi, start);
  } else if (resolver_ != nullptr) {
    result = ResolvedName(name);
  } else if (number == nullptr) {
    Fail(ParseFault::kUnknownName, start);
  }
  if (result != nullptr) SkipBlanks();
  return result;
}

// The value of a name is not known here: it counts kPlaceholder, and the caller sees it in the list.
ExprNode* Parser::ResolvedName(TextView name) {
  // The resolver wants a terminated text; the name lies in ours.
  const TCHAR behind = *at_;
  *at_ = 0;
  const bool accepted = resolver_->ValidParameter(name.data()) != 0;
  *at_ = behind;
  if (!accepted) {
    names_.Refuse(name);
    return Fail(ParseFault::kUnknownName, name.data());
  }
  names_.Accept(name);
  return Number(kPlaceholder, name.data());
}

// name "(" [ level 1 ] { "," level 1 } ")"
ExprNode* Parser::Call(unsigned short kind, LPCTSTR name) {
  SkipBlanks();
  if (*at_ != '(') return Fail(ParseFault::kNoArguments, name);
  const LPCTSTR open = at_;
  if (depth_ == kMaxNesting) return Fail(ParseFault::kTooDeep, open);
  ++at_;
  ++depth_;
  ExprNode* call = Node(kind, name, nullptr, nullptr);
  int count = 0;
  const bool good = Arguments(call, count);
  --depth_;
  if (!good) return nullptr;
  if (!Take(')')) return Fail(ParseFault::kOpenBracket, open);
  SkipBlanks();
  // The other functions take any number of arguments and use what they use.
  const int wanted = kind == kIif ? 3 : kind == kFind ? 2 : count;
  return count == wanted ? call : Fail(ParseFault::kArgumentCount, name);
}

bool Parser::Arguments(ExprNode* call, int& count) {
  SkipBlanks();
  // A first argument that is not there leaves its place empty; the evaluator reports it.
  if (*at_ != ')' && *at_ != ',') {
    call->left = Binary(kLoosestStrength);
    if (call->left == nullptr) return false;
  }
  count = 1;
  for (ExprNode* last = call; *at_ == ','; ++count) {
    const LPCTSTR comma = at_++;
    ExprNode* argument = Binary(kLoosestStrength);
    if (argument == nullptr) return false;
    last->right = Node(kArgument, comma, argument, nullptr);
    last = last->right;
  }
  return true;
}

}  // namespace lorv
