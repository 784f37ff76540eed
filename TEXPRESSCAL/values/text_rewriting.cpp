#include "TEXPRESSCAL/text_rewriting.h"

#include <optional>

#include "TEXPRESSCAL/values/substitution.h"
#include "TEXPRESSCAL/values/value_pairs.h"
#include "report/guard.h"

// Replacing names in formulas that are texts, for callers: by a value, by a formula, and annotations in
// brackets cut out. What the rules leave alone matters as much as what they replace, and the limits are those
// of the fixed buffers that callers pass.

namespace {

using lorv::IsAsciiLetter;
using lorv::IsDigit;
using lorv::IsNameChar;
using lorv::TextView;

bool IsEmptyText(LPCTSTR text) {
  return text == nullptr || *text == 0;
}

bool IsLetterOrBar(TCHAR c) {
  return IsAsciiLetter(c) || c == '_';
}

bool BelongsToName(TCHAR c) {
  return IsNameChar(c) || c == '.';
}

bool BeginsWithOperator(TextView value) {
  return TextView(_T("*/+-")).find(value.front()) != TextView::npos;
}

// True when a hit from `hit` to `end` stands free in its text.
bool StandsFree(const lorv::BufferEdit& edit, std::size_t hit, std::size_t end, bool look_before) {
  if (look_before && hit > 0 && BelongsToName(edit.Text()[hit - 1])) return false;
  return end >= edit.Length() || !BelongsToName(edit.Text()[end]);
}

}  // namespace

// A refused hit counts as looked at, so without `all` the first hit decides.
int ReplExprWithValue(LPTSTR text, LPCTSTR name, LPCTSTR value, bool all) {
  if (IsEmptyText(text) || IsEmptyText(name) || IsEmptyText(value)) return 0;
  const TextView old(name);
  const TextView fresh(value);
  // A name for itself changes nothing and counts nothing.
  if (lorv::CompareWithoutCase(old, fresh) == 0) return 0;
  const bool look_before = !BeginsWithOperator(fresh);
  lorv::BufferEdit edit(text);
  int count = 0;
  std::size_t cursor = 0;
  while (count < lorv::kMaxReplacements) {
    const std::size_t hit = lorv::FindText(edit.Text(), edit.Length(), cursor, old);
    if (hit == TextView::npos) break;
    const bool free = StandsFree(edit, hit, hit + old.size(), look_before);
    if (free) {
      edit.Splice(hit, old.size(), fresh);
      ++count;
    }
    cursor = hit + (free ? fresh : old).size();
    if (!all) break;
  }
  return count;
}

void ReplExprWithOneValue(LPTSTR text, LPCTSTR name, const double& value) {
  if (IsEmptyText(text) || IsEmptyText(name)) return;
  lorv::Guarded(LORV_HERE, [&] {
    lorv::BufferEdit edit(text);
    lorv::SubstituteValue(edit, name, value);
  });
}

namespace {

// The name at the end of a text; the text's first unit is never part of it. Nothing of an empty text.
std::optional<TextView> NameAtEnd(TextView text) {
  if (text.empty()) return std::nullopt;
  std::size_t before = text.size() - 1;
  while (before > 0 && IsNameChar(text[before])) --before;
  return text.substr(before + 1);
}

void ListOnce(const CString& name, TextView inner, CStringArray& names, std::vector<CTwoStrValue>& pairs) {
  int index = 0;
  if (CAdLorvComm::IsStringInArray(name, names, index, false)) return;
  names.Add(name);
  pairs.push_back({name, CString(inner)});
}

}  // namespace

// Built as a new text from the pieces between the annotations, so a long text costs no more than its length.
bool SplitMidBracketKey(CString& text, CStringArray& names, std::vector<CTwoStrValue>& pairs) {
  if (text.IsEmpty()) return false;
  const TextView whole = text.View();
  std::basic_string<TCHAR> kept;
  std::size_t copied = 0;
  std::size_t from = 0;
  while ((from = whole.find('[', from)) != TextView::npos) {
    const std::size_t close = whole.find(']', from);
    if (close == TextView::npos) break;
    kept.append(whole.substr(copied, from - copied));
    const auto name = NameAtEnd(kept);
    if (name) ListOnce(CString(*name), whole.substr(from + 1, close - from - 1), names, pairs);
    copied = close + 1;
    // The unit that moves to the place of "[" is passed over unseen.
    from = close + 2;
  }
  kept.append(whole.substr(copied));
  text = CString(TextView(kept));
  return true;
}

namespace {

// A formula that comes for a name gets brackets if it is more than a product ...
bool IsProduct(TextView value) {
  for (const TCHAR c : value) {
    if (!IsNameChar(c) && c != '*' && c != '.' && c != '/') return false;
  }
  return true;
}

// ... and does not stand in brackets already, its own or those of a call.
bool StandsInBrackets(TextView value) {
  constexpr std::size_t kShortest = 3;
  if (value.size() < kShortest) return false;
  while (!value.empty() && IsLetterOrBar(value.front())) value.remove_prefix(1);
  return value.size() >= kShortest && value.front() == '(' && value.back() == ')';
}

// One walk over a text that replaces names from a table.
class NameWalk {
 public:
  NameWalk(const CString& text, const std::map<CStrCmp, CString>& table, bool brackets, bool multiply)
      : text_(text.View()), table_(table), brackets_(brackets), multiply_(multiply) {}

  // False when the text grew beyond the limit.
  bool Run();
  const std::basic_string<TCHAR>& Text() const { return text_; }

 private:
  static constexpr std::size_t kNone = TextView::npos;

  bool EndToken();
  bool Insert(std::size_t key_length, const CString& value);

  std::basic_string<TCHAR> text_;
  const std::map<CStrCmp, CString>& table_;
  bool brackets_;
  bool multiply_;
  std::size_t at_ = 0;
  std::size_t start_ = kNone;
};

// A letter behind a digit begins a new name: "a1b" ends in the name "b". That is how stored formulas are
// read.
bool NameWalk::Run() {
  for (; at_ < text_.size(); ++at_) {
    const TCHAR c = text_[at_];
    if (IsLetterOrBar(c)) {
      if (at_ == 0 || !IsLetterOrBar(text_[at_ - 1])) start_ = at_;
    } else if (!IsDigit(c)) {
      if (!EndToken()) return false;
      continue;
    }
    if (at_ + 1 == text_.size() && c != '_') {
      ++at_;
      if (!EndToken()) return false;
    }
  }
  return true;
}

// An unknown name is left as it is.
bool NameWalk::EndToken() {
  if (start_ == kNone) return true;
  const CStrCmp name(CString(TextView(text_).substr(start_, at_ - start_)));
  const auto found = table_.find(name);
  const bool fits = found == table_.end() || Insert(lorv::TextLength(found->first), found->second);
  start_ = kNone;
  return fits;
}

bool NameWalk::Insert(std::size_t key_length, const CString& value) {
  const TextView bare = value.View();
  std::basic_string<TCHAR> inserted;
  const bool joins = multiply_ && start_ > 0 && !bare.empty() &&
                     (IsDigit(bare.front()) || bare.front() == '(') && IsNameChar(text_[start_ - 1]);
  if (joins) inserted += '*';
  const bool brackets = brackets_ && !IsProduct(bare) && !StandsInBrackets(bare);
  if (brackets) inserted += '(';
  inserted += bare;
  if (brackets) inserted += ')';
  const std::size_t tail = text_.size() - at_;
  if (start_ + inserted.size() + tail > static_cast<std::size_t>(lorv::kMaxReplacedText)) return false;
  text_.replace(start_, at_ - start_, inserted);
  // The walk counts with the key's length, which a name of more than 20 units exceeds: what then follows the
  // name is passed over by as much.
  at_ = at_ + inserted.size() - key_length;
  return true;
}

}  // namespace

bool ReplaceExprWithExpr(CString& text, const std::map<CStrCmp, CString>& table, bool bBracket,
                         bool bMultiply) {
  if (text.IsEmpty() || table.empty() || text.GetLength() > lorv::kMaxFormulaText) return false;
  NameWalk walk(text, table, bBracket, bMultiply);
  if (!walk.Run()) return false;
  text = CString(walk.Text());
  return true;
}

bool ReplaceExprWithExpr(CString& text, const std::vector<CTwoStrValue>& pairs, bool bBracket,
                         bool bMultiply) {
  std::map<CStrCmp, CString> table;
  for (const CTwoStrValue& pair : pairs) table[CStrCmp(pair.strFirst)] = pair.strSecond;
  return ReplaceExprWithExpr(text, table, bBracket, bMultiply);
}

bool ReplaceExprWithExpr(CString& text, LPCTSTR pairs, bool bBracket, bool bMultiply) {
  std::vector<CTwoStrValue> list;
  lorv::ForEachPair(pairs, [&list](const CString& name, const CString& formula) {
    list.push_back({name, formula});
  });
  return ReplaceExprWithExpr(text, list, bBracket, bMultiply);
}
