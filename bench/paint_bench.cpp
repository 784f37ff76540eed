#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>
#include <random>
#include <string>

#include "bench/plain_painter.h"
#include "framework/drawing/device_context.h"
#include "framework/windows/window.h"
#include "platform/choice/desktop_choice.h"
#include "platform/headless/desktop/headless_desktop.h"

// Painting through the library beside the same work by the system's own painter, in one process and in random
// turns; and the desktop in memory, which must stay as quick however often it was painted.
//
//   lorv_bench_paint [--scale N] [--quick]

namespace {

using lorv_bench::PlainPainter;
using lorv_bench::Sheet;
using Work = std::function<void()>;

// A window whose painting is whatever the row under way wants.
class Canvas : public CWnd {
 public:
  std::function<void(CPaintDC&)> paint;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message != WM_PAINT || !paint) return CWnd::WindowProc(message, w, l);
    CPaintDC dc(this);
    paint(dc);
    return 0;
  }
};

double Milliseconds(const Work& work) {
  const double start = lorv_bench::WorkedMilliseconds();
  work();
  return lorv_bench::WorkedMilliseconds() - start;
}

// The best of many: what the neighbours of the machine do only ever adds.
double Best(const std::vector<double>& times) {
  return *std::min_element(times.begin(), times.end());
}

std::vector<CString> SomeTexts(int count, int first) {
  std::vector<CString> texts;
  for (int i = 0; i < count; ++i) {
    CString text;
    if (i % 4 == 0) {
      text.Format(_T("梁 KL%d"), first + i);
    } else {
      text.Format(_T("%d.%03d"), (first + i) * 7 % 100, (first + i) % 1000);
    }
    texts.push_back(text);
  }
  return texts;
}

// The library's side.
class Painting {
 public:
  explicit Painting(Sheet& sheet) : sheet_(sheet) {
    window_.CreateEx(0, nullptr, _T("paint"), WS_POPUP | WS_VISIBLE,
                     CRect(0, 0, sheet.Width(), sheet.Height()), nullptr, 0);
    LOGFONT face = {};
    font_.CreatePointFont(90, _T("WenQuanYi Micro Hei"));
    font_.GetLogFont(&face);
    face.lfHeight = -12 * sheet.scale;
    font_.CreateFontIndirect(&face);
    Settle();
  }

  void Settle() {
    while (lorv::DesktopInForce().Pump(false)) {
    }
  }
  void Paint(std::function<void(CPaintDC&)> paint) {
    window_.paint = std::move(paint);
    window_.Invalidate();
    window_.UpdateWindow();
  }

  void Lines(CDC& dc) {
    CPen pen(PS_SOLID, sheet_.scale, lorv_bench::kRule);
    dc.SelectObject(&pen);
    const int right = sheet_.columns * sheet_.Across();
    const int bottom = sheet_.rows * sheet_.Down();
    for (int x = 0; x <= right; x += sheet_.Across()) dc.MoveTo(x, 0), dc.LineTo(x, bottom);
    for (int y = 0; y <= bottom; y += sheet_.Down()) dc.MoveTo(0, y), dc.LineTo(right, y);
  }
  void Text(CDC& dc, int i) {
    const RECT cell = sheet_.Cell(i);
    dc.TextOut(cell.left + 3, cell.top + 2, sheet_.texts[static_cast<std::size_t>(i)]);
  }
  void Inked(CDC& dc) {
    dc.SelectObject(&font_);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(lorv_bench::kInk);
  }
  void Texts(CDC& dc) {
    Inked(dc);
    for (int i = 0; i < Count(); ++i) Text(dc, i);
  }
  void TextsInCells(CDC& dc) {
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(lorv_bench::kInk);
    for (int i = 0; i < Count(); ++i) {
      CFont* const before = dc.SelectObject(&font_);
      dc.DrawText(sheet_.texts[static_cast<std::size_t>(i)], CRect(sheet_.Cell(i)),
                  DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
      dc.SelectObject(before);
    }
  }
  void Page(CDC& dc) {
    dc.FillSolidRect(0, 0, sheet_.Width(), sheet_.Height(), lorv_bench::kGround);
    Lines(dc);
    Texts(dc);
  }
  // As a grid paints: only the cells that are out of date.
  void DirtyCells(CDC& dc) {
    Inked(dc);
    for (int i = 0; i < Count(); ++i) {
      const CRect cell(sheet_.Cell(i));
      if (dc.RectVisible(cell) == 0) continue;
      dc.FillSolidRect(cell, lorv_bench::kGround);
      Text(dc, i);
    }
  }
  void TwoCells() {
    window_.paint = [this](CPaintDC& dc) { DirtyCells(dc); };
    window_.InvalidateRect(CRect(sheet_.Cell(0)));
    window_.InvalidateRect(CRect(sheet_.Cell(Count() - 1)));
    window_.UpdateWindow();
  }
  void ScrollRow() {
    const CRect strip(0, sheet_.Height() - sheet_.Down(), sheet_.Width(), sheet_.Height());
    window_.paint = [this, strip](CPaintDC& dc) {
      dc.FillSolidRect(strip, lorv_bench::kGround);
      Inked(dc);
      for (int i = Count() - sheet_.columns; i < Count(); ++i) Text(dc, i);
    };
    window_.ScrollWindow(0, -sheet_.Down());
    window_.UpdateWindow();
  }
  void ShownPage() {
    Paint([this](CPaintDC& dc) { Page(dc); });
    Settle();
  }
  HWND Window() const { return window_.m_hWnd; }

 private:
  int Count() const { return sheet_.columns * sheet_.rows; }

  Sheet& sheet_;
  Canvas window_;
  CFont font_;
};

struct Row {
  const char* name;
  double limit;  // how many times as long as the plain painter it may take; 0: for comparison only
  Work ours;
  Work plain;
};

std::vector<Row> RowsOf(Painting& ours, PlainPainter& plain, Sheet& sheet) {
  const auto painted = [&ours](void (Painting::*draw)(CDC&)) {
    return [&ours, draw] { ours.Paint([&ours, draw](CPaintDC& dc) { (ours.*draw)(dc); }); };
  };
  int first = 0;
  return {
      {"67 lines", 1.5, painted(&Painting::Lines), [&plain] { plain.Lines(); }},
      {"1,000 texts", 1.2, painted(&Painting::Texts), [&plain] { plain.Texts(); }},
      {"1,000 texts, kept by the peer too", 1.2, painted(&Painting::Texts), [&plain] { plain.KeptTexts(); }},
      {"1,000 texts never seen before", 0,
       [painted, &sheet, first]() mutable {
         sheet.texts = SomeTexts(static_cast<int>(sheet.texts.size()), first += 100000);
         painted (&Painting::Texts)();
       },
       [&plain, &sheet, first]() mutable {
         sheet.texts = SomeTexts(static_cast<int>(sheet.texts.size()), first -= 100000);
         plain.Texts();
       }},
      {"1,000 DrawText with a selected font", 1.2, painted(&Painting::TextsInCells),
       [&plain] { plain.TextsInCells(); }},
      {"page: ground, lines, texts", 1.2, painted(&Painting::Page), [&plain] { plain.Page(); }},
      {"page, brought to the screen", 1.2, [&ours] { ours.ShownPage(); }, [&plain] { plain.ShownPage(); }},
      {"two cells far apart", 1.2, [&ours] { ours.TwoCells(); }, [&plain] { plain.TwoCells(); }},
      {"scrolled by a row", 1.2, [&ours] { ours.ScrollRow(); }, [&plain] { plain.ScrollRow(); }},
  };
}

void Compare(const std::vector<Row>& rows, int rounds) {
  std::mt19937 random(1);
  std::printf("| Work | library, ms | plain, ms | times | at most |\n|---|--:|--:|--:|--:|\n");
  for (const Row& row : rows) {
    std::vector<double> ours;
    std::vector<double> plain;
    // Glyphs and texts that are kept from one painting to the next are in their caches then, on both sides.
    for (int warm = 0; warm < std::min(rounds, 12); ++warm) row.ours(), row.plain();
    for (int i = 0; i < rounds; ++i) {
      const bool first = random() % 2 == 0;
      // Whose turn is first is drawn, so that neither always finds the caches as the other left them.
      if (first) ours.push_back(Milliseconds(row.ours));
      plain.push_back(Milliseconds(row.plain));
      if (!first) ours.push_back(Milliseconds(row.ours));
    }
    const double mine = Best(ours);
    const double other = Best(plain);
    std::printf("| %s | %.3f | %.3f | %.2f |", row.name, mine, other, mine / other);
    row.limit > 0 ? std::printf(" %.1f |\n", row.limit) : std::printf(" |\n");
  }
}

// The desktop in memory: a page's time and what is listed, at first and after many paintings.
void InMemory(int rounds) {
  Sheet sheet;
  sheet.texts = SomeTexts(sheet.columns * sheet.rows, 0);
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  Painting ours(sheet);
  const auto page = [&ours] { ours.Paint([&ours](CPaintDC& dc) { ours.Page(dc); }); };
  const auto report = [&](int paintings) {
    std::vector<double> times;
    for (int i = 0; i < 9; ++i) times.push_back(Milliseconds(page));
    std::printf("| %d | %.2f | %zu |\n", paintings, Best(times), desktop.Seen(ours.Window()).size());
  };
  std::printf("\n| Paintings in memory before | page, ms | entries |\n|--:|--:|--:|\n");
  // A list that only grows would show in the second line.
  report(0);
  for (int i = 0; i < rounds; ++i) page();
  report(rounds);
}

}  // namespace

int main(int count, char** arguments) {
  int scale = 1;
  int rounds = 61;
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(arguments[i], "--quick") == 0) rounds = 3;
    if (std::strcmp(arguments[i], "--scale") == 0 && i + 1 < count) scale = std::atoi(arguments[++i]);
  }
  lorv_bench::PrepareScreen(scale);
  Sheet sheet;
  sheet.scale = scale;
  sheet.texts = SomeTexts(sheet.columns * sheet.rows, 0);
  {
    Painting ours(sheet);
    const auto plain = lorv_bench::MakePlainPainter(sheet);
    std::printf("Scale %d: %d x %d pixels, %zu cells\n\n", scale, sheet.Width(), sheet.Height(),
                sheet.texts.size());
    Compare(RowsOf(ours, *plain, sheet), rounds);
  }
  InMemory(rounds == 3 ? 10 : 1000);
  return 0;
}
