#pragma once

#include <memory>

#include "framework/ports/desktop_port.h"

class QWidget;

// The desktop that shows windows through Qt 6 widgets. A library of its own (libComm_LORV_qt): the core is
// used without Qt, and a program that wants windows on the screen puts this one in force.
//
// What a window class does arrives at the widgets by number (WindowPeer::Default); what the user does at the
//   widgets arrives at the window class as messages, in the platform's order.
// Units: pixels of the screen, where the first desktop made the QApplication; else as Qt counts them.
// Edges: where Qt has no answer docs/windows-qt.md says what is given instead.
// The first desktop makes the QApplication if the program has none; that one stays to the end of the process.
// Where no screen is named in the environment, or the program has an application object without windows,
//   CResourceException is raised by pointer.
// Threads: that of the QApplication, but for what the ports free for any thread. One desktop at a time.
//
//   const auto desktop = lorv::MakeQtDesktop();  const lorv::ScopedDesktop scope(*desktop);
namespace lorv {

COMM_LORV_API std::unique_ptr<Desktop> MakeQtDesktop();

// The widget behind a window of that desktop, so that a Qt program can place it among its own; null if there
// is none. It stays the window's: the program never deletes it.
COMM_LORV_API QWidget* QtWidgetOf(HWND window);

}  // namespace lorv

// For loading this library by name at run time: a new desktop, the caller's to delete. Null where
// MakeQtDesktop raises.
extern "C" COMM_LORV_API lorv::Desktop* LorvNewQtDesktop();
