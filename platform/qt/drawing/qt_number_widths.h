#pragma once

#include <QFontMetricsF>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>

#include "framework/native/export.h"
#include "framework/text/text_compare.h"

namespace lorv {

// The widths of numbers, added up from those of their characters and of pairs of them instead of shaped: a
// column of a hundred thousand numbers, nearly all different, is measured before it is fitted.
//
// Texts of digits, blanks and the signs of ASCII up to "@" only: they are of one script, so a pair is set in
//   every text as it is alone. Letters turn their neighbours into another script, which a font may set by
//   other rules.
// Units: pixels, rounded as the font's own measure of the whole text is.
// One thread, that of the font.
//
//   QtNumberWidths(font).Width(_T("1.500"))  gives what QFontMetrics(font).horizontalAdvance("1.500") gives
class COMM_LORV_API QtNumberWidths {
 public:
  explicit QtNumberWidths(const QFont& font) : metrics_(font) { pairs_.fill(kUnknown); }

  // Nothing for a text of other characters.
  std::optional<int> Width(TextView text);

 private:
  static constexpr unsigned kFirst = 0x20;
  static constexpr unsigned kCount = 0x41 - kFirst;
  static constexpr std::int32_t kUnknown = std::numeric_limits<std::int32_t>::min();

  std::int32_t Measured(const char16_t* text, int length) const;
  std::int32_t Single(unsigned sign);
  // What the second character adds behind the first: its width and how the font sets the two together.
  std::int32_t Added(unsigned before, unsigned sign);

  QFontMetricsF metrics_;
  // 64ths of a pixel, as the toolkit adds them; the first row holds single characters.
  std::array<std::int32_t, (kCount + 1) * kCount> pairs_;
};

}  // namespace lorv
