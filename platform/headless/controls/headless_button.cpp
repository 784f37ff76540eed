#include "platform/headless/controls/headless_button.h"

#include "framework/drawing/text_layout.h"

// How buttons and labels look on the desktop in memory. What they do is in button_behaviour.h, shared with
// the desktops that people see.

namespace lorv {
namespace {

void PaintText(Canvas& canvas, const CString& text, const CRect& client, UINT flags, COLORREF ground) {
  canvas.Fill(client, ground);
  for (const PlacedLine& line : LayOutText(canvas, text.View(), client, flags).lines)
    canvas.Text(line.at, line.text.View(), 0);
}

constexpr COLORREF kFace = RGB(240, 240, 240);

}  // namespace

void HeadlessButton::PaintSelf(Canvas& canvas) {
  const CRect client(ClientRect());
  const bool push = Type() <= BS_DEFPUSHBUTTON;
  const UINT flags = DT_SINGLELINE | DT_VCENTER | (push ? DT_CENTER : DT_LEFT);
  PaintText(canvas, Text(), client, flags, kFace);
  // The default button is known by its thicker frame, as on the screen: tests read it from the list of what
  // was drawn.
  if (push) canvas.Frame(client, 0, Type() == BS_DEFPUSHBUTTON ? 2 : 1);
  if (Home().Focus() != Handle()) return;
  CRect inside(client);
  inside.DeflateRect(3, 3);
  canvas.Frame(inside, Home().Colour(COLOR_BTNSHADOW), 1);
}

LRESULT HeadlessStatic::Default(UINT message, WPARAM w, LPARAM l) {
  // A dialog passes it over when the focus moves.
  return message == WM_GETDLGCODE ? DLGC_STATIC : HeadlessWindow::Default(message, w, l);
}

void HeadlessStatic::PaintSelf(Canvas& canvas) {
  const UINT flags = DT_WORDBREAK | ((Style() & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0U);
  PaintText(canvas, Text(), CRect(ClientRect()), flags, kFace);
}

}  // namespace lorv
