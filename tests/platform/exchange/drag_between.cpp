#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <cstring>

#include "framework/windows/drag_drop.h"
#include "platform/qt/desktop/qt_desktop.h"

// One of two programs with a window each, for a drag from one to the other: `source` drags a text and bytes
// away when its window is pressed, `target` takes them. Each says what happens on a line of its own, and
// lives until it is ended.

namespace {

void Say(const CString& line) {
  std::puts(line.ToUtf8().c_str());
  std::fflush(stdout);
}

class SourceSheet : public CWnd {
 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message != WM_LBUTTONDOWN) return CWnd::WindowProc(message, w, l);
    COleDataSource source;
    source.SetText(_T("梁 KL1\r\nC30"));
    source.SetData(_T("application/x-lorv-cells"), {1, 0, 255});
    Say(_T("drag"));
    CString done;
    done.Format(_T("done %u"), source.DoDragDrop(DROPEFFECT_COPY | DROPEFFECT_MOVE));
    Say(done);
    return 0;
  }
};

class Target : public COleDropTarget {
 protected:
  DROPEFFECT OnDragOver(CWnd* /*window*/, COleDataObject* data, DWORD /*keys*/, CPoint at) override {
    if (at.x >= 100 || data->HasText() == 0) return DROPEFFECT_NONE;
    return DROPEFFECT_COPY;
  }
  void OnDragLeave(CWnd* /*window*/) override { Say(_T("leave")); }
  BOOL OnDrop(CWnd* /*window*/, COleDataObject* data, DROPEFFECT effect, CPoint at) override {
    CString text = data->GetText();
    text.Replace(_T("\r\n"), _T("|"));
    const std::vector<BYTE> cells = data->GetData(_T("application/x-lorv-cells"));
    CString line;
    line.Format(_T("drop %d,%d by %u: %s, %d bytes"), at.x, at.y, effect, text.GetString(),
                static_cast<int>(cells.size()));
    Say(line);
    return TRUE;
  }
};

}  // namespace

int main(int count, char** words) {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  const bool is_source = count > 1 && std::strcmp(words[1], "source") == 0;
  const int left = is_source ? 0 : 300;
  SourceSheet source;
  CWnd sink;
  Target target;
  CWnd& sheet = is_source ? static_cast<CWnd&>(source) : sink;
  // Without a frame: there is no window manager here that would draw one or move it.
  sheet.Create(nullptr, nullptr, WS_POPUP | WS_VISIBLE, CRect(left, 0, left + 200, 200), nullptr, 0);
  if (!is_source && target.Register(&sheet) == 0) return 1;
  QTimer::singleShot(200, [] { Say(_T("ready")); });
  while (!desktop->QuitCode()) desktop->Pump(true);
  return 0;
}
