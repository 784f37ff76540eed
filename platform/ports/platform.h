#pragma once

#include "framework/native/export.h"
#include "platform/ports/clock.h"
#include "platform/ports/code_page.h"
#include "platform/ports/dialogs.h"
#include "platform/ports/files.h"
#include "platform/ports/mail.h"
#include "platform/ports/printing.h"
#include "platform/ports/process.h"
#include "platform/ports/settings.h"
#include "platform/ports/shell.h"
#include "platform/ports/suite.h"

// The set of ports in force: all that the library asks of an operating system goes through it.
//
// The system's own ports are in force from the start. A test, or a host with ways of its own, puts others in
//   their place for a scope.
// Reading is for any thread; scopes begin and end on one thread, while no other works with the ports.
//
//   HeadlessPlatform machine;  ScopedPlatform scope(machine.Ports());
//   PortsInForce().clock->LocalTime()  gives the machine's time
namespace lorv {

// The ports are not owned and must live as long as they are in force.
struct Platform {
  CodePage* code_page = nullptr;
  Files* files = nullptr;
  Clock* clock = nullptr;
  Process* process = nullptr;
  Settings* settings = nullptr;
  Dialogs* dialogs = nullptr;
  Suite* suite = nullptr;
  Shell* shell = nullptr;
  Mail* mail = nullptr;
  Printing* printing = nullptr;
};

COMM_LORV_API const Platform& PortsInForce();

// Puts ports in force until its end; a null one leaves what was in force before. Scopes end in the reverse
// order of their beginning.
class COMM_LORV_API ScopedPlatform {
 public:
  explicit ScopedPlatform(const Platform& ports);
  ScopedPlatform(const ScopedPlatform&) = delete;
  ScopedPlatform& operator=(const ScopedPlatform&) = delete;
  ~ScopedPlatform();

 private:
  Platform ports_;
  const Platform* before_;
};

}  // namespace lorv
