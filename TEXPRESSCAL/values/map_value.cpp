#include "TEXPRESSCAL/map_value.h"

#include <algorithm>
#include <atomic>

#include "TEXPRESSCAL/values/value_pairs.h"
#include "comm/short_decimal.h"
#include "framework/text/number_text.h"

// The named values of a calculator, sorted as a map is, in one block of memory. Beside each name stands its
// word, the name packed into one number: formulas are searched by words. The layout number changes whenever
// names do, which is how plans notice; values may change under it.

namespace {

constexpr int kStoredDecimals = 5;
constexpr int kNumberText = 64;

using lorv::NameWord;

// A key that does not stand in capitals is equal to one that does, but is not found in a text of capitals.
NameWord WordOfKey(const CStrCmp& key) {
  for (LPCTSTR at = key; *at != 0; ++at) {
    if (*at != lorv::ToUpper(*at)) return 0;
  }
  return lorv::WordOfName(key);
}

// Of a key without a word. Units that are no ASCII are in no text of ASCII, and a long name of letters and
// digits is no part of shorter runs.
bool IsOdd(const CStrCmp& key) {
  bool plain = lorv::IsAsciiLetter(*static_cast<LPCTSTR>(key));
  int length = 0;
  for (LPCTSTR at = key; *at != 0; ++at, ++length) {
    if (*at >= 0x80) return false;
    plain = plain && lorv::IsNameChar(*at);
  }
  return length > 0 && !(plain && length > lorv::kNameWordUnits);
}

}  // namespace

// The layout goes with the names. Left behind, it would let a plan read names that are no longer there.
CMapValue& CMapValue::operator=(CMapValue&& other) noexcept {
  if (this == &other) return *this;
  entries_ = std::move(other.entries_);
  layout_ = other.layout_;
  words_ = std::move(other.words_);
  next_ = other.next_;
  others_ = other.others_;
  odd_ = other.odd_;
  other.clear();
  return *this;
}

// One count for the whole process: maps of different names never share a number.
std::uint64_t CMapValue::NumberLayout() const {
  static std::atomic<std::uint64_t> last{0};
  layout_ = last.fetch_add(1, std::memory_order_relaxed) + 1;
  return layout_;
}

std::size_t CMapValue::LowerBound(const CStrCmp& name) const {
  std::size_t lo = 0;
  std::size_t hi = entries_.size();
  while (lo < hi) {
    const std::size_t mid = (lo + hi) / 2;
    if (entries_[mid].first - name < 0) {
      lo = mid + 1;
    } else {
      hi = mid;
    }
  }
  return lo;
}

bool CMapValue::Holds(std::size_t at, const CStrCmp& name) const {
  return at < entries_.size() && entries_[at].first - name == 0;
}

// The entry that the last one leads to expect, the end, or what a search finds.
std::size_t CMapValue::LowerBound(NameWord word) {
  if (next_ < words_.size() && words_[next_] == word) return next_++;
  next_ = words_.size();
  if (words_.empty() || words_.back() < word) return next_++;
  next_ = static_cast<std::size_t>(std::lower_bound(words_.begin(), words_.end(), word) - words_.begin());
  return next_++;
}

std::pair<double*, bool> CMapValue::Place(LPCTSTR name, NameWord word) {
  // Words have the order of their texts, but only where every name has one.
  if (word == 0 || others_ != 0) return PlaceOther(name);
  const std::size_t at = LowerBound(word);
  const bool fresh = at == words_.size() || words_[at] != word;
  if (fresh) Insert(at, CStrCmp::Capitals(name), 0, word);
  return {&entries_[at].second, fresh};
}

// Where a name has no word, all names are compared as texts, whose order is that of the words.
std::pair<double*, bool> CMapValue::PlaceOther(LPCTSTR name) {
  const CStrCmp key = CStrCmp::Capitals(name);
  const std::size_t at = LowerBound(key);
  const bool fresh = !Holds(at, key);
  if (fresh) Insert(at, key, 0, lorv::WordOfName(key));
  return {&entries_[at].second, fresh};
}

// Behind the last entry is the usual place: callers set names in order.
void CMapValue::Insert(std::size_t at, const CStrCmp& name, double value, NameWord word) {
  if (at == entries_.size()) {
    entries_.emplace_back(name, value);
    words_.push_back(word);
  } else {
    entries_.emplace(begin() + static_cast<std::ptrdiff_t>(at), name, value);
    words_.insert(words_.begin() + static_cast<std::ptrdiff_t>(at), word);
  }
  layout_ = 0;
  if (word != 0) return;
  ++others_;
  if (IsOdd(name)) ++odd_;
}

CMapValue::const_iterator CMapValue::find(const CStrCmp& name) const {
  const std::size_t at = LowerBound(name);
  return Holds(at, name) ? begin() + static_cast<std::ptrdiff_t>(at) : end();
}

CMapValue::iterator CMapValue::find(const CStrCmp& name) {
  const std::size_t at = LowerBound(name);
  return Holds(at, name) ? begin() + static_cast<std::ptrdiff_t>(at) : end();
}

// The words stay beside their entries.
std::size_t CMapValue::erase(const CStrCmp& name) {
  const iterator at = find(name);
  if (at == end()) return 0;
  const auto word = words_.begin() + (at - begin());
  if (*word == 0) {
    --others_;
    if (IsOdd(at->first)) --odd_;
  }
  words_.erase(word);
  entries_.erase(at);
  layout_ = 0;
  return 1;
}

std::pair<CMapValue::iterator, bool> CMapValue::insert(const value_type& entry) {
  const std::size_t at = LowerBound(entry.first);
  const bool fresh = !Holds(at, entry.first);
  if (fresh) Insert(at, entry.first, entry.second, WordOfKey(entry.first));
  return {begin() + static_cast<std::ptrdiff_t>(at), fresh};
}

CString lorv::MapNumberText(double value) {
  TCHAR number[kNumberText];
  return CString(number, ShortDecimal(value, kStoredDecimals, false, number, kNumberText));
}

CString MapValueToStr(const CMapValue& values) {
  CString text;
  for (const auto& [name, value] : values) {
    text.Append(static_cast<LPCTSTR>(name)).AppendChar(':').Append(lorv::MapNumberText(value).View());
    text.AppendChar(';');
  }
  return text;
}

int StrValueToMap(LPCTSTR text, CMapValue& values) {
  values.clear();
  lorv::ForEachPair(text, [&values](const CString& name, const CString& value) {
    values[name] = lorv::ReadReal(value.View());
  });
  return static_cast<int>(values.size());
}
