// What crosses the border between a program and the installed library: texts both ways, failure objects
// thrown inside the library and freed outside, and calls of the library into a class of the program.
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "TEXPRESSCAL/express.h"
#include "framework/objects/exceptions.h"
#include "framework/windows/window.h"
#include "platform/choice/desktop_choice.h"
#include "tables/xarray_db.h"

namespace {

int failures = 0;

void Check(bool good, const char* what) {
  if (good) return;
  std::printf("wrong: %s\n", what);
  ++failures;
}

void TextsCrossBothWays() {
  CString text = CString::FromUtf8(std::string("\xE5\xA2\x99") + std::string(500, 'x'));
  text.Append(_T("KL"));
  const std::string bytes = text.ToUtf8();
  Check(bytes.size() == 505 && text.GetLength() == 503, "a text from a std::string and back");
}

void FailureObjectsCross() {
  bool caught = false;
  try {
    AfxThrowInvalidArgException();
  } catch (CException* failure) {
    TCHAR message[100] = {};
    caught = failure->GetErrorMessage(message, 100) != 0 && message[0] != 0;
    failure->Delete();
  }
  Check(caught, "a failure thrown inside the library, caught by its base class");
}

class OnlyNamesOfMine : public CValidParameter {
 public:
  int ValidParameter(LPCTSTR name) const override { return CString(name) == _T("MINE") ? 1 : 0; }
};

void TheLibraryCallsBack() {
  OnlyNamesOfMine resolver;
  CExpression mine;
  CExpression other;
  mine.m_pValidParameter = &resolver;
  other.m_pValidParameter = &resolver;
  Check(mine.ChangeExpression(_T("mine+1")) == -1, "a name that the program allows");
  Check(other.ChangeExpression(_T("other+1")) >= 0, "a name that the program refuses");
}

// Values are made and ended in the program, by calls of the system's library for automation.
void TablesHoldValuesOfTheProgram() {
  CXArrayDBToArray table;
  table.ReDim(2, 1);
  table.SetValue(1, 0, _variant_t(_T("KL1")));
  const _bstr_t found(table.GetValue(1, 0));
  Check(table.FindVal(0, _variant_t(_T("kl1"))) == 1 && found.length() == 3, "a text in a table");
}

// In memory, as there need not be a screen; or of the kind that the environment names.
void WindowsAreMade() {
  const char* const named = std::getenv("COMM_LORV_DESKTOP");
  if (named == nullptr) lorv::ChooseDesktop(lorv::DesktopKind::Headless);
  CWnd window;
  window.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW, CRect(10, 10, 210, 110), nullptr, 0);
  Check(window.m_hWnd != nullptr && CWnd::FromHandle(window.m_hWnd) == &window, "a window");
  const bool qt = named != nullptr && std::string(named) == "qt";
  Check((lorv::ChosenKind() == lorv::DesktopKind::Qt) == qt, "windows of the kind that is asked for");
}

}  // namespace

int main() {
  TextsCrossBothWays();
  FailureObjectsCross();
  TheLibraryCallsBack();
  TablesHoldValuesOfTheProgram();
  WindowsAreMade();
  std::printf("%d wrong\n", failures);
  return failures == 0 ? 0 : 1;
}
