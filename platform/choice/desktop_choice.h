#pragma once

#include <optional>

#include "framework/objects/exceptions.h"
#include "framework/ports/desktop_port.h"

// Which desktop serves this process where no scope (ScopedDesktop) puts one in force.
//
// On Linux the environment says it by COMM_LORV_DESKTOP=headless or =qt, or a call does, which counts for
//   more; nothing said is headless. On Windows it is the system's own windows unless a call says headless.
// Edges: the choice is made once. What has been chosen, by a call or by the first use, stays to the
//   process's end; choosing it again does nothing, another one is refused. A refusal chooses nothing.
// Refused by DesktopFailure, thrown by pointer, whose text says why: a word that names no
//   desktop, a library of Qt's windows that is not there (it is looked for beside this library, then where
//   the system looks), no screen, a kind that this system has not, a second choice.
// Threads: any; the thread that has the desktop made is that of the user interface.
//
//   lorv::ChooseDesktop(lorv::DesktopKind::Headless);
//   lorv::ChosenKind()  gives DesktopKind::Headless
namespace lorv {

enum class DesktopKind { Headless, Qt, Windows };

class COMM_LORV_API DesktopFailure : public CResourceException {
  DECLARE_DYNAMIC(DesktopFailure)
 public:
  explicit DesktopFailure(const CString& reason) : reason_(reason) {}
  const CString& Reason() const { return reason_; }

 protected:
  CString ErrorText() const override { return reason_; }

 private:
  CString reason_;
};

// Chooses the desktop of that kind and makes it; it stays to the end of the process.
COMM_LORV_API void ChooseDesktop(DesktopKind kind);

// Nothing as long as none has been chosen or used.
COMM_LORV_API std::optional<DesktopKind> ChosenKind();

}  // namespace lorv
