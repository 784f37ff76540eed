#pragma once

#include <cstdint>
#include <memory>

#include "framework/native/window_types.h"

// Fonts of the system by value: making one costs more than drawing a cell with it, so they are shared.
//
// A face that is not installed is replaced by one that has Chinese characters.
// Result: null only where the system has no handles left. The font lives at least as long as somebody holds
//   it. Any thread.
namespace lorv {

class GdiFont {
 public:
  explicit GdiFont(const LOGFONTW& face);
  GdiFont(const GdiFont&) = delete;
  GdiFont& operator=(const GdiFont&) = delete;
  ~GdiFont();

  HFONT Handle() const { return handle_; }
  // No other font of the process has it.
  std::uint32_t Number() const { return number_; }

 private:
  HFONT handle_;
  std::uint32_t number_;
};

std::shared_ptr<const GdiFont> SharedFont(const LOGFONTW& face);

// That of the system's own dialogs, on a screen of that many dots per inch; 0: on the first one.
LOGFONTW SystemDialogFont(int dots = 0);

}  // namespace lorv
