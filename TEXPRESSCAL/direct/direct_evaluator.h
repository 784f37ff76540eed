#pragma once

#include <cstddef>
#include <cstdint>

#include "TEXPRESSCAL/map_value.h"
#include "TEXPRESSCAL/values/value_places.h"

namespace lorv {

// Evaluates a formula with names in one pass over its text: no value is written into it and no tree is built,
// and the outcome is bit for bit what comes of doing both.
//
// Covered is what nearly all formulas consist of: numbers, short plain names with values, + - * / ^,
// brackets, comparisons, && and ||, and the functions of numbers. Whatever is or might be something else is
// refused, every mistake among it, and the text has to be evaluated: quotes, blanks and bars, names without a
// value, digits right before a name, values whose text is not simply their number (thirds), names so near
// each other that their replacement would miss one, a comparison that might be one of a chain, a division by
// zero.
class DirectEvaluator {
 public:
  // `formula` is terminated, in capitals and has kMaxFormulaText units at most.
  DirectEvaluator(LPCTSTR formula, const CMapValue& values, ValuePlaces& places);

  // False where the text has to be evaluated; `result` is then as it was.
  bool Evaluate(double& result);

 private:
  // Up to this many names are searched one by one.
  static constexpr std::size_t kFewEntries = 20;
  static constexpr std::size_t kSlots = 256;
  static_assert(2 * ValuePlaces::kMaxEntries <= kSlots);

  static constexpr std::size_t SlotOf(NameWord word) { return word * 0x9E3779B97F4A7C15U >> 56; }

  double Joined();
  double Compared();
  double Sum();
  double Factor(LPCTSTR& at);
  double Power(double base);
  double Signed();
  double Bracket();
  double Unnamed();
  double Name(LPCTSTR& at);
  double Value(std::size_t entry, LPCTSTR start, std::size_t length);
  double Unvalued(std::uint64_t units, std::size_t length);
  double Call(unsigned short kind);
  double Extreme(unsigned short kind);
  double Choose();
  unsigned short TakeComparison();
  bool TakeJoin(TCHAR sign);
  bool Take(TCHAR c);

  std::size_t EntryOf(NameWord word) const;
  // Kept apart: taken into the loop of sums, it slows down those that do without it.
  [[gnu::noinline]] std::size_t FoundByHash(NameWord word) const;
  void HashNames();
  bool HasNamedTail(std::uint64_t units) const;
  bool IsTooNear(std::size_t entry, LPCTSTR start, std::size_t length) const;
  bool EndsChainLink() const;
  double Refuse();

  LPCTSTR text_;
  LPCTSTR at_;
  const NameWord* words_;
  std::size_t count_;
  CMapValue::const_iterator entries_;
  ValuePlaces& places_;
  bool refused_;
  bool by_zero_ = false;                    // in what was evaluated so far, branches not taken left aside
  std::array<std::uint64_t, 2> seen_ = {};  // a bit for each entry that took a place
  static_assert(ValuePlaces::kMaxEntries <= 128);
  std::size_t name_units_ = 0;  // of all names met: no fewer than the hits of a substitution
  int operators_ = 0;           // joins and comparisons met: no fewer than are rewritten before a parse
  LPCTSTR last_comparison_ = nullptr;  // the place behind it; null: none was met
  // Of more than kFewEntries names, by hash: the entry's number and 1; 0 is a free slot.
  std::array<std::uint8_t, kSlots> slots_;
};

}  // namespace lorv
