#include "grid/view/grid_sort.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "framework/text/number_text.h"
#include "gridcore/control/grid_control.h"
#include "platform/text/unit_order.h"

// Each cell is asked once. What it is compared by is a number that settles nearly all comparisons: the number
// itself, or the first four units of the text.

namespace lorv {

namespace {

enum Kind : std::uint32_t { kNoNumber, kNumber, kText, kEmpty };

struct Key {
  std::uint64_t head = 0;
  std::uint32_t kind = kEmpty;
  std::uint32_t place = 0;
};

constexpr std::size_t kUnitsInHead = 4;

// Numbers as whole ones that compare alike.
std::uint64_t Ordered(double number) {
  constexpr std::uint64_t kSign = std::uint64_t{1} << 63U;
  const auto bits = std::bit_cast<std::uint64_t>(number == 0 ? 0.0 : number);
  return (bits & kSign) != 0 ? ~bits : bits | kSign;
}

bool IsWholeNumber(TextView text, double& number) {
  std::size_t used = 0;
  number = ReadReal(text, &used);
  while (used > 0 && used < text.size() && text[used] == _T(' ')) ++used;
  return used > 0 && used == text.size();
}

class Keys {
 public:
  Keys(const std::vector<CBCGPGridRow*>& rows, int column, const SortOptions& options)
      : options_(options), order_(options.by_sound ? UnitOrder::BySound() : UnitOrder::ByCode()) {
    keys_.reserve(rows.size());
    texts_.reserve(rows.size());
    for (const CBCGPGridRow* row : rows) Take(*row, column);
  }

  std::vector<int> Order(bool ascending) {
    const auto before = [this, ascending](const Key& a, const Key& b) {
      if (options_.empty_last && (a.kind == kEmpty || b.kind == kEmpty)) return a.kind < b.kind;
      return ascending ? Less(a, b) : Less(b, a);
    };
    std::stable_sort(keys_.begin(), keys_.end(), before);
    std::vector<int> order;
    order.reserve(keys_.size());
    for (const Key& key : keys_) order.push_back(static_cast<int>(key.place));
    return order;
  }

 private:
  std::uint16_t WeightOf(TCHAR unit) const {
    const bool capital = unit >= _T('A') && unit <= _T('Z');
    return order_.WeightOf(capital ? static_cast<TCHAR>(unit | 0x20) : unit);
  }

  void Take(const CBCGPGridRow& row, int column) {
    Key key;
    key.place = static_cast<std::uint32_t>(keys_.size());
    texts_.emplace_back();
    const bool text = row.GetValueType(column) == VT_BSTR;
    if (row.HasItem(column) && (text || !TakeNumber(row.CopyValue(column), key)))
      TakeText(row.GetCellText(column), key);
    keys_.push_back(key);
  }

  static void SetNumber(double number, Key& key) {
    key.kind = std::isnan(number) ? kNoNumber : kNumber;
    key.head = std::isnan(number) ? 0 : Ordered(number);
  }

  static bool TakeNumber(const _variant_t& value, Key& key) {
    if (!IsPlainType(value.vt) || value.vt == VT_EMPTY || value.vt == VT_NULL || value.vt == VT_ERROR)
      return false;
    VARIANT number = {};
    if (ChangeValueType(number, value, VT_R8) != S_OK) number.dblVal = 0;
    SetNumber(number.dblVal, key);
    return true;
  }

  void TakeText(CString text, Key& key) {
    double number = 0;
    if (options_.texts_of_numbers && IsWholeNumber(text.View(), number)) return SetNumber(number, key);
    // Without the option for empty cells they are texts like others, the least of them.
    if (text.IsEmpty() && options_.empty_last) return;
    key.kind = kText;
    const TextView units = text.View();
    for (std::size_t i = 0; i < kUnitsInHead; ++i)
      key.head = key.head << 16U | (i < units.size() ? WeightOf(units[i]) : 0U);
    texts_.back() = std::move(text);
  }

  bool Less(const Key& a, const Key& b) const {
    if (a.kind != b.kind) return a.kind < b.kind;
    if (a.head != b.head) return a.head < b.head;
    return a.kind == kText && TailLess(texts_[a.place].View(), texts_[b.place].View());
  }

  bool TailLess(TextView a, TextView b) const {
    const std::size_t both = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < both; ++i) {
      const std::uint16_t left = WeightOf(a[i]);
      const std::uint16_t right = WeightOf(b[i]);
      if (left != right) return left < right;
    }
    return a.size() < b.size();
  }

  SortOptions options_;
  const UnitOrder& order_;
  std::vector<Key> keys_;
  std::vector<CString> texts_;  // by place
};

}  // namespace

std::vector<int> SortedOrder(const std::vector<CBCGPGridRow*>& rows, int column, bool ascending,
                             const SortOptions& options) {
  return Keys(rows, column, options).Order(ascending);
}

GridSort::GridSort(CBCGPGridCtrl& grid, const SortOptions& options)
    : grid_(&grid), grid_life_(grid.Watch()), options_(std::make_shared<SortOptions>(options)) {
  grid.SetRowSorter([known = options_](const std::vector<CBCGPGridRow*>& rows, int column, bool ascending) {
    return SortedOrder(rows, column, ascending, *known);
  });
}

GridSort::~GridSort() {
  // A later object's sorter stays.
  if (!grid_life_.expired() && options_.use_count() > 1) grid_->SetRowSorter({});
}

}  // namespace lorv
