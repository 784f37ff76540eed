#pragma once

#include <vector>

#include "platform/headless/drawing/headless_canvas.h"
#include "platform/ports/printing.h"

namespace lorv {

// A printer without paper: every text is 100 thousandths a unit wide and `line_height` high, and what was
// asked for is written down.
class COMM_LORV_API HeadlessPrinting : public Printing {
 public:
  bool agrees = true;  // the user takes the printer that is offered
  bool begins = true;
  int line_height = 167;
  // Pages that were drawn on: A4 at 96 dots per inch.
  std::vector<std::shared_ptr<HeadlessSurface>> pages;
  // "ask 12", "begin Error message mapping 5 font Arial 120 align 0", "extent 00", "text 300 9000 墙", "end",
  // "gone", "begin pages list", "page 1"
  std::vector<CString> asked;
  std::vector<HWND> owners;

  std::unique_ptr<PrintJob> Ask(HWND owner, DWORD flags) override;
};

}  // namespace lorv
