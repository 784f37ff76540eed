#include "TEXPRESSCAL/simplify/safe/safe_guards.h"

#include <algorithm>
#include <map>

#include "TEXPRESSCAL/expression.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/values/substitution.h"
#include "containers/str_cmp.h"
#include "framework/text/char_class.h"

// What must stay equal beside the tree when a formula is shortened: chains of comparisons, which are taken
// apart in the text, and the distances between places of one name, which decide whether a value finds them
// all. A step that changes these marks is not taken.

namespace lorv {
namespace {

using Text = std::basic_string<TCHAR>;

constexpr TCHAR kFirstForeign = 128;

bool IsComparisonSign(TCHAR c) {
  return c == '<' || c == '=' || c == '>';
}

// Whether a stretch is a number as soon as its names have their values.
bool MayBeLiteral(TextView stretch) {
  return !stretch.empty() && std::all_of(stretch.begin(), stretch.end(), [](TCHAR c) {
    return IsNameChar(c) || c == '.' || c == '-' || c >= kFirstForeign;
  });
}

// Only the first place of each sign is taken apart, which depends on all signs of the text: so all of them
// are kept, with what stands between where it may be a literal.
Text ChainOf(TextView text) {
  Text chain;
  bool may_part = false;
  std::size_t behind = TextView::npos;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (!IsComparisonSign(text[i])) continue;
    if (behind != TextView::npos) {
      const TextView stretch = text.substr(behind, i - behind);
      may_part |= MayBeLiteral(stretch);
      chain += MayBeLiteral(stretch) ? Text(stretch) : Text(stretch.empty() ? 0 : 1, '?');
    }
    chain += text[i];
    behind = i + 1;
  }
  return may_part ? chain : Text();
}

// The places of names in a text, in order.
std::vector<const SafeNode*> NamesOf(const SafeTree& tree) {
  std::vector<const SafeNode*> names;
  for (const SafeNode& node : tree.Nodes()) {
    if (node.kind == SafeKind::kName) names.push_back(&node);
  }
  std::sort(names.begin(), names.end(),
            [](const SafeNode* a, const SafeNode* b) { return a->first < b->first; });
  return names;
}

TextView Span(TextView text, int first, int past) {
  return text.substr(static_cast<std::size_t>(first), static_cast<std::size_t>(past - first));
}

// Accepts every name.
class AnyName final : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR /*name*/) const override { return 1; }
};

}  // namespace

SafeMarks MarksOf(TextView text, const SafeTree& tree) {
  SafeMarks marks;
  marks.chain = ChainOf(text);
  // Where each name was last: the end of it, how many units all names before that end stand for beyond one
  // each, and how often it has occurred.
  struct Last {
    int past = 0;
    int spare = 0;
    int count = 0;
  };
  std::map<Text, Last> last;
  int spare = 0;
  for (const SafeNode* node : NamesOf(tree)) {
    const int length = node->past - node->first;
    const Text name = Capitals(Span(text, node->first, node->past));
    Last& before = last[name];
    // The search goes on as far behind a place as the name is long; a value has at least one unit.
    const int least_gap = node->first - before.past - (spare - before.spare);
    if (before.count > 0 && least_gap < length - 1) {
      marks.close_names.push_back(name + Text(1, static_cast<TCHAR>(before.count)) +
                                  Text(Span(text, before.past, node->first)));
    }
    spare += length - 1;
    before = {node->past, spare, before.count + 1};
  }
  return marks;
}

bool NamesStandClear(TextView typed, const SafeTree& tree) {
  const Text text = Capitals(typed);
  std::map<Text, std::vector<int>> places;
  for (const SafeNode* node : NamesOf(tree)) {
    // A longer name is cut when it becomes a key and would take another's value.
    if (node->past - node->first > CStrCmp::kCapacity) return false;
    places[Text(Span(text, node->first, node->past))].push_back(node->first);
  }
  for (const auto& [name, firsts] : places) {
    for (std::size_t hit = text.find(name); hit != Text::npos; hit = text.find(name, hit + 1)) {
      const bool own = std::binary_search(firsts.begin(), firsts.end(), static_cast<int>(hit));
      if (!own && EdgesOf(text.c_str(), text.size(), hit, hit + name.size()) != Edge::kRefused) return false;
    }
  }
  return true;
}

bool EngineParses(TextView text) {
  Text ascii(text);
  // Names of other scripts are gone when a formula is parsed; here a letter stands for each of their units.
  std::replace_if(
      ascii.begin(), ascii.end(), [](TCHAR c) { return c >= kFirstForeign; }, TCHAR{'Z'});
  AnyName any_name;
  CExpression expression;
  expression.m_pValidParameter = &any_name;
  return expression.ChangeExpression(TextView(ascii)) == -1;
}

}  // namespace lorv
