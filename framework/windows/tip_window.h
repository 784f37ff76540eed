#pragma once

#include <memory>

#include "framework/drawing/device_context.h"
#include "framework/windows/window.h"

namespace lorv {

// What a tip shows and in which colours; -1 is the system's colour of tips.
struct ToolTipParameters {
  bool draws_icon = true;
  bool draws_description = true;
  bool draws_separator = true;
  COLORREF text = static_cast<COLORREF>(-1);
  COLORREF border = static_cast<COLORREF>(-1);
  COLORREF fill = static_cast<COLORREF>(-1);
};

// TTM_ACTIVATE and TTN_SHOW.
constexpr UINT kActivateTip = 1025;
constexpr UINT kTipShows = static_cast<UINT>(-521);

}  // namespace lorv

// A tool tip: a label, its window text, with a description below it and room for an icon at the left.
//
// When it is shown it notifies its parent by a notification of code -521, which comes back to the tip: it
//   takes the size of what it shows then. Message 1025 with 0 makes it hide and stay so, with 1 it may be
//   shown.
// Units: pixels. The margin lies around all, the inner margin around the text and between its parts.
// Edges: the parent may be null; without a window nothing is shown or drawn.
// One thread, that of the user interface, but for the drawing steps of a class that paints by another one;
//   parameters, margin and description are set while no painting runs.
//
//   CBCGPToolTipCtrl tip;  tip.Create(&parent);  tip.SetWindowText(_T("KL1"));  tip.ShowAt(CPoint(90, 20));
class COMM_LORV_API CBCGPToolTipCtrl : public CWnd {
 public:
  BOOL Create(CWnd* parent, DWORD style = 0);
  using CWnd::Create;

  void SetParameters(const lorv::ToolTipParameters& parameters) { parameters_ = parameters; }
  const lorv::ToolTipParameters& GetParameters() const { return parameters_; }
  void SetDescription(const CString& description) { description_ = description; }
  const CString& GetDescription() const { return description_; }
  void SetMargin(LPCRECT margin) { margin_ = CRect(margin); }
  void GetMargin(LPRECT margin) const { *margin = margin_; }
  void Activate(BOOL active) { SendMessage(lorv::kActivateTip, active != 0 ? 1 : 0); }
  bool IsActive() const { return active_; }

  // Its left top corner on the screen; nothing for a tip that is not active.
  void ShowAt(CPoint screen);
  void Hide() { ShowWindow(SW_HIDE); }

  // None here.
  virtual CSize GetIconSize() { return CSize(0, 0); }
  // The steps of drawing, in `rect`. Those of texts give their size, and draw nothing when only that is asked
  // for. A background may choose other colours for what is drawn on it.
  virtual void OnFillBackground(CDC* dc, CRect rect, COLORREF& text, COLORREF& line);
  virtual void OnDrawBorder(CDC* dc, CRect rect, COLORREF line);
  virtual CSize OnDrawLabel(CDC* dc, CRect rect, BOOL only_size);
  virtual CSize OnDrawDescription(CDC* dc, CRect rect, BOOL only_size);
  virtual void OnDrawSeparator(CDC* dc, int left, int right, int y);

  DECLARE_DYNAMIC(CBCGPToolTipCtrl)

 protected:
  static constexpr int kInnerAcross = 6;
  static constexpr int kInnerDown = 4;

  lorv::WindowKind PeerKind() const override { return lorv::WindowKind::Popup; }
  // Takes over what drawing needs of the window and the desktop, which only their thread may ask.
  virtual void TakeLooks();
  const std::shared_ptr<lorv::WindowPeer>& Peer() const { return peer_; }
  bool HasDescription() const { return parameters_.draws_description && !description_.IsEmpty(); }
  bool HasIcon(CSize icon) const { return parameters_.draws_icon && icon.cx > 0 && icon.cy > 0; }
  // A colour of the parameters, or the system's.
  COLORREF LineColour() const { return Known(parameters_.border, system_text_); }
  COLORREF TextColour() const { return Known(parameters_.text, system_text_); }
  // The part of the client area that is neither margin nor inner margin.
  CRect TextRect(const CRect& client) const;
  // All but the icon, which has its place at the left of the text.
  void DrawAround(CDC* dc, const CRect& client, CSize icon);

  void OnShow(NMHDR* header, LRESULT* result);
  void OnPaint();
  LRESULT OnActivateTip(WPARAM w, LPARAM l);

  DECLARE_MESSAGE_MAP()

 private:
  static COLORREF Known(COLORREF wanted, COLORREF system) {
    return wanted == static_cast<COLORREF>(-1) ? system : wanted;
  }
  CSize NeededSize();

  lorv::ToolTipParameters parameters_;
  CString description_;
  CRect margin_ = CRect(2, 2, 2, 2);
  bool active_ = true;
  CString label_;  // as it was when it was last taken over
  CFont font_;
  COLORREF system_text_ = 0;
  COLORREF system_fill_ = RGB(255, 255, 225);
  std::shared_ptr<lorv::WindowPeer> peer_;
};
