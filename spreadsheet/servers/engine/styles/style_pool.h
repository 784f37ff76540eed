#pragma once

#include <cstdint>
#include <map>
#include <tuple>
#include <vector>

#include "framework/text/cstring.h"

namespace lorv::engine {

// How a cell is shown, as far as the exchange knows it.
struct CellStyle {
  std::uint32_t format = 0;  // number of the format text; 0 is "General"
  double font_size = 0;      // points; 0 is the workbook's own
  int alignment = 0;         // code of the programs; 0 is none
  bool bold = false;

  bool operator==(const CellStyle&) const = default;

  friend bool operator<(const CellStyle& a, const CellStyle& b) {
    return std::tie(a.format, a.font_size, a.alignment, a.bold) <
           std::tie(b.format, b.font_size, b.alignment, b.bold);
  }
};

// The styles and number formats of a workbook, each once. Number 0 is the plain style.
class StylePool {
 public:
  StylePool();

  std::uint32_t FormatId(const CString& text);
  const CString& FormatText(std::uint32_t id) const { return formats_[id]; }
  // Whether numbers under the format are dates: see number_format_kind.h.
  bool IsDate(std::uint32_t format) const { return dates_[format]; }
  std::size_t FormatCount() const { return formats_.size(); }

  // Raises the engine's failure beyond kMaxStyles.
  std::uint16_t StyleId(const CellStyle& style);
  const CellStyle& Style(std::uint16_t id) const { return styles_[id]; }
  std::size_t StyleCount() const { return styles_.size(); }

 private:
  std::vector<CString> formats_;
  std::vector<bool> dates_;
  std::map<CString, std::uint32_t> format_ids_;
  std::vector<CellStyle> styles_;
  std::map<CellStyle, std::uint16_t> style_ids_;
};

}  // namespace lorv::engine
