#include "tools/lorv/formula/fault_report.h"

#include <ostream>

#include "tools/lorv/formula/caret_text.h"
#include "tools/lorv/language/spoken_language.h"
#include "tools/lorv/screen/colours.h"
#include "tools/lorv/screen/display_width.h"

// Reports faults and doubts of a formula, to people and in JSON; the verbs that take formulas do it alike.

namespace lorv::tool {
namespace {

void Print(Console& console, const CString& formula, const Fault& fault, long long line, bool is_doubt) {
  // What came out before stands above, on a terminal that shows both streams.
  console.out.flush();
  console.err << "lorv: ";
  if (line > 0) console.err << Say("line {}: ", {std::to_string(line)});
  const std::string kind = is_doubt ? Say("warning: ") : std::string();
  console.err << Coloured(is_doubt ? Colour::kWarning : Colour::kError, kind + Printable(fault.message))
              << "\n";
  if (!formula.IsEmpty()) {
    console.err << ColouredMark(CaretText(formula, fault.position, fault.length, console.columns));
  }
}

void WriteObject(JsonText& json, const Fault& fault) {
  json.Open('{');
  json.Key("message").String(fault.message);
  json.Key("position").Number(static_cast<long long>(fault.position));
  json.Key("length").Number(static_cast<long long>(fault.length));
  json.Close('}');
}

}  // namespace

void PrintFault(Console& console, const CString& formula, const Fault& fault, long long line) {
  Print(console, formula, fault, line, false);
}

void PrintDoubts(Console& console, const CString& formula, const std::vector<Fault>& doubts, long long line) {
  for (const Fault& doubt : doubts) Print(console, formula, doubt, line, true);
}

void WriteFault(JsonText& json, const std::optional<Fault>& fault) {
  json.Key("error");
  if (fault) {
    WriteObject(json, *fault);
  } else {
    json.Null();
  }
}

void WriteDoubts(JsonText& json, const std::vector<Fault>& doubts) {
  json.Key("warnings").Open('[');
  for (const Fault& doubt : doubts) WriteObject(json, doubt);
  json.Close(']');
}

}  // namespace lorv::tool
