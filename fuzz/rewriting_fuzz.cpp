// Property: every operation that rewrites texts answers as the slow reference does. The input is six lines:
// text, name, value, pairs, number, and two flags ("1" is set).

#include "fuzz/formula_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> lines = lorv::fuzz::LinesOf(data, size);
  lines.resize(6);
  lorv::test::RewritingCase made;
  made.text = lorv::fuzz::TextOf(lines[0]);
  made.name = lorv::fuzz::TextOf(lines[1]);
  made.value = lorv::fuzz::TextOf(lines[2]);
  made.pairs = lorv::fuzz::TextOf(lines[3]);
  made.number = lorv::fuzz::NumberOf(lines[4]);
  made.first_flag = lines[5].substr(0, 1) == "1";
  made.second_flag = lines[5].size() > 1 && lines[5][1] == '1';
  lorv::fuzz::Require(lorv::test::RewritingDifference(made), lorv::test::Shown(made));
  return 0;
}
