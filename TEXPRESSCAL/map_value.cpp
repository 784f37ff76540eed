#include "TEXPRESSCAL/map_value.h"

#include <atomic>

#include "TEXPRESSCAL/value_pairs.h"
#include "comm/short_decimal.h"
#include "framework/number_text.h"

namespace {

constexpr int kStoredDecimals = 5;
constexpr int kNumberText = 64;

}  // namespace

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

std::pair<double*, bool> CMapValue::Place(LPCTSTR name) {
  const CStrCmp key = CStrCmp::Capitals(name);
  const std::size_t at = LowerBound(key);
  const bool fresh = !Holds(at, key);
  if (fresh) {
    entries_.insert(begin() + static_cast<std::ptrdiff_t>(at), {key, 0.0});
    layout_ = 0;
  }
  return {&entries_[at].second, fresh};
}

CMapValue::const_iterator CMapValue::find(const CStrCmp& name) const {
  const std::size_t at = LowerBound(name);
  return Holds(at, name) ? begin() + static_cast<std::ptrdiff_t>(at) : end();
}

CMapValue::iterator CMapValue::find(const CStrCmp& name) {
  const std::size_t at = LowerBound(name);
  return Holds(at, name) ? begin() + static_cast<std::ptrdiff_t>(at) : end();
}

std::size_t CMapValue::erase(const CStrCmp& name) {
  const iterator at = find(name);
  if (at == end()) return 0;
  entries_.erase(at);
  layout_ = 0;
  return 1;
}

std::pair<CMapValue::iterator, bool> CMapValue::insert(const value_type& entry) {
  const std::size_t at = LowerBound(entry.first);
  const bool fresh = !Holds(at, entry.first);
  const auto place = begin() + static_cast<std::ptrdiff_t>(at);
  if (fresh) layout_ = 0;
  return {fresh ? entries_.insert(place, entry) : place, fresh};
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
