#include "tests/conformance/painting_script.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "framework/drawing/device_context.h"
#include "framework/windows/window.h"
#include "tests/conformance/painting_trace_table.inc"

namespace lorv_test {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kGreen = RGB(0, 255, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

std::string Shown(const CRect& rect) {
  const auto number = [](LONG value) { return std::to_string(value); };
  return number(rect.left) + "," + number(rect.top) + "," + number(rect.right) + "," + number(rect.bottom);
}

// A window that paints what the step under way wants.
class PaintedSheet : public CWnd {
 public:
  std::function<void()> on_paint;
  int paints = 0;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message != WM_PAINT || !on_paint) return CWnd::WindowProc(message, w, l);
    ++paints;
    on_paint();
    return 0;
  }
};

class Script {
 public:
  explicit Script(BehaviourDriver& driver) : driver_(driver) {
    frame_.Create(nullptr, _T("painting"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(60, 60, 460, 360), nullptr,
                  0);
    sheet_.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(10, 10, 210, 110), &frame_, 1);
    driver_.Settle();
  }

  std::vector<std::string> Play();

 private:
  void Say(const std::string& line) { trace_.push_back("  " + line); }
  void Step(const char* name, const std::function<void()>& play) {
    trace_.emplace_back(name);
    sheet_.on_paint = nullptr;
    sheet_.ValidateRect(nullptr);
    driver_.Settle();
    sheet_.paints = 0;
    play();
    driver_.Settle();
  }
  // Paints all that is out of date in that colour, and says what that was.
  void PaintIn(COLORREF colour) {
    sheet_.on_paint = [this, colour] {
      CPaintDC dc(&sheet_);
      Say("paint " + Shown(CRect(dc.m_ps.rcPaint)) + " in " + std::to_string(dc.Dirty().Rects().size()));
      dc.FillSolidRect(CRect(0, 0, 200, 100), colour);
    };
  }
  // All of the sheet in one colour, without a paint message.
  void Ground(COLORREF colour) {
    CClientDC dc(&sheet_);
    dc.FillSolidRect(CRect(0, 0, 200, 100), colour);
  }
  std::string At(int x, int y) {
    CClientDC dc(&sheet_);
    const auto pixels = dc.Surface().Pixels(CRect(x, y, x + 1, y + 1));
    const DWORD pixel = pixels.empty() ? 0 : pixels[0] & 0xFFFFFFU;
    if (pixel == 0xFF0000) return "red";
    if (pixel == 0x00FF00) return "green";
    if (pixel == 0x0000FF) return "blue";
    return pixel == 0xFFFFFF ? "white" : pixel == 0 ? "black" : "other";
  }
  void Throwing();
  void Asking();
  void Inside();
  void Scrolling();
  void ScrollingParts();
  void Drawing();
  void Copying();
  void Ending();
  void EndAt(int painting);

  BehaviourDriver& driver_;
  CWnd frame_;
  PaintedSheet sheet_;
  std::vector<std::string> trace_;
};

void Script::Asking() {
  Step("two far parts are painted, and not what lies between", [this] {
    Ground(kRed);
    PaintIn(kGreen);
    sheet_.InvalidateRect(CRect(0, 0, 10, 10));
    sheet_.InvalidateRect(CRect(150, 60, 160, 70));
    Say(sheet_.GetUpdateRect(nullptr) != 0 ? "out of date" : "up to date");
    driver_.Settle();
    Say(At(5, 5) + " " + At(100, 40) + " " + At(155, 65));
  });
  Step("what lies between is not visible", [this] {
    sheet_.on_paint = [this] {
      CPaintDC dc(&sheet_);
      for (const int x : {5, 100, 155})
        Say(dc.RectVisible(CRect(x, 40, x + 1, 41)) != 0 ? "visible" : "hidden");
    };
    sheet_.InvalidateRect(CRect(0, 30, 10, 50));
    sheet_.InvalidateRect(CRect(150, 30, 160, 50));
  });
  Step("what is validated is not asked for", [this] {
    PaintIn(kGreen);
    sheet_.Invalidate();
    sheet_.ValidateRect(CRect(0, 0, 200, 60));
    CRect left;
    sheet_.GetUpdateRect(left);
    Say(Shown(left));
    driver_.Settle();
    sheet_.Invalidate();
    sheet_.ValidateRect(nullptr);
    driver_.Settle();
    Say(std::to_string(sheet_.paints));
  });
  Step("nothing is painted while redrawing is off", [this] {
    Ground(kRed);
    PaintIn(kGreen);
    sheet_.SetRedraw(FALSE);
    sheet_.InvalidateRect(CRect(20, 20, 40, 40));
    driver_.Settle();
    sheet_.UpdateWindow();
    Say(std::to_string(sheet_.paints) + " " + At(30, 30));
    sheet_.SetRedraw(TRUE);
    driver_.Settle();
    Say(At(30, 30) + " " + At(60, 30));
  });
}

void Script::Inside() {
  Step("what is invalidated inside painting is painted again", [this] {
    sheet_.on_paint = [this] {
      CPaintDC dc(&sheet_);
      Say("paint " + Shown(CRect(dc.m_ps.rcPaint)));
      if (sheet_.paints == 1) sheet_.InvalidateRect(CRect(1, 2, 30, 40));
    };
    sheet_.InvalidateRect(CRect(0, 0, 100, 100));
    driver_.Settle();
    Say(std::to_string(sheet_.paints));
  });
  Step("painting inside painting", [this] {
    sheet_.on_paint = [this] {
      const int number = sheet_.paints;
      CPaintDC dc(&sheet_);
      Say("begin " + std::to_string(number) + " " + Shown(CRect(dc.m_ps.rcPaint)));
      if (number < 3) sheet_.InvalidateRect(CRect(0, 0, 10 * number, 10));
      if (number < 3) sheet_.UpdateWindow();
      Say("end " + std::to_string(number));
    };
    sheet_.Invalidate();
    sheet_.UpdateWindow();
  });
  Step("a client context inside painting draws at its turn", [this] {
    sheet_.on_paint = [this] {
      CPaintDC dc(&sheet_);
      dc.FillSolidRect(CRect(0, 0, 200, 100), kRed);
    };
    sheet_.Invalidate();
    driver_.Settle();
    CClientDC dc(&sheet_);
    dc.FillSolidRect(CRect(10, 10, 20, 20), kBlue);
    Say(At(15, 15) + " " + At(25, 15));
  });
}

void Script::Throwing() {
  Step("a handler that throws leaves the window able to paint", [this] {
    sheet_.on_paint = [this] {
      CPaintDC dc(&sheet_);
      dc.IntersectClipRect(CRect(0, 0, 5, 5));
      throw std::runtime_error("painting");
    };
    sheet_.Invalidate();
    try {
      sheet_.UpdateWindow();
      Say("nothing thrown");
    } catch (const std::runtime_error& error) {
      Say(std::string("thrown ") + error.what());
    }
    PaintIn(kBlue);
    sheet_.Invalidate();
    driver_.Settle();
    Say(At(100, 50));
  });
  Step("a throw inside painting inside painting", [this] {
    sheet_.on_paint = [this] {
      CPaintDC dc(&sheet_);
      if (sheet_.paints == 2) throw std::runtime_error("inner");
      sheet_.Invalidate();
      try {
        sheet_.UpdateWindow();
      } catch (const std::runtime_error& error) {
        Say(std::string("thrown ") + error.what());
      }
      dc.FillSolidRect(CRect(0, 0, 200, 100), kGreen);
    };
    sheet_.Invalidate();
    sheet_.UpdateWindow();
    Say(At(100, 50));
  });
}

void Script::Scrolling() {
  const auto rows = [this] {
    CClientDC dc(&sheet_);
    dc.FillSolidRect(CRect(0, 0, 200, 50), kRed);
    dc.FillSolidRect(CRect(0, 50, 200, 100), kGreen);
  };
  Step("what is shown moves, what comes in is painted", [this, rows] {
    rows();
    PaintIn(kBlue);
    sheet_.ScrollWindow(0, -20);
    Say(At(100, 29) + " " + At(100, 30) + " " + At(100, 79));
    CRect update;
    sheet_.GetUpdateRect(update);
    Say(Shown(update));
    driver_.Settle();
    Say(At(100, 79) + " " + At(100, 80));
  });
  Step("the other way, and across", [this, rows] {
    rows();
    PaintIn(kBlue);
    sheet_.ScrollWindow(30, 10);
    driver_.Settle();
    Say(At(100, 5) + " " + At(10, 50) + " " + At(100, 59) + " " + At(100, 60));
  });
  Step("what was out of date moves along", [this, rows] {
    rows();
    PaintIn(kBlue);
    sheet_.InvalidateRect(CRect(0, 40, 20, 60));
    sheet_.ScrollWindow(0, -20);
    driver_.Settle();
    Say(At(10, 19) + " " + At(10, 20) + " " + At(10, 39) + " " + At(10, 40));
  });
  Step("further than there is", [this, rows] {
    rows();
    PaintIn(kBlue);
    sheet_.ScrollWindow(0, 500);
    driver_.Settle();
    Say(At(10, 0) + " " + At(10, 99));
  });
}

void Script::ScrollingParts() {
  Step("only within the clip", [this] {
    Ground(kRed);
    {
      CClientDC dc(&sheet_);
      dc.FillSolidRect(CRect(0, 40, 200, 60), kGreen);
    }
    PaintIn(kBlue);
    const CRect clip(0, 20, 200, 100);
    sheet_.ScrollWindow(0, -30, clip, clip);
    driver_.Settle();
    Say(At(5, 19) + " " + At(5, 20) + " " + At(5, 29) + " " + At(5, 30) + " " + At(5, 69) + " " + At(5, 70));
  });
  Step("children move along, or stay", [this] {
    CWnd child;
    child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(50, 40, 80, 60), &sheet_, 2);
    const auto place = [&] {
      CRect rect;
      child.GetWindowRect(rect);
      sheet_.ScreenToClient(rect);
      return Shown(rect);
    };
    sheet_.ScrollWindow(5, -10);
    Say(place());
    sheet_.ScrollWindowEx(0, -10, nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE);
    Say(place());
    child.DestroyWindow();
  });
}

void Script::Drawing() {
  Step("a text stays inside its cell", [this] {
    Ground(kRed);
    CClientDC dc(&sheet_);
    dc.SetBkColor(kGreen);
    dc.DrawText(_T("a text that is far too long for its cell"), CRect(50, 20, 90, 60),
                DT_SINGLELINE | DT_LEFT | DT_NOPREFIX);
    bool inside = true;
    for (int y = 0; y < 100; ++y) inside = inside && At(49, y) == "red" && At(90, y) == "red";
    Say(inside ? "inside" : "outside");
    Say(At(110, 30));
  });
  Step("lines are one pixel thin and end before their end", [this] {
    Ground(kRed);
    CClientDC dc(&sheet_);
    CPen pen(PS_SOLID, 1, kBlue);
    dc.SelectObject(&pen);
    dc.MoveTo(10, 30);
    dc.LineTo(50, 30);
    dc.MoveTo(60, 80);
    dc.LineTo(60, 40);
    Say(At(10, 29) + " " + At(10, 30) + " " + At(49, 30) + " " + At(50, 30) + " " + At(10, 31));
    Say(At(60, 80) + " " + At(60, 41) + " " + At(60, 40) + " " + At(59, 60) + " " + At(61, 60));
  });
  Step("a font is given back", [this] {
    CClientDC dc(&sheet_);
    LOGFONT face = driver_.Desktop().DialogFont();
    const int usual = dc.GetTextExtent(_T("KL1")).cx;
    face.lfWeight = FW_BOLD;
    face.lfHeight *= 3;
    CFont large(face);
    dc.SaveDC();
    dc.SelectObject(&large);
    dc.RestoreDC(-1);
    Say(dc.GetTextExtent(_T("KL1")).cx == usual ? "the usual one" : "another one");
    CFont* const before = dc.SelectObject(&large);
    dc.SelectObject(before);
    Say(dc.GetTextExtent(_T("KL1")).cx == usual ? "the usual one" : "another one");
  });
  Step("the screen's dots an inch are those of its contexts", [this] {
    CClientDC dc(&sheet_);
    Say(dc.GetDeviceCaps(LOGPIXELSY) == sheet_.GetDpi() ? "alike" : "different");
  });
}

void Script::Copying() {
  Step("a copy from memory has the pixels of direct painting", [this] {
    const auto paint = [](CDC& dc) {
      dc.FillSolidRect(CRect(0, 0, 120, 40), RGB(240, 250, 255));
      dc.SetBkMode(TRANSPARENT);
      dc.SetTextColor(RGB(10, 20, 30));
      dc.TextOut(3, 4, _T("梁 KL12 3.600"));
      dc.FillSolidRect(CRect(1, 25, 119, 26), kRed);
    };
    CClientDC dc(&sheet_);
    CDC memory;
    CBitmap bitmap;
    memory.CreateCompatibleDC(&dc);
    bitmap.CreateCompatibleBitmap(&dc, 120, 40);
    CBitmap* const before = memory.SelectObject(&bitmap);
    paint(memory);
    paint(dc);
    const auto direct = dc.Surface().Pixels(CRect(0, 0, 120, 40));
    dc.FillSolidRect(CRect(0, 0, 200, 100), kGreen);
    dc.BitBlt(0, 0, 120, 40, &memory, 0, 0, SRCCOPY);
    Say(direct == dc.Surface().Pixels(CRect(0, 0, 120, 40)) ? "alike" : "different");
    memory.SelectObject(before);
  });
}

// Another sheet ends inside its painting of that number, each of which lies within the one before.
void Script::EndAt(int painting) {
  PaintedSheet other;
  other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(220, 10, 300, 60), &frame_, 3);
  other.on_paint = [&other, painting] {
    CPaintDC dc(&other);
    if (other.paints == painting) {
      other.DestroyWindow();
    } else {
      other.Invalidate();
      other.UpdateWindow();
    }
    dc.FillSolidRect(CRect(0, 0, 80, 50), kBlue);
  };
  driver_.Settle();
  Say((other.m_hWnd == nullptr ? "gone after " : "there after ") + std::to_string(other.paints));
}

void Script::Ending() {
  Step("painting within painting goes eight deep, the rest comes later", [this] {
    int depth = 0;
    int deepest = 0;
    sheet_.on_paint = [&] {
      CPaintDC dc(&sheet_);
      deepest = std::max(deepest, ++depth);
      if (sheet_.paints < 20) sheet_.Invalidate();
      if (sheet_.paints < 20) sheet_.UpdateWindow();
      --depth;
    };
    sheet_.Invalidate();
    driver_.Settle();
    sheet_.on_paint = nullptr;
    Say(std::to_string(deepest) + " deep, " + std::to_string(sheet_.paints) + " in all");
  });
  Step("a window ends inside its painting", [this] { EndAt(1); });
  Step("a window ends inside painting inside painting", [this] { EndAt(3); });
}

std::vector<std::string> Script::Play() {
  Asking();
  Inside();
  Throwing();
  Scrolling();
  ScrollingParts();
  Drawing();
  Copying();
  Ending();
  sheet_.on_paint = nullptr;
  frame_.DestroyWindow();
  return trace_;
}

}  // namespace

std::vector<std::string> PlayPainting(BehaviourDriver& driver) {
  return Script(driver).Play();
}

void ExpectKeptPainting(BehaviourDriver& driver) {
  const auto trace = PlayPainting(driver);
  const std::vector<std::string> kept(std::begin(kPaintingTrace), std::end(kPaintingTrace));
  ASSERT_EQ(trace.size(), kept.size());
  std::string step;
  for (std::size_t i = 0; i < kept.size(); ++i) {
    if (kept[i][0] != ' ') step = kept[i];
    EXPECT_EQ(trace[i], kept[i]) << step;
  }
}

}  // namespace lorv_test
