#pragma once

#include <cstdint>

#include "gridcore/geometry/line_span.h"

namespace lorv {

// A switch for each column of a table, in one word of 32 bits as the suite stores it: column c owns the bit 2
// << (c mod 32). So columns whose numbers are 32 apart share a switch, and column 31 and each 32nd after it
// has none: it is never on. A negative column has none either.
//
//   ColumnMask m;  m.Set(33, true);  m.Has(1)  gives true;  m.SetAll(true);  m.Has(31)  gives false
class ColumnMask {
 public:
  bool Has(int column) const { return (bits_ & BitOf(column)) != 0; }
  void Set(int column, bool on) { bits_ = on ? bits_ | BitOf(column) : bits_ & ~BitOf(column); }
  // The switches of the first 31 columns go with the columns when one is moved; further ones have no own.
  void Move(int from, int to) {
    const ColumnMask before = *this;
    for (int column = 0; column < kOwnSwitches; ++column)
      Set(column, before.Has(LineAfterMove(column, to, from)));
  }
  void SetAll(bool on) { bits_ = on ? ~0U : 0U; }

 private:
  static constexpr int kOwnSwitches = 31;

  static std::uint32_t BitOf(int column) {
    return column < 0 ? 0U : std::uint32_t{2} << (static_cast<unsigned>(column) % 32U);
  }

  std::uint32_t bits_ = 0;
};

}  // namespace lorv
