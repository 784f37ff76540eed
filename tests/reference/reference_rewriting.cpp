#include "tests/reference/reference_rewriting.h"

#include <cmath>

namespace lorv::reference {

namespace {

constexpr int kReplaceCeiling = 100;
constexpr int kPassCeiling = 500;
constexpr std::size_t kRewrittenLimit = 1014;

bool ClearOfName(TCHAR c) {
  return !IsNameUnit(c) && c != '.';
}

bool NeedsBrackets(const Text& value) {
  bool needs = false;
  for (const TCHAR c : value) {
    if (!IsNameUnit(c) && c != '*' && c != '.' && c != '/') needs = true;
  }
  if (!needs) return false;
  if (value.size() <= 2) return true;
  std::size_t letters = 0;
  while (letters < value.size() && (IsLetter(value[letters]) || value[letters] == '_')) ++letters;
  const Text rest = value.substr(letters);
  return !(rest.size() > 2 && rest.front() == '(' && rest.back() == ')');
}

bool NeedsStar(const Text& text, std::size_t start, const Text& value) {
  if (value.empty() || start == 0) return false;
  if (!IsDecimalDigit(value[0]) && value[0] != '(') return false;
  return IsNameUnit(text[start - 1]);
}

// The scan of ReplaceExprWithExpr, with its places as plain numbers; -1 is "none".
class Scan {
 public:
  Scan(const Text& text, const TextMap& table, bool bracket, bool multiply)
      : text_(text), table_(table), bracket_(bracket), multiply_(multiply) {}

  bool Run() {
    while (current_ < Length()) {
      if (!Step()) return false;
    }
    return true;
  }
  const Text& Result() const { return text_; }

 private:
  long Length() const { return static_cast<long>(text_.size()); }
  TCHAR At(long place) const { return text_[static_cast<std::size_t>(place)]; }
  static bool StartsName(TCHAR c) { return IsLetter(c) || c == '_'; }

  bool Step() {
    const TCHAR c = At(current_);
    bool ends = false;
    if (StartsName(c)) {
      if (previous_ < 0 || !StartsName(At(previous_))) start_ = current_;
    } else if (!IsDecimalDigit(c)) {
      ends = true;
    }
    if (current_ == Length() - 1 && (IsLetter(c) || IsDecimalDigit(c))) {
      ++current_;
      ends = true;
    }
    if (ends && start_ >= 0 && !EndOfName()) return false;
    previous_ = current_;
    ++current_;
    return true;
  }

  bool EndOfName() {
    const std::size_t start = static_cast<std::size_t>(start_);
    const Text name = text_.substr(start, static_cast<std::size_t>(current_ - start_));
    start_ = -1;
    const auto entry = table_.find(FirstTwenty(name));
    if (entry == table_.end()) return true;
    const Text tail = text_.substr(static_cast<std::size_t>(current_));
    Text inserted = entry->second;
    if (bracket_ && NeedsBrackets(inserted)) inserted = _T("(") + inserted + _T(")");
    if (multiply_ && NeedsStar(text_, start, entry->second)) inserted = _T("*") + inserted;
    if (start + inserted.size() + tail.size() > kRewrittenLimit) return false;
    text_ = text_.substr(0, start) + inserted + tail;
    // By the stored key: behind a name of more than 20 units the scan goes on further right.
    current_ += static_cast<long>(inserted.size()) - static_cast<long>(entry->first.size());
    return true;
  }

  Text text_;
  const TextMap& table_;
  bool bracket_;
  bool multiply_;
  long current_ = 0;
  long previous_ = -1;
  long start_ = -1;
};

}  // namespace

int ReplExprWithValue(Text& text, const Text& name, const Text& value, bool all) {
  if (name.empty() || value.empty() || CompareFolded(name, value) == 0) return 0;
  const bool any_left = value[0] == '*' || value[0] == '/' || value[0] == '+' || value[0] == '-';
  int count = 0;
  std::size_t cursor = 0;
  while (count < kReplaceCeiling) {
    const std::size_t hit = text.find(name, cursor);
    if (hit == Text::npos) break;
    const std::size_t behind = hit + name.size();
    const bool left = any_left || hit == 0 || ClearOfName(text[hit - 1]);
    const bool right = behind == text.size() || ClearOfName(text[behind]);
    if (!left || !right) {
      if (!all) return 0;
      cursor = behind;
      continue;
    }
    text = text.substr(0, hit) + value + text.substr(behind);
    cursor = hit + value.size();
    ++count;
    if (!all) break;
  }
  return count;
}

Text ValueText(double value) {
  if (std::fabs(value - 0.3333333333333333) < 0.001) return _T("1/3");
  if (std::fabs(value - 0.6666666666666666) < 0.001) return _T("2/3");
  return DoubleToText(value, 3, false, 64);
}

void ReplExprWithOneValue(Text& text, const Text& name, double value) {
  if (text.empty() || name.empty()) return;
  std::size_t cursor = 0;
  for (int pass = 0; pass < kPassCeiling; ++pass) {
    const std::size_t hit = text.find(name, cursor);
    if (hit == Text::npos) return;
    cursor = hit + name.size();  // stays so, whatever is put in
    if (cursor < text.size() && IsNameUnit(text[cursor])) continue;
    bool after_digit = false;
    if (hit > 0) {
      const TCHAR left = text[hit - 1];
      if (IsLetter(left) || left == '_') continue;
      after_digit = IsDecimalDigit(left);
    }
    Text fresh = ValueText(value);
    if (after_digit) {
      if (fresh == name) continue;
      fresh = _T("*") + fresh;
    }
    ReplacePlain(text, hit, name, fresh, false);
  }
}

bool ReplaceExprWithExpr(Text& text, const TextMap& table, bool bracket, bool multiply) {
  if (text.empty() || table.empty()) return false;
  Scan scan(text, table, bracket, multiply);
  if (!scan.Run()) return false;
  text = scan.Result();
  return true;
}

bool ReplaceExprWithExpr(Text& text, const std::vector<Pair>& pairs, bool bracket, bool multiply) {
  TextMap table;
  for (const Pair& pair : pairs) table[FirstTwenty(pair.first)] = pair.second;
  return ReplaceExprWithExpr(text, table, bracket, multiply);
}

bool ReplaceExprWithExpr(Text& text, const Text& pairs, bool bracket, bool multiply) {
  std::vector<Pair> list;
  for (const Text& piece : Pieces(pairs, ';')) {
    const std::vector<Text> parts = Pieces(piece, ':');
    if (parts.size() == 2) list.emplace_back(parts[0], parts[1]);
  }
  return ReplaceExprWithExpr(text, list, bracket, multiply);
}

bool SplitMidBracketKey(Text& text, std::vector<Text>& names, std::vector<Pair>& found) {
  if (text.empty()) return false;
  std::size_t from = 0;
  while (from <= text.size()) {
    const std::size_t open = text.find(TCHAR{'['}, from);
    if (open == Text::npos) break;
    from = open + 1;
    const std::size_t close = text.find(TCHAR{']'}, open);
    if (close == Text::npos) continue;
    const Text inner = text.substr(open + 1, close - open - 1);
    long walk = static_cast<long>(open) - 1;
    while (walk > 0 && IsNameUnit(text[static_cast<std::size_t>(walk)])) --walk;
    if (walk >= 0) {
      const std::size_t begin = static_cast<std::size_t>(walk) + 1;
      const Text name = text.substr(begin, open - begin);
      bool known = false;
      for (const Text& old : names) known = known || CompareFolded(old, name) == 0;
      if (!known) {
        names.push_back(name);
        found.emplace_back(name, inner);
      }
    }
    text = text.substr(0, open) + text.substr(close + 1);
  }
  return true;
}

std::vector<Text> Pieces(const Text& text, TCHAR separator) {
  std::vector<Text> pieces;
  Text piece;
  for (const TCHAR c : text) {
    if (c == separator) {
      pieces.push_back(piece);
      piece.clear();
    } else {
      piece += c;
    }
  }
  if (!piece.empty()) pieces.push_back(piece);
  return pieces;
}

Text MapValueToStr(const ValueMap& map) {
  Text out;
  for (const auto& [key, value] : map) out += key + _T(":") + DoubleToText(value, 5, false, 64) + _T(";");
  return out;
}

int StrValueToMap(const Text& text, ValueMap& map) {
  map.clear();
  for (const Text& piece : Pieces(text, ';')) {
    const std::vector<Text> parts = Pieces(piece, ':');
    if (parts.size() == 2) map[Upper(FirstTwenty(parts[0]))] = ReadNumber(parts[1]);
  }
  return static_cast<int>(map.size());
}

}  // namespace lorv::reference
