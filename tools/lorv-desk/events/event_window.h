#pragma once

#include <vector>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tools/lorv-desk/grid_window.h"

namespace lorv::tool {

// A window with a table at the left and, at the right, a line for each event that the table raises in it: for
// programmers who learn what comes when. Noise (events/event_text.h) is left out.
//
// The trace shows an event once the handlers around it have ended, and keeps the last kMostLines.
class EventWindow : public GridWindow {
 public:
  static constexpr int kMostLines = 1000;
  static constexpr int kTraceWidth = 330;  // pixels at 96 dots per inch

  EventWindow();
  ~EventWindow() override;

  // Both grids, hidden; the size is that of the table. False: the desktop made no window.
  bool Open(LPCTSTR title, CSize size);
  CBcgTrueDbGridCtrl& Table() { return *table_; }
  CBCGPBasicGridCtrl& Trace() { return trace_; }

  // A click on a cell, and its editor opened and closed: for pictures that are made without a user.
  void Play(int row, int column);

 protected:
  BOOL OnCmdMsg(UINT id, int code, void* extra, AFX_CMDHANDLERINFO* info) override;
  void OnSize(UINT type, int width, int height);
  LRESULT OnShowTrace(WPARAM w, LPARAM l);
  DECLARE_MESSAGE_MAP()

 private:
  void Note(const AFX_EVENT& event);
  void PlaceGrids(int width, int height);

  CBcgTrueDbGridCtrl* table_;  // the window's
  CBCGPBasicGridCtrl trace_;
  std::vector<CString> pending_;
  int noted_ = 0;
  bool asked_ = false;  // to show what is pending
};

}  // namespace lorv::tool
