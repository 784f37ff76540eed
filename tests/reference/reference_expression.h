#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "tests/reference/reference_text.h"

// The formula language written as plainly as it can be: rewriting, recursive descent, a tree, an evaluator
// that walks it. Every step builds new texts and new nodes; nothing is fast and nothing is shared.
namespace lorv::reference {

struct Node;
using NodePtr = std::shared_ptr<Node>;

enum class NodeKind {
  kNumber,
  kText,
  kOperator,  // `sign` says which; kNegate and kBars have one operand, `left`
  kNegate,
  kBars,
  kCall
};

struct Node {
  NodeKind kind = NodeKind::kNumber;
  TCHAR sign = 0;
  double number = 0;
  Text text;  // of a text leaf; of a call the function's name
  NodePtr left;
  NodePtr right;
  std::vector<NodePtr> arguments;  // of a call; the first may be null
};

// The control characters that stand for the operators of two and more characters.
constexpr TCHAR kGreaterEqual = 4;
constexpr TCHAR kLessEqual = 5;
constexpr TCHAR kNotEqual = 6;
constexpr TCHAR kEqual = 7;
constexpr TCHAR kAnd = 8;
constexpr TCHAR kOr = 9;

// Brackets and prefix signs within each other that the reference follows; beyond it gives up and says so.
constexpr int kDepthGuard = 3000;

// The text that is parsed: capitals, chained comparisons parted, operators as control characters.
Text RewriteForParsing(const Text& formula);

bool IsFunctionName(const Text& name);

class Expression {
 public:
  // Empty: no resolver.
  std::function<bool(const Text&)> resolver;
  Text var_list;
  Text rewritten;
  std::size_t position = 0;
  int error = 0;
  NodePtr root;
  bool too_deep = false;

  // -1 when the text parsed, else the index at which it failed.
  int ChangeExpression(const Text& formula);
  // 0, a code, or -1 without a tree.
  int Value(double& result);
};

// The code of the last failure within `node` is left in `error`.
double EvaluateNumber(const NodePtr& node, int& error);

}  // namespace lorv::reference
