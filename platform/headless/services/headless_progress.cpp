#include "platform/headless/services/headless_progress.h"

#include <utility>

#include "framework/drawing/device_context.h"
#include "framework/windows/dialog.h"
#include "platform/models/progress_model.h"

// The windows of a long operation, made of the framework's own controls; what they say is the model's.

namespace lorv {
namespace {

constexpr UINT kFirstLine = 1000;  // the others follow
constexpr UINT kBar = 1010;

const DialogItem kItems[] = {
    {WindowKind::Static, kFirstLine, 7, 7, 234, 10, 0, _T("")},
    {WindowKind::Static, kFirstLine + 1, 7, 19, 234, 10, 0, _T("")},
    {WindowKind::Static, kFirstLine + 2, 7, 45, 234, 10, 0, _T("")},
    {WindowKind::Button, IDCANCEL, 191, 59, 50, 14, WS_TABSTOP | BS_PUSHBUTTON, _T("取消")},
};
const DialogTemplate kForm = {0, _T(""), 248, 80, _T("SimSun"), 9, kItems};

class ProgressBar : public CWnd {
 public:
  void Show(int steps) {
    // An operation reports far more often than the bar moves.
    if (std::exchange(steps_, steps) != steps) Invalidate();
  }

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message != WM_PAINT) return CWnd::WindowProc(message, w, l);
    CPaintDC dc(this);
    CRect all;
    GetClientRect(all);
    CRect done = all;
    done.right = all.Width() * steps_ / ProgressModel::kBarSteps;
    dc.FillSolidRect(all, DesktopInForce().Colour(COLOR_WINDOW));
    dc.FillSolidRect(done, DesktopInForce().Colour(COLOR_HIGHLIGHT));
    return 0;
  }

 private:
  int steps_ = 0;
};

class ProgressForm : public CDialog {
 public:
  explicit ProgressForm(ProgressModel& model) : model_(model) {}

  void Show() {
    if (m_hWnd == nullptr) return;
    for (int i = 0; i < ProgressModel::kLines; ++i) {
      const CString& text = model_.Line(i).text;
      const int id = static_cast<int>(kFirstLine) + i;
      CString before;
      GetDlgItemText(id, before);
      // Each text that is set is a repaint and a line in the record of a test.
      if (before != text) SetDlgItemText(id, text);
    }
    if (bar_.m_hWnd != nullptr) bar_.Show(model_.Bar());
  }

 protected:
  // The focus stays where the user works.
  BOOL OnInitDialog() override {
    CRect place(7, 32, 241, 42);
    MapDialogRect(place);
    bar_.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_BORDER, place, this, kBar);
    return FALSE;
  }
  void OnOK() override {}
  // Only the operation takes it away.
  void OnCancel() override {
    model_.Cancel();
    // It cannot be cancelled twice.
    if (CWnd* const button = GetDlgItem(IDCANCEL)) button->EnableWindow(FALSE);
    Show();
  }

 private:
  ProgressModel& model_;
  ProgressBar bar_;
};

class HeadlessProgress : public ProgressDialog {
 public:
  HeadlessProgress() { form_.Create(kForm, CWnd::GetActiveWindow()); }

  void SetTitle(LPCTSTR title) override { form_.SetWindowText(title); }
  bool SetAnimation(LPCTSTR /*module*/, UINT /*resource*/) override { return true; }
  void Open(DWORD flags) override {
    model_.Begin(flags, Now());
    form_.ShowWindow(SW_SHOWNOACTIVATE);
  }
  void SetCancelMessage(LPCTSTR message) override {
    model_.SetCancelMessage(message);
    form_.Show();
  }
  void Timer(DWORD action) override { model_.Timer(action, Now()); }
  void SetProgress(DWORD position, DWORD total) override {
    model_.SetProgress(position, total, Now());
    form_.Show();
  }
  void SetLine(DWORD line, LPCTSTR text, bool compact_path) override {
    model_.SetLine(line, text, compact_path);
    form_.Show();
  }
  bool HasUserCancelled() override { return model_.Cancelled(); }
  void Close() override { form_.ShowWindow(SW_HIDE); }

 private:
  // Of 32 bits, so that it starts anew every 49 days: an estimate is wrong once.
  static std::int64_t Now() { return DesktopInForce().Ticks(); }

  ProgressModel model_;
  ProgressForm form_{model_};
};

}  // namespace

std::unique_ptr<ProgressDialog> MakeHeadlessProgress() {
  return std::make_unique<HeadlessProgress>();
}

}  // namespace lorv
