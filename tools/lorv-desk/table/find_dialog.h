#pragma once

#include "framework/windows/dialog.h"
#include "grid/find/grid_find.h"

namespace lorv::tool {

// The controls of the dialog.
enum FindControl : UINT {
  kFindText = 2001,
  kReplaceText = 2002,
  kWholeCell = 2003,
  kMatchCase = 2004,
  kSelectionOnly = 2005,
  kReplaceOne = 2006,
  kReplaceAll = 2007,
  kFindOutcome = 2008,
  kPattern = 2009
};

extern const DialogTemplate kFindForm;

// Finds and replaces in a grid that stays in use beside it: a small window without a mode.
//
// What was typed stays for the next time it is shown. The search must live as long as the object.
class FindDialog : public CDialog {
 public:
  explicit FindDialog(GridFind& find) : find_(find) {}

  // Shows it over its owner, or brings it forward; the focus goes to one of the two texts. False: the desktop
  // made no window.
  bool Show(CWnd& owner, bool with_replacement);

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;      // finds the next one
  void OnCancel() override;  // goes away
  void OnReplaceOne();
  void OnReplaceAll();
  DECLARE_MESSAGE_MAP()

 private:
  CString TextAt(UINT control) const;
  bool IsTicked(UINT control) const;
  void TakeOptions();
  void Report(const CString& outcome);
  void ReportNothing();
  void ReportCount(const ReplaceCount& count);

  GridFind& find_;
  bool fresh_ = true;  // shown, and nothing searched since: the selection is the one to search
};

}  // namespace lorv::tool
