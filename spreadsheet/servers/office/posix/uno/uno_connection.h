#pragma once

#include <com/sun/star/frame/XDesktop2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>
#include <utility>

#include "spreadsheet/servers/office/office_port.h"
#include "spreadsheet/servers/office/posix/uno/call_watch.h"
#include "spreadsheet/servers/office/posix/uno/office_process.h"
#include "spreadsheet/servers/office/posix/uno/pipe_signal.h"

namespace lorv::office {

// The office that runs for a bridge, and what every call to it goes through. It is shared by the bridge and
// all that was opened in it, and ends with the last of them.
class UnoConnection {
 public:
  // Starts the office and waits for its answer; OfficeFault where there is none within the limit.
  explicit UnoConnection(const OfficeStart& start);
  UnoConnection(const UnoConnection&) = delete;
  UnoConnection& operator=(const UnoConnection&) = delete;
  ~UnoConnection();

  // Runs a body that calls the office, within the limit; what the office raises becomes OfficeFault.
  template <class Body>
  auto Call(Body&& body) {
    const Scope scope(watch_);
    try {
      return std::forward<Body>(body)();
    } catch (const com::sun::star::uno::Exception& raised) {
      Refuse(raised);
    }
  }

  // Valid in the body of a Call.
  const com::sun::star::uno::Reference<com::sun::star::frame::XDesktop2>& Desktop() const { return desktop_; }
  pid_t ProcessId() const { return process_.Id(); }

 private:
  // Held during every call: the signal of a broken pipe is held back, and the time is watched.
  struct Scope {
    explicit Scope(CallWatch& watch) : watched(watch) {}
    PipeSignalHeld held;
    CallWatch::Scope watched;
  };
  bool Answers();
  void Connect(std::chrono::steady_clock::time_point end);
  bool Resolve();
  [[noreturn]] void Refuse(const com::sun::star::uno::Exception& raised);

  OfficeProcess process_;
  CallWatch watch_;
  com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
  com::sun::star::uno::Reference<com::sun::star::frame::XDesktop2> desktop_;
};

using ConnectionRef = std::shared_ptr<UnoConnection>;

}  // namespace lorv::office
