#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "framework/native/export.h"
#include "framework/text/text_compare.h"

namespace lorv {

// The order that units of text are sorted in: Chinese characters (4E00 to 9FFF) by their sound, as the system
// has it, and all others by their codes. Where the system has no such order, all stand by their codes.
//
// Units: 16-bit units; weights are places among all of them, so that each unit has one of its own.
// Cost: the first question asks the system for all the characters, some ten milliseconds.
// Constant once it is made; any thread.
//
//   const UnitOrder& order = UnitOrder::BySound();
//   order.WeightOf(_T('板')) < order.WeightOf(_T('梁'))  where order.IsBySound()
class COMM_LORV_API UnitOrder {
 public:
  static const UnitOrder& ByCode();
  static const UnitOrder& BySound();

  bool IsBySound() const { return !weights_.empty(); }
  std::uint16_t WeightOf(TCHAR unit) const {
    const auto code = static_cast<std::uint16_t>(unit);
    const bool moved = IsBySound() && code >= kFirst && code <= kLast;
    return moved ? weights_[static_cast<std::size_t>(code - kFirst)] : code;
  }

 private:
  static constexpr std::uint16_t kFirst = 0x4E00;
  static constexpr std::uint16_t kLast = 0x9FFF;

  static UnitOrder Made();

  std::vector<std::uint16_t> weights_;  // of kFirst and those behind it; empty: by codes
};

// The system's own order of Chinese texts. One implementation a system; used while the table is filled.
class SystemOrder {
 public:
  SystemOrder();
  SystemOrder(const SystemOrder&) = delete;
  SystemOrder& operator=(const SystemOrder&) = delete;
  ~SystemOrder();

  // Bytes that compare as the character does; empty: the system has no order.
  std::string KeyOf(TCHAR unit) const;

 private:
  void* native_;
};

}  // namespace lorv
