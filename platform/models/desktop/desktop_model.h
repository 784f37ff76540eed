#pragma once

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"
#include "platform/models/window/window_model.h"

namespace lorv {

// The behaviour of a desktop for peers whose system has no such thing: which windows there are, which of them
// has the focus, the activation and the mouse, the queue of posted messages, modal loops, and the order of
// the messages that report all that. A peer derives from it and shows what changes.
//
// Calls out may destroy windows or throw; the state is changed before each call, and all windows that are to
// be notified of a change are notified although one of them throws. Threads: as Desktop says.
class COMM_LORV_API DesktopModel : public Desktop {
 public:
  HWND Create(const WindowRequest& request) override;
  std::shared_ptr<WindowPeer> Find(HWND window) const override { return At(window); }
  std::vector<HWND> Windows() const override { return tops_; }
  bool Post(HWND window, UINT message, WPARAM w, LPARAM l) override;
  LRESULT Send(HWND window, UINT message, WPARAM w, LPARAM l) override;
  bool Pump(bool wait) final;
  std::optional<int> QuitCode() const override { return quit_code_; }
  void RunModal(HWND dialog) override;
  void EndModal(HWND dialog) override;
  HWND Focus() const override { return focus_; }
  void ClearFocus() override { MoveFocus(nullptr); }
  HWND Active() const override { return active_; }
  HWND Capture() const override { return capture_; }
  void SetCapture(HWND window) override;
  SHORT KeyState(int key) const override;
  POINT CursorPosition() const override;
  void SetCursorPosition(POINT at) override;
  int Cursor() const override { return cursor_; }
  void SetCursor(int shape) override { cursor_ = shape; }
  int MakeCursor(const PixelImage& picture, POINT point) override;
  void EndCursor(int cursor) override;
  HWND WindowAt(POINT screen) const override;
  int Metric(int index) const override;
  UINT RegisterMessage(LPCTSTR name) override;

  // Dots per inch of the first screen, and of that on which a window begins: where it stands in another or
  // belongs to it, that one's.
  virtual int Dpi() const { return kUsualDpi; }
  virtual int DpiFor(const WindowRequest& request) const;

  // For windows. Null for what is no window any more.
  std::shared_ptr<WindowModel> At(HWND window) const;
  bool StillThere(HWND window) const { return At(window) != nullptr; }
  HWND TopOf(HWND window) const;
  bool Within(HWND outer, HWND inner) const;  // a window is within itself
  std::vector<HWND> OwnedBy(HWND owner) const;
  void RaiseTop(HWND window);
  // That of ours which has the focus, whatever other programs have.
  HWND FocusedWindow() const { return focus_; }
  void MoveFocus(HWND window);
  void ActivateTop(HWND top);
  // The window below is made active when another one goes.
  void ActivateNext(HWND gone, HWND owner);
  virtual void Forget(HWND window);
  // The user at an input method, in that window: what it shows now, and what it commits. The window with
  // which the composition goes on: another one where the class gave the focus away when it began. Null if
  // none is left.
  HWND Compose(HWND window, const Composition& now);

  // What a control shows is another: for screen readers, where no system does it.
  virtual void ControlChanged(HWND /*window*/, AccessEvent /*event*/) {}

 protected:
  virtual std::shared_ptr<WindowModel> MakeWindow(const WindowRequest& request, HWND handle) = 0;
  // Before the window knows its handle: it is put at its place.
  virtual void Begin(WindowModel& /*window*/, const WindowRequest& /*request*/) {}
  // Show what changed; nothing in them calls out.
  virtual void FocusChanged(HWND /*former*/) {}
  virtual void ActiveChanged() {}
  virtual void CaptureChanged(HWND /*former*/) {}
  virtual void MessagePosted() {}  // in any thread
  // The end of the program was asked for: whether a loop of the host's own got the code and needs no more.
  virtual bool EndHostLoop(int /*code*/) { return false; }
  // Dispatches one message; whether there was any.
  virtual bool PumpOnce(bool wait) = 0;
  // Does what is due next in a modal loop; false if the loop cannot go on.
  virtual bool DispatchModal(HWND dialog);
  // A key of a message about to be delivered makes its characters.
  virtual void Translate(const MSG& /*message*/) {}
  virtual int BarWidth() const = 0;
  virtual int CaptionHeight() const = 0;
  // How far a pressed mouse goes before that is a drag.
  virtual int DragDistance() const = 0;

  struct OwnCursor {
    SIZE size;
    POINT point;
    std::vector<DWORD> pixels;
  };
  // Null for a number that is none.
  const OwnCursor* CursorOf(int number) const;

  bool PumpPosted();
  bool Quits() const { return quits_; }  // what was pumped last was WM_QUIT

  // A loop that knows nothing of the end of the program, a menu's or a drag's. When the end is asked for
  // meanwhile, the loops around this one get it as soon as this one is over.
  class LoopWithin {
   public:
    explicit LoopWithin(DesktopModel& desktop) : desktop_(desktop) { desktop_.quits_ = false; }
    LoopWithin(const LoopWithin&) = delete;
    LoopWithin& operator=(const LoopWithin&) = delete;
    ~LoopWithin() { desktop_.PassQuitOn(); }

   private:
    DesktopModel& desktop_;
  };
  void Deliver(MSG message);
  MSG MessageNow(HWND window, UINT message, WPARAM w, LPARAM l) const;
  HWND FirstDirty(HWND at) const;
  // The mouse is over another window now, or over none.
  void Hover(HWND window);
  HWND Hovered() const { return hovered_; }
  WPARAM HeldKeys() const;
  void HoldKey(int key, bool down) { keys_[key] = down; }
  void KeepCursorPosition(POINT at);
  // The focus and the activation leave the program.
  void LeaveWindows();
  // For the end of the desktop: objects above may outlive it and are notified that their windows go.
  void DestroyAll();

 private:
  class ModalRun;

  static HWND NewHandle();
  void PassQuitOn();
  bool Admits(const WindowRequest& request) const;
  void Adopt(const std::shared_ptr<WindowModel>& window);
  HWND Announce(const std::shared_ptr<WindowModel>& window, const WindowRequest& request);
  HWND NextTop(HWND gone, HWND owner) const;
  HWND StartComposition(HWND window);
  void EndComposition();
  HWND InnermostAt(HWND at, POINT screen) const;

  mutable std::mutex mutex_;  // over windows_, posted_ and mouse_, which any thread asks for
  std::unordered_map<HWND, std::shared_ptr<WindowModel>> windows_;
  std::deque<MSG> posted_;
  POINT mouse_ = {0, 0};

  std::vector<HWND> tops_;  // the highest first
  std::vector<HWND> modal_;
  std::map<int, bool> keys_;
  HWND focus_ = nullptr;
  HWND active_ = nullptr;
  HWND capture_ = nullptr;
  HWND hovered_ = nullptr;
  HWND composing_ = nullptr;  // was notified of the beginning and not yet of the end
  int cursor_ = kCursorArrow;
  std::map<int, OwnCursor> own_cursors_;
  int last_own_cursor_ = kFirstOwnCursor - 1;
  std::optional<int> quit_code_;
  bool quits_ = false;            // the message being pumped was WM_QUIT
  bool host_loop_ended_ = false;  // with its code
  std::map<CString, UINT> registered_;
};

// Stands for any window that is not ours.
COMM_LORV_API HWND ForeignWindow();

// Whether the mouse message is a button going down, a double click included.
inline bool IsButtonDown(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
         message == WM_LBUTTONDBLCLK || message == WM_RBUTTONDBLCLK || message == WM_MBUTTONDBLCLK;
}

}  // namespace lorv
