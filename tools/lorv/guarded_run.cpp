#include "tools/lorv/guarded_run.h"

#include <array>
#include <ostream>

#include "framework/objects/exceptions.h"

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
  const auto tell = [&](const std::string& what) {
    console.out.flush();
    console.err << program << ": " << what << "\n";
  };
  try {
    code = work();
  } catch (const std::exception& wrong) {
    tell(wrong.what());
  } catch (CException* failure) {
    tell(MessageOf(*failure));
    failure->Delete();
  }
  console.out.flush();
  if (console.out) return code;
  console.err << program << ": the output could not be written\n";
  return kBadInput;
}

}  // namespace lorv::tool
