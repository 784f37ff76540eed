#include "platform/qt/drawing/qt_number_widths.h"

#include <QString>
#include <cmath>

// Widths of numbers from those of their characters and pairs. Each is asked of the font once and kept
// in the 64ths of a pixel that the toolkit adds up itself, so the sum rounds as the font's own
// measure of the whole text.

namespace lorv {
namespace {

constexpr int kParts = 64;              // of a pixel, in the toolkit's fixed numbers
constexpr std::size_t kLongest = 1024;  // units; beyond it a sum could leave 32 bits with a huge font

}  // namespace

std::int32_t QtNumberWidths::Measured(const char16_t* text, int length) const {
  return static_cast<std::int32_t>(
      std::lround(metrics_.horizontalAdvance(QString::fromUtf16(text, length)) * kParts));
}

std::int32_t QtNumberWidths::Single(unsigned sign) {
  std::int32_t& width = pairs_[sign];
  if (width == kUnknown) {
    const auto unit = static_cast<char16_t>(kFirst + sign);
    width = Measured(&unit, 1);
  }
  return width;
}

std::int32_t QtNumberWidths::Added(unsigned before, unsigned sign) {
  std::int32_t& added = pairs_[(before + 1) * kCount + sign];
  if (added == kUnknown) {
    const char16_t both[] = {static_cast<char16_t>(kFirst + before), static_cast<char16_t>(kFirst + sign)};
    // The pair less its first character: what the font moves the two together is in it.
    added = Measured(both, 2) - Single(before);
  }
  return added;
}

std::optional<int> QtNumberWidths::Width(TextView text) {
  if (text.size() > kLongest) return std::nullopt;
  std::int32_t sum = 0;
  unsigned before = 0;
  bool first = true;
  for (const TCHAR unit : text) {
    const unsigned sign = static_cast<unsigned>(unit) - kFirst;
    // Another character makes the whole text one that only the font can measure.
    if (sign >= kCount) return std::nullopt;
    sum += first ? Single(sign) : Added(before, sign);
    before = sign;
    first = false;
  }
  // To the nearest pixel; there are 64 parts in one.
  return (sum + kParts / 2) >> 6;
}

}  // namespace lorv
