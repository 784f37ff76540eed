#pragma once

#include <map>
#include <memory>

#include "platform/models/kept_texts.h"
#include "platform/win32/drawing/gdi_font.h"

// The measures of fonts and texts, for one thread: asked of a context without a window, so that they are to
// be had when a window is gone, and asked once.
namespace lorv {

class GdiMeasure {
 public:
  GdiMeasure();
  GdiMeasure(const GdiMeasure&) = delete;
  GdiMeasure& operator=(const GdiMeasure&) = delete;
  ~GdiMeasure();

  // That of the calling thread.
  static GdiMeasure& Here();

  const TEXTMETRICW& Metrics(const std::shared_ptr<const GdiFont>& font);
  int Width(const std::shared_ptr<const GdiFont>& font, TextView text);

 private:
  static constexpr std::size_t kMaxFaces = 64;

  void Select(const std::shared_ptr<const GdiFont>& font);
  int Asked(const std::shared_ptr<const GdiFont>& font, TextView text);

  HDC context_;
  HGDIOBJ former_ = nullptr;
  std::shared_ptr<const GdiFont> selected_;
  std::map<std::uint32_t, TEXTMETRICW> metrics_;
  KeptTexts<int> widths_;
};

}  // namespace lorv
