#include "spreadsheet/servers/com/win32/com_system.h"

#include <algorithm>
#include <array>
#include <string>

#include <commdlg.h>
#include <objbase.h>
#include <shellapi.h>

#include "platform/ports/platform.h"
#include "spreadsheet/servers/com/win32/com_object.h"
#include "spreadsheet/servers/com/win32/com_pointer.h"
#include "spreadsheet/servers/com/win32/com_running.h"

// What the exchange asks of Windows besides the programs' objects: classes and running programs by COM,
// associations, command lines and dialogs by the shell. Failures are answers (nothing, null, an empty text),
// as most of them only mean that a program is not installed.

namespace lorv::com {
namespace {

// The system's question for a program knows no longer paths.
constexpr DWORD kPathRoom = 260;

}  // namespace

std::optional<GUID> ComSystem::ClassOf(LPCTSTR program_id) {
  CLSID class_id = {};
  if (FAILED(CLSIDFromProgID(program_id, &class_id))) return std::nullopt;
  return class_id;
}

AutoRef ComSystem::CreateDispatch(LPCTSTR program_id) {
  const auto class_id = ClassOf(program_id);
  ComPointer<IDispatch> object;
  // A program starts as a process of its own; tests enter servers of this one, and either will do.
  if (!class_id || FAILED(CoCreateInstance(*class_id, nullptr, CLSCTX_ALL, IID_IDispatch,
                                           reinterpret_cast<void**>(object.Receive())))) {
    return nullptr;
  }
  return Wrapped(object.Get());
}

AutoRef ComSystem::ActiveObject(const GUID& class_id) {
  ComPointer<IUnknown> active;
  ComPointer<IDispatch> object;
  if (FAILED(GetActiveObject(class_id, nullptr, active.Receive())) || !active) return nullptr;
  // What is entered as active need not answer automation.
  if (FAILED(active->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(object.Receive()))))
    return nullptr;
  return Wrapped(object.Get());
}

std::unique_ptr<RunningObjects> ComSystem::EnumRunning() {
  return WalkRunningObjects();
}

void ComSystem::NudgeWindow(LPCTSTR window_class, UINT message) {
  const HWND window = FindWindowW(window_class, nullptr);
  if (window != nullptr) SendMessageW(window, message, 0, 0);
}

CString ComSystem::ProgramOfFile(const CString& file) {
  std::array<TCHAR, kPathRoom> program{};
  // Above 32: found.
  const auto found = reinterpret_cast<INT_PTR>(::FindExecutableW(file, nullptr, program.data()));
  return found > 32 ? CString(LPCTSTR{program.data()}) : CString();
}

CString ComSystem::ShortPath(const CString& path) {
  std::array<TCHAR, kPathRoom> text{};
  // Not every volume keeps short names; the long one is tried as it stands.
  const DWORD length = GetShortPathNameW(path, text.data(), kPathRoom - 1);
  return length > 0 && length < kPathRoom ? CString(LPCTSTR{text.data()}) : path;
}

void ComSystem::RunCommand(const CString& command, int show) {
  // The system's old call for commands takes narrow text only.
  const std::string narrow = PortsInForce().code_page->ToNarrow(command.View());
  WinExec(narrow.c_str(), static_cast<UINT>(show));
}

CString ComSystem::NewGuid() {
  GUID id = {};
  LPOLESTR text = nullptr;
  if (FAILED(CoCreateGuid(&id)) || FAILED(StringFromCLSID(id, &text))) return {};
  const CString name(LPCTSTR{text});
  CoTaskMemFree(text);
  return name;
}

void ComSystem::Sleep(unsigned milliseconds) {
  ::Sleep(milliseconds);
}

void ComSystem::Trace(const CString& text) {
  OutputDebugStringW(text);
}

std::optional<CString> ComSystem::AskForFile(const FileQuestion& question) {
  // Wider than the other room: the user may choose a file in any folder.
  constexpr DWORD kLongPathRoom = 4096;
  std::array<TCHAR, kLongPathRoom> path{};
  const int length = std::min(question.default_name.GetLength(), static_cast<int>(kLongPathRoom) - 1);
  std::copy_n(question.default_name.GetString(), length, path.begin());
  // The system wants zero units between the parts of the filter.
  CString filter = question.filter;
  for (int i = 0; i < filter.GetLength(); ++i) {
    if (filter[i] == _T('|')) filter.SetAt(i, 0);
  }
  OPENFILENAMEW dialog = {};
  dialog.lStructSize = sizeof(dialog);
  dialog.hwndOwner = GetActiveWindow();
  dialog.lpstrFilter = filter.GetString();
  dialog.lpstrFile = path.data();
  dialog.nMaxFile = kLongPathRoom;
  dialog.lpstrDefExt = question.default_extension;
  dialog.Flags = question.flags;
  // Cancelled, or failed: there is no file in both cases.
  if (GetOpenFileNameW(&dialog) == FALSE) return std::nullopt;
  return CString(LPCTSTR{path.data()});
}

void ComSystem::BeginWait() {
  before_ = SetCursor(LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_WAIT)));
}

void ComSystem::EndWait() {
  SetCursor(before_);
}

}  // namespace lorv::com
