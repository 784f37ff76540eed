#include "bench/plain_painter.h"
#include "framework/drawing/geometry.h"

// What paint_bench draws, by the system's drawing calls alone.

namespace lorv_bench {
namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l);

// A window of its own, painted within WM_PAINT by the system's calls alone.
class GdiPlainPainter : public PlainPainter {
 public:
  explicit GdiPlainPainter(const Sheet& sheet) : sheet_(sheet) {
    WNDCLASSW kind = {};
    kind.lpfnWndProc = &Procedure;
    kind.lpszClassName = L"plain painter";
    RegisterClassW(&kind);
    window_ = CreateWindowExW(0, kind.lpszClassName, L"", WS_POPUP | WS_VISIBLE, 0, 0, sheet.Width(),
                              sheet.Height(), nullptr, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    LOGFONTW face = {};
    face.lfHeight = -12 * sheet.scale;
    face.lfCharSet = DEFAULT_CHARSET;
    lstrcpynW(face.lfFaceName, L"WenQuanYi Micro Hei", LF_FACESIZE);
    font_ = CreateFontIndirectW(&face);
    pen_ = CreatePen(PS_SOLID, sheet.scale, kRule);
  }
  ~GdiPlainPainter() override {
    DestroyWindow(window_);
    DeleteObject(font_);
    DeleteObject(pen_);
  }

  void Lines() override { Paint(&GdiPlainPainter::DrawLines); }
  void Texts() override { Paint(&GdiPlainPainter::DrawTexts); }
  // The system keeps no shaped texts.
  void KeptTexts() override { Texts(); }
  void TextsInCells() override { Paint(&GdiPlainPainter::DrawTextsInCells); }
  void Page() override { Paint(&GdiPlainPainter::DrawPage); }
  void ShownPage() override { Page(); }
  void TwoCells() override {
    draw_ = &GdiPlainPainter::DrawTwoCells;
    for (const int i : {0, Count() - 1}) {
      const RECT cell = sheet_.Cell(i);
      InvalidateRect(window_, &cell, FALSE);
    }
    UpdateWindow(window_);
  }
  void ScrollRow() override {
    draw_ = &GdiPlainPainter::DrawLastRow;
    ScrollWindowEx(window_, 0, -sheet_.Down(), nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE);
    UpdateWindow(window_);
  }

  void Answer() {
    PAINTSTRUCT paint = {};
    const HDC context = BeginPaint(window_, &paint);
    if (draw_ != nullptr) (this->*draw_)(context);
    // The system gathers calls; without this they would be carried out in the time of the next step.
    GdiFlush();
    EndPaint(window_, &paint);
  }

 private:
  using Draw = void (GdiPlainPainter::*)(HDC);

  void Paint(Draw draw) {
    draw_ = draw;
    InvalidateRect(window_, nullptr, FALSE);
    UpdateWindow(window_);
  }
  int Count() const { return sheet_.columns * sheet_.rows; }
  const CString& Text(int i) const { return sheet_.texts[static_cast<std::size_t>(i)]; }

  static void Fill(HDC context, const RECT& rect) {
    SetDCBrushColor(context, kGround);
    FillRect(context, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  }
  void DrawLines(HDC context) {
    const HGDIOBJ before = SelectObject(context, pen_);
    const int right = sheet_.columns * sheet_.Across();
    const int bottom = sheet_.rows * sheet_.Down();
    for (int x = 0; x <= right; x += sheet_.Across())
      MoveToEx(context, x, 0, nullptr), LineTo(context, x, bottom);
    for (int y = 0; y <= bottom; y += sheet_.Down())
      MoveToEx(context, 0, y, nullptr), LineTo(context, right, y);
    SelectObject(context, before);
  }
  void Ink(HDC context) {
    SelectObject(context, font_);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, kInk);
  }
  void DrawOne(HDC context, int i) {
    const RECT cell = sheet_.Cell(i);
    ExtTextOutW(context, cell.left + 3, cell.top + 2, 0, nullptr, Text(i).GetString(),
                static_cast<UINT>(Text(i).GetLength()), nullptr);
  }
  void DrawTexts(HDC context) {
    Ink(context);
    for (int i = 0; i < Count(); ++i) DrawOne(context, i);
  }
  void DrawTextsInCells(HDC context) {
    Ink(context);
    for (int i = 0; i < Count(); ++i) {
      RECT cell = sheet_.Cell(i);
      const HGDIOBJ before = SelectObject(context, font_);
      DrawTextW(context, Text(i).GetString(), Text(i).GetLength(), &cell,
                DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
      SelectObject(context, before);
    }
  }
  void DrawPage(HDC context) {
    Fill(context, {0, 0, sheet_.Width(), sheet_.Height()});
    DrawLines(context);
    DrawTexts(context);
  }
  void DrawTwoCells(HDC context) {
    Ink(context);
    for (int i = 0; i < Count(); ++i) {
      const RECT cell = sheet_.Cell(i);
      if (!RectVisible(context, &cell)) continue;
      Fill(context, cell);
      DrawOne(context, i);
    }
  }
  void DrawLastRow(HDC context) {
    Fill(context, {0, sheet_.Height() - sheet_.Down(), sheet_.Width(), sheet_.Height()});
    Ink(context);
    for (int i = Count() - sheet_.columns; i < Count(); ++i) DrawOne(context, i);
  }

  const Sheet& sheet_;
  HWND window_ = nullptr;
  HFONT font_ = nullptr;
  HPEN pen_ = nullptr;
  Draw draw_ = nullptr;
};

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  auto* const painter = reinterpret_cast<GdiPlainPainter*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  // The first messages come from within CreateWindowExW, before the window knows its painter.
  if (message != WM_PAINT || painter == nullptr) return DefWindowProcW(window, message, w, l);
  painter->Answer();
  return 0;
}

}  // namespace

std::unique_ptr<PlainPainter> MakePlainPainter(const Sheet& sheet) {
  return std::make_unique<GdiPlainPainter>(sheet);
}

double WorkedMilliseconds() {
  LARGE_INTEGER now, second;
  QueryPerformanceCounter(&now);
  QueryPerformanceFrequency(&second);
  return 1e3 * static_cast<double>(now.QuadPart) / static_cast<double>(second.QuadPart);
}

void PrepareScreen(int /*scale*/) {}

}  // namespace lorv_bench
