#include "platform/qt/drawing/qt_number_widths.h"

#include <cmath>
#include <limits>
#include <utility>

#include "platform/qt/desktop/qt_text.h"

// Widths of numbers from those of their characters and pairs. Each is asked of the font once and kept
// in the 64ths of a pixel that the toolkit adds up itself, so the sum rounds as the font's own
// measure of the whole text.

namespace lorv {
namespace {

constexpr int kParts = 64;              // of a pixel, in the toolkit's fixed numbers
constexpr std::size_t kLongest = 1024;  // units; beyond it a sum could leave 32 bits with a huge font
constexpr std::int32_t kUnknown = std::numeric_limits<std::int32_t>::min();

}  // namespace

QtPairWidths::QtPairWidths(const QFontMetricsF& metrics, QString beginning, unsigned first, unsigned count)
    : metrics_(metrics),
      beginning_(std::move(beginning)),
      first_(first),
      count_(count),
      pairs_(std::size_t{count + 1} * count, kUnknown) {}

std::int32_t QtPairWidths::Measured(const char16_t* text, int length) const {
  return static_cast<std::int32_t>(
      std::lround(metrics_.horizontalAdvance(beginning_ + QString::fromUtf16(text, length)) * kParts));
}

std::int32_t QtPairWidths::Single(unsigned sign) {
  std::int32_t& width = pairs_[sign];
  if (width == kUnknown) {
    const auto unit = static_cast<char16_t>(first_ + sign);
    width = Measured(&unit, 1);
  }
  return width;
}

std::int32_t QtPairWidths::Added(unsigned before, unsigned sign) {
  std::int32_t& added = pairs_[std::size_t{before + 1} * count_ + sign];
  if (added == kUnknown) {
    const char16_t both[] = {static_cast<char16_t>(first_ + before), static_cast<char16_t>(first_ + sign)};
    // The pair less its first character: what the font moves the two together is in it.
    added = Measured(both, 2) - Single(before);
  }
  return added;
}

std::optional<std::int32_t> QtPairWidths::Sum(TextView text) {
  if (text.empty()) return std::nullopt;
  std::int32_t sum = 0;
  unsigned before = 0;
  bool first = true;
  for (const TCHAR unit : text) {
    const unsigned sign = static_cast<unsigned>(unit) - first_;
    // Another character makes the whole text one that only the font can measure.
    if (sign >= count_) return std::nullopt;
    sum += first ? Single(sign) : Added(before, sign);
    before = sign;
    first = false;
  }
  return sum;
}

QtNumberWidths::QtNumberWidths(const QFont& font) : metrics_(font), numbers_(metrics_, {}, 0x20, 0x21) {}

std::optional<int> QtNumberWidths::Width(TextView text) {
  if (text.empty()) return 0;
  if (text.size() > kLongest) return std::nullopt;
  std::optional<std::int32_t> sum = numbers_.Sum(text);
  if (!sum) sum = WidthOfName(text);
  if (!sum) return std::nullopt;
  // To the nearest pixel; there are 64 parts in one.
  return (*sum + kParts / 2) >> 6;
}

std::optional<std::int32_t> QtNumberWidths::WidthOfName(TextView text) {
  const TextView beginning = BeginningOfName(text);
  if (beginning.empty()) return std::nullopt;
  // Its pairs are a hundred texts to shape: fewer names are shaped themselves.
  QtPairWidths* const digits = names_.Met(
      beginning, [&] { return std::make_unique<QtPairWidths>(metrics_, ToQt(beginning), u'0', 10); });
  return digits == nullptr ? std::nullopt : digits->Sum(text.substr(beginning.size()));
}

}  // namespace lorv
