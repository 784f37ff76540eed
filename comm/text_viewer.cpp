#include "comm/AdLorvComm.h"
#include "platform/ports/platform.h"

// Making a folder and showing a text file to the user, each a call of a port with the parameters that the
// suite passes.

namespace {

constexpr int kShowDefault = 10;
// The process handle is asked for and closed at once.
constexpr ULONG kKeepProcessHandle = 0x40;

}  // namespace

bool CAdLorvComm::CreatePath(LPCTSTR path) {
  lorv::Files& files = *lorv::PortsInForce().files;
  const CString folder(path == nullptr || *path == 0 ? _T("\\") : path);
  const auto facts = files.Facts(folder);
  if (facts.has_value() && facts->IsFolder()) return true;
  return files.MakeFolder(folder);
}

bool CAdLorvComm::CreateNotepadProcess(LPCTSTR path) {
  lorv::ShellStart start;
  start.verb = _T("open");
  start.file = _T("notepad.exe");
  start.parameters = path;
  start.show = kShowDefault;
  start.mask = kKeepProcessHandle;
  return lorv::PortsInForce().shell->Start(start);
}
