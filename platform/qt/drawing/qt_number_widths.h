#pragma once

#include <QFontMetricsF>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "framework/native/export.h"
#include "platform/qt/drawing/kept_beginnings.h"

namespace lorv {

// The widths of texts of a few characters behind one beginning, added up from pairs of them.
class QtPairWidths {
 public:
  // The characters are the `count` from `first` on.
  QtPairWidths(const QFontMetricsF& metrics, QString beginning, unsigned first, unsigned count);

  // Of the beginning and the text behind it, in 64ths of a pixel; nothing for a text of other characters, and
  // for none.
  std::optional<std::int32_t> Sum(TextView text);

 private:
  std::int32_t Measured(const char16_t* text, int length) const;
  std::int32_t Single(unsigned sign);
  // What the second character adds behind the first: its width and how the font sets the two together.
  std::int32_t Added(unsigned before, unsigned sign);

  QFontMetricsF metrics_;
  QString beginning_;
  unsigned first_;
  unsigned count_;
  std::vector<std::int32_t> pairs_;  // the first row holds single characters
};

// The widths of numbers, and of names that end in one, added up from those of their characters and of pairs
// of them instead of shaped: a column of a hundred thousand of them, nearly all different, is measured before
// it is fitted.
//
// Numbers are texts of digits, blanks and the signs of ASCII up to "@" only: they are of one script, so a
// pair is set in every text as it is alone. Letters turn their neighbours into another script, which a font
// may set by other rules; so digits behind letters are added up by pairs that were measured behind those very
// letters, once many texts began with them.
// Units: pixels, rounded as the font's own measure of the whole text is.
// Memory: as much as KeptBeginnings says.
// One thread, that of the font.
//
//   QtNumberWidths(font).Width(_T("1.500"))  gives what QFontMetrics(font).horizontalAdvance("1.500") gives
class COMM_LORV_API QtNumberWidths {
 public:
  static constexpr std::size_t kMostNames = KeptBeginnings<QtPairWidths>::kMost;

  explicit QtNumberWidths(const QFont& font);

  // Nothing for a text that the font has to measure.
  std::optional<int> Width(TextView text);

 private:
  std::optional<std::int32_t> WidthOfName(TextView text);

  QFontMetricsF metrics_;
  QtPairWidths numbers_;
  KeptBeginnings<QtPairWidths> names_;
};

}  // namespace lorv
