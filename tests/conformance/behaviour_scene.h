#pragma once

#include <functional>
#include <string>
#include <vector>

#include "framework/windows/controls.h"
#include "framework/windows/dialog.h"
#include "tests/conformance/behaviour_driver.h"

// The windows of the conformance script, each of which writes what it is notified of into one trace.
namespace lorv_test {

struct Scene;

// A window that draws itself; `on` does what a step wants in the middle of a message.
class TracedSheet : public CWnd {
 public:
  explicit TracedSheet(Scene& scene) : scene_(scene) {}
  std::function<void(const std::string&)> on;
  std::function<bool(const MSG&)> takes;
  BOOL PreTranslateMessage(MSG* message) override;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override;

 private:
  Scene& scene_;
};

class TracedEdit : public CEdit {
 public:
  std::function<bool(const MSG&)> takes;
  BOOL PreTranslateMessage(MSG* message) override { return takes && takes(*message); }
};

class TracedCombo : public CComboBox {
 public:
  std::function<bool(const MSG&)> takes;
  BOOL PreTranslateMessage(MSG* message) override { return takes && takes(*message); }
};

// The top window: traces the notifications of its controls.
class TracedFrame : public CWnd {
 public:
  explicit TracedFrame(Scene& scene) : scene_(scene) {}
  std::function<void(int id, int code)> on;

 protected:
  BOOL OnCommand(WPARAM w, LPARAM l) override;

 private:
  Scene& scene_;
};

class TracedDialog : public CDialog {
 public:
  explicit TracedDialog(Scene& scene);
  std::function<void(int id, int code)> on;
  std::function<bool(const MSG&)> takes;
  BOOL PreTranslateMessage(MSG* message) override;

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;
  void OnCancel() override;
  BOOL OnCommand(WPARAM w, LPARAM l) override;

 private:
  Scene& scene_;
};

enum ControlId : int {
  kSheet = 101,
  kEdit,
  kLines,
  kChoice,
  kTyped,
  kList,
  kPush,
  kCheck,
  kFirstRadio,
  kSecondRadio,
  kExtra
};

struct Scene {
  explicit Scene(BehaviourDriver& player);

  void Say(const std::string& line) { trace.push_back("  " + line); }
  void SayText(const CWnd& window);
  void SaySelection(const CEdit& of);
  void SayFocus();
  // A point of the window's client area, on the screen.
  POINT On(const CWnd& window, int x, int y) const;
  void Click(const CWnd& window, int x = 6, int y = 6) { driver.Click(On(window, x, y)); }
  void Focus(CWnd& window) {
    window.SetFocus();
    driver.Settle();
  }
  // Sets a text, and forgets what that reported.
  void Fill(CWnd& window, LPCTSTR text);
  static CString Text(const CWnd& window);
  static std::string NameOf(int id);

  BehaviourDriver& driver;
  std::vector<std::string> trace;
  TracedFrame frame;
  TracedSheet sheet;
  TracedEdit edit;
  TracedEdit lines;
  TracedCombo choice;
  TracedCombo typed;
  CListBox list;
  CButton push;
  CButton check;
  CButton first;
  CButton second;
};

// What comes out of the work.
void SayThrown(Scene& s, const std::function<void()>& work);

struct Step {
  const char* name;
  std::function<void(Scene&)> play;
};

std::vector<Step> EditSteps();
std::vector<Step> EditKeySteps();
std::vector<Step> EditStateSteps();
std::vector<Step> LineSteps();
std::vector<Step> ListSteps();
std::vector<Step> TypedListSteps();
std::vector<Step> ButtonSteps();
std::vector<Step> MenuSteps();
std::vector<Step> WindowSteps();
std::vector<Step> QueueSteps();
std::vector<Step> PlaceSteps();
std::vector<Step> PaintSteps();
std::vector<Step> DialogSteps();
std::vector<Step> DialogInputSteps();
std::vector<Step> EndingSteps();
std::vector<Step> LateEndingSteps();

std::vector<Step> FaultSteps();
std::vector<Step> LoopFaultSteps();
std::vector<Step> SystemLoopSteps();
std::vector<Step> TakenAwaySteps();
std::vector<Step> ScrollSteps();
std::vector<Step> ClipboardSteps();
std::vector<Step> CompositionSteps();
std::vector<Step> DefaultButtonSteps();
std::vector<Step> EndInCallbackSteps();

// An edit without an object of a window class.
HWND MakeBareEdit(lorv::Desktop& desktop, HWND parent, const RECT& place);

// Plays the whole script; the trace, a line an event.
std::vector<std::string> PlayBehaviour(BehaviourDriver& driver);

}  // namespace lorv_test
