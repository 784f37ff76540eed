#pragma once

#include <string>

#include "TEXPRESSCAL/language/expression_node.h"
#include "TEXPRESSCAL/language/node_pool.h"
#include "framework/native/export.h"
#include "framework/text/text_compare.h"

// Resolves the names that a formula uses and no function table knows.
class COMM_LORV_API CValidParameter {
 public:
  // Not zero: the name may be used. The name is terminated and lives during the call only.
  virtual int ValidParameter(LPCTSTR name) const = 0;

 protected:
  ~CValidParameter() = default;
};

namespace lorv {

// The names that a parse met, as callers of the expression see them: a fixed text of names behind commas.
class NameList {
 public:
  // `text` has kVarListSize units.
  explicit NameList(LPTSTR text) : text_(text) {}

  // Names that found no more room in the fixed text, each behind a comma.
  const std::basic_string<TCHAR>& Rest() const { return rest_; }

  void Clear() {
    text_[0] = 0;
    rest_.clear();
  }
  void Accept(TextView name);
  // The list becomes the refused name alone, cut to the room there is.
  void Refuse(TextView name);

 private:
  LPTSTR text_;
  std::basic_string<TCHAR> rest_;
};

constexpr std::size_t kVarListSize = 255;

// Why a parse stopped, for messages to the user.
enum class ParseFault {
  kNone,
  kTrailing,     // a whole formula, and something behind it
  kNoOperand,    // an operand must stand here
  kUnknownName,  // an unknown name
  kNoArguments,  // a function's name without its bracket
  kArgumentCount,
  kOpenText,     // no closing quote
  kOpenBracket,  // no closing bracket or bar
  kTooDeep
};

// Recursive descent over a rewritten formula (operator_rewriting.h). One object serves one parse. The tree it
// gives is what all ways of evaluating a formula are made from or measured by.
class Parser {
 public:
  // `text` is terminated; a name's end is marked in it while the resolver looks, so it must be writable.
  // `resolver` may be null.
  Parser(LPTSTR text, NodePool& pool, const CValidParameter* resolver, NameList& names)
      : text_(text), at_(text), pool_(pool), resolver_(resolver), names_(names) {}

  // The tree, or null; Position() is then where the failing rule stopped.
  ExprNode* Parse();
  unsigned int Position() const { return PlaceOf(at_); }

  // After a failure: why, and where that began (the name, the bracket or quote left open).
  ParseFault Fault() const { return fault_; }
  unsigned int FaultPlace() const { return fault_place_; }

  // The position behind the operand at `place` that an operator of this strength takes on its right.
  unsigned int OperandEnd(unsigned int place, unsigned short kind);

 private:
  ExprNode* Binary(int lowest) { return Climb(Operand(), lowest); }
  ExprNode* Climb(ExprNode* left, int lowest);
  ExprNode* Operand();
  ExprNode* Prefix();
  ExprNode* Primary();
  ExprNode* QuotedText();
  ExprNode* Bracket(TCHAR close);
  ExprNode* NumberOrName();
  ExprNode* NameBehind(ExprNode* number);
  ExprNode* ResolvedName(TextView name);
  ExprNode* Call(unsigned short kind, LPCTSTR name);
  bool Arguments(ExprNode* call, int& count);
  ExprNode* ReadNumber();

  unsigned int PlaceOf(LPCTSTR at) const { return static_cast<unsigned int>(at - text_); }
  ExprNode* Fail(ParseFault fault, LPCTSTR place) {
    fault_ = fault;
    fault_place_ = PlaceOf(place);
    return nullptr;
  }
  ExprNode* Node(unsigned short kind, LPCTSTR place, ExprNode* left, ExprNode* right) {
    ExprNode* node = pool_.Take();
    node->left = left;
    node->right = right;
    node->kind = kind;
    node->place = PlaceOf(place);
    node->value = 0;
    return node;
  }
  ExprNode* Number(double value, LPCTSTR place) {
    ExprNode* node = Node(kNumber, place, nullptr, nullptr);
    node->value = value;
    return node;
  }
  void SkipBlanks() {
    while (*at_ == ' ') ++at_;
  }
  bool Take(TCHAR c) {
    if (*at_ != c) return false;
    ++at_;
    return true;
  }

  LPTSTR text_;
  LPTSTR at_;
  NodePool& pool_;
  const CValidParameter* resolver_;
  NameList& names_;
  int depth_ = 0;
  ParseFault fault_ = ParseFault::kNone;
  unsigned int fault_place_ = 0;
};

}  // namespace lorv
