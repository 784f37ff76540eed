#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "platform/ports/code_page.h"

// Code page 936 as a table in both directions, filled once from the system's own conversion. All that is
// ours, such as what becomes of broken bytes, is written once over it and alike on every system.
namespace lorv {

class CodeTable : public CodePage {
 public:
  CodeTable();

  std::string ToNarrow(TextView text) const override;
  std::basic_string<TCHAR> ToText(std::string_view bytes) const override;
  std::size_t FirstCharacter(std::string_view bytes) const override;

 private:
  static constexpr std::size_t kUnits = 0x10000;

  void Enter(unsigned code, unsigned unit);
  void EnterPrivateUse();

  // By unit: its one or two bytes as a number, 0 where it has none.
  std::vector<std::uint16_t> codes_;
  // By the two bytes as a number (below 0x100: one byte): its unit, 0 where there is none.
  std::vector<std::uint16_t> units_;
};

// The unit that the system's own code page 936 gives for one or two bytes; 0 where it gives none, or more
// than one. One implementation a system; used while the table is filled.
class SystemCodes {
 public:
  SystemCodes();
  SystemCodes(const SystemCodes&) = delete;
  SystemCodes& operator=(const SystemCodes&) = delete;
  ~SystemCodes();

  unsigned UnitOf(std::string_view bytes) const;

 private:
  void* native_ = nullptr;
};

}  // namespace lorv
