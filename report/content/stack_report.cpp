#include "report/content/stack_report.h"

#include <string>

#include "platform/ports/platform.h"

// Asks the suite's tracing module for a report of the stack, if that module is loaded. Its request is a
// record of fixed layout and its entry is known by number.

namespace lorv {
namespace {

constexpr LPCTSTR kModule = _T("TTraceRpt.x64");
constexpr int kEntry = 28;
constexpr std::uint32_t kRequestKind = 6;
constexpr std::uint32_t kRequestFlags = 4096;

std::string Narrow(LPCTSTR text) {
  return text == nullptr ? std::string() : PortsInForce().code_page->ToNarrow(text);
}

}  // namespace

void AskStackReport(LPCTSTR signature, LPCTSTR file, int line) {
  const std::string narrow_signature = Narrow(signature);
  const std::string narrow_file = Narrow(file);
  StackRequest request{};
  request.size = sizeof(request);
  request.kind = kRequestKind;
  request.flags = kRequestFlags;
  // The texts live until the call has returned.
  request.signature = narrow_signature.c_str();
  request.source_file = narrow_file.c_str();
  request.source_line = line;
  PortsInForce().process->CallLoadedModule(kModule, kEntry, &request);
}

}  // namespace lorv
