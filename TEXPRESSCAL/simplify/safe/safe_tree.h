#pragma once

#include <optional>
#include <vector>

#include "TEXPRESSCAL/language/expression_node.h"
#include "framework/text/text_compare.h"

// A formula's tree over the text as it was typed: every node knows its place there.
//
// The grammar is that of CExpression, less what depends on more than the tree: a sign "+" in front of an
// operand, a number right before a name, names that mix letters of several scripts, operators or control
// characters inside quotes. Such a formula has no tree here.
namespace lorv {

enum class SafeKind { kNumber, kText, kName, kPiConstant, kNegate, kBracket, kBars, kCall, kBinary };

struct SafeNode {
  SafeKind kind;
  unsigned short code = 0;  // NodeKind of an operator or a function
  int first = 0;            // where it begins in the text
  int past = 0;             // where it ends; blanks around it are outside
  double value = 0;         // of a number
  std::vector<int> parts;   // operands or arguments; kMissing for a first argument that is not there
};

class SafeTree {
 public:
  static constexpr int kMissing = -1;

  static std::optional<SafeTree> Parse(TextView text);

  // Parts stand before the node they belong to; the last node is the root.
  const std::vector<SafeNode>& Nodes() const { return nodes_; }
  const SafeNode& Node(int index) const { return nodes_[static_cast<std::size_t>(index)]; }
  int Root() const { return static_cast<int>(nodes_.size()) - 1; }

 private:
  friend class SafeParser;
  std::vector<SafeNode> nodes_;
};

}  // namespace lorv
