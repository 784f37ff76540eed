#include "tools/lorv/guarded_run.h"

#include <array>
#include <ostream>

#include "framework/objects/exceptions.h"

// The one place where failures of a program end, for the tool and the desktop example. Exceptions of the
// standard library and those of the suite's framework, which are thrown by pointer and have to be deleted,
// come out as one kind of message.

namespace lorv::tool {
namespace {

constexpr int kMessageRoom = 260;

std::string MessageOf(CException& failure) {
  std::array<TCHAR, kMessageRoom> text{};
  failure.GetErrorMessage(text.data(), kMessageRoom);
  return CString(static_cast<LPCTSTR>(text.data())).ToUtf8();
}

}  // namespace

int GuardedRun(const std::string& program, Console& console, const std::function<int()>& work) {
  int code = kBadInput;
  const auto report = [&](const std::string& what) {
    // What was done before the failure stands above it.
    console.out.flush();
    console.err << program << ": " << what << "\n";
  };
  try {
    code = work();
  } catch (const std::exception& wrong) {
    report(wrong.what());
  } catch (CException* failure) {
    report(MessageOf(*failure));
    failure->Delete();
  }
  console.out.flush();
  // A full disk behind standard output shows only here; the work itself saw a stream that took all.
  if (console.out) return code;
  console.err << program << ": the output could not be written\n";
  return kBadInput;
}

}  // namespace lorv::tool
