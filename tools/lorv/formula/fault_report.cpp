#include "tools/lorv/formula/fault_report.h"

#include <ostream>

#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/text/display_width.h"

namespace lorv::tool {

void PrintFault(Console& console, const CString& formula, const Fault& fault) {
  console.out.flush();
  console.err << "lorv: " << Printable(fault.message) << "\n";
  if (!formula.IsEmpty()) console.err << CaretText(formula, fault.position, fault.length, console.columns);
}

void WriteFault(JsonText& json, const std::optional<Fault>& fault) {
  json.Key("error");
  if (!fault) {
    json.Null();
    return;
  }
  json.Open('{');
  json.Key("message").String(fault->message);
  json.Key("position").Number(static_cast<long long>(fault->position));
  json.Key("length").Number(static_cast<long long>(fault->length));
  json.Close('}');
}

}  // namespace lorv::tool
