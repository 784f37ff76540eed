#pragma once

#include <memory>

#include "framework/native/window_types.h"

// Fonts of the system by value: making one costs more than drawing a cell with it, so they are shared.
//
// A face that is not installed is replaced by one that has Chinese characters.
// Result: never null, but for want of the system's handles. The font lives as long as somebody holds it, and
//   somewhat longer. Any thread.
namespace lorv {

class GdiFont {
 public:
  explicit GdiFont(const LOGFONTW& face);
  GdiFont(const GdiFont&) = delete;
  GdiFont& operator=(const GdiFont&) = delete;
  ~GdiFont();

  HFONT Handle() const { return handle_; }

 private:
  HFONT handle_;
};

std::shared_ptr<const GdiFont> SharedFont(const LOGFONTW& face);

// That of the system's own dialogs.
LOGFONTW SystemDialogFont();

}  // namespace lorv
