#pragma once

#include <QFont>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/text/utf8.h"
#include "platform/models/kept_texts.h"
#include "platform/qt/drawing/qt_glyph_texts.h"
#include "platform/qt/drawing/qt_number_widths.h"

// The fonts and texts that one thread draws: found by value, so that a font is made and a text is shaped once
// and not for every cell of every painting.
//
// A thread has its own, as the widget set's fonts belong to the thread that uses them. What is kept is
// bounded: fonts by kMaxFaces, texts as KeptTexts says.
namespace lorv {

// A font ready for use, with its measures.
struct QtFace {
  explicit QtFace(const LOGFONT& description, std::uint32_t number);

  QFont font;
  TEXTMETRIC metrics = {};
  std::uint32_t number;
  mutable std::unique_ptr<QtNumberWidths> numbers;  // from the first text that was measured on

  QtGlyphTexts& Glyphs() const {
    if (glyphs_ == nullptr) glyphs_ = std::make_unique<QtGlyphTexts>(font);
    return *glyphs_;
  }

 private:
  mutable std::unique_ptr<QtGlyphTexts> glyphs_;  // from the first text that was drawn on
};

// A text of one face that is kept.
struct QtRun {
  int advance = 0;                               // pixels
  bool drawn = false;                            // at least once
  std::optional<std::vector<QGlyphRun>> shaped;  // from the second drawing on
};

class QtTextCache {
 public:
  static constexpr std::size_t kMaxFaces = 64;

  // That of the calling thread.
  static QtTextCache& Here();

  // Good until Age changes.
  const QtFace& Face(const LOGFONT& description);
  std::uint32_t Age() const { return age_; }
  // Null for a text too long to be kept; good until the next call. With the text's width, as Advance gives
  // it, the text need not be shaped for it.
  QtRun* Run(const QtFace& face, TextView text, std::optional<int> advance = {});
  int Advance(const QtFace& face, TextView text);
  std::size_t Kept() const { return runs_.Count(); }

 private:
  std::deque<QtFace> faces_;
  std::unordered_map<std::string, const QtFace*> by_description_;
  std::uint32_t age_ = 1;
  std::uint32_t last_number_ = 0;
  KeptTexts<QtRun> runs_;
};

}  // namespace lorv
