// Property: parser and evaluator answer as the slow reference does, with a name resolver and without. The
// input is the formula.

#include "fuzz/formula_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const std::vector<lorv::reference::Text> kNames = {_T("A"), _T("B"), _T("AB"), _T("A_1"), _T("E3")};
  const lorv::reference::Text formula =
      lorv::fuzz::TextOf(std::string(reinterpret_cast<const char*>(data), size));
  for (const bool resolves : {false, true}) {
    lorv::fuzz::Require(lorv::test::ParserDifference(formula, resolves, kNames), lorv::test::Shown(formula));
  }
  return 0;
}
