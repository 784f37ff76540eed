#include "TEXPRESSCAL/express.h"
#include "tests/reference/formula_difference.h"
#include "tests/reference/reference_rewriting.h"

namespace lorv::test {

namespace {

// Room for the growth that the ceilings of a hundred and of five hundred replacements allow.
class Buffer {
 public:
  Buffer(const Text& text, std::size_t growth) : units_(text.begin(), text.end()) {
    units_.resize(text.size() + growth + 1);
  }
  TCHAR* Data() { return units_.data(); }
  Text Content() const { return Text(units_.data()); }

 private:
  std::vector<TCHAR> units_;
};

std::string Differ(const char* what, const Text& library, const Text& reference) {
  if (library == reference) return {};
  return std::string(what) + ": library \"" + Shown(library) + "\", reference \"" + Shown(reference) + "\"";
}

std::string Differ(const char* what, long long library, long long reference) {
  if (library == reference) return {};
  return std::string(what) + ": library " + std::to_string(library) + ", reference " +
         std::to_string(reference);
}

std::string InBuffer(const RewritingCase& made) {
  Buffer plain(made.text, 100 * made.value.size());
  Text expected = made.text;
  int count = ReplaceStr(plain.Data(), made.name.c_str(), made.value.c_str(), made.first_flag);
  std::string difference =
      Differ("ReplaceStr count", count,
             reference::ReplacePlain(expected, 0, made.name, made.value, made.first_flag));
  if (difference.empty()) difference = Differ("ReplaceStr", plain.Content(), expected);
  if (!difference.empty()) return difference;

  Buffer edged(made.text, 100 * made.value.size());
  expected = made.text;
  count = ReplExprWithValue(edged.Data(), made.name.c_str(), made.value.c_str(), made.first_flag);
  difference = Differ("ReplExprWithValue count", count,
                      reference::ReplExprWithValue(expected, made.name, made.value, made.first_flag));
  if (difference.empty()) difference = Differ("ReplExprWithValue", edged.Content(), expected);
  if (!difference.empty()) return difference;

  Buffer number(made.text, 500 * 65);
  expected = made.text;
  ReplExprWithOneValue(number.Data(), made.name.c_str(), made.number);
  reference::ReplExprWithOneValue(expected, made.name, made.number);
  return Differ("ReplExprWithOneValue", number.Content(), expected);
}

std::string ByScan(const RewritingCase& made) {
  if (made.text.size() > 1023) return {};
  CString library(made.text);
  Text expected = made.text;
  const bool result = ReplaceExprWithExpr(library, made.pairs.c_str(), made.first_flag, made.second_flag);
  std::string difference =
      Differ("ReplaceExprWithExpr result", result ? 1 : 0,
             reference::ReplaceExprWithExpr(expected, made.pairs, made.first_flag, made.second_flag) ? 1 : 0);
  if (!difference.empty()) return difference;
  return Differ("ReplaceExprWithExpr", Text(library.View()), expected);
}

std::string Annotations(const RewritingCase& made) {
  CString library(made.text);
  Text expected = made.text;
  CStringArray names;
  std::vector<CTwoStrValue> pairs;
  std::vector<Text> expected_names;
  std::vector<reference::Pair> expected_pairs;
  const bool result = SplitMidBracketKey(library, names, pairs);
  const bool expected_result = reference::SplitMidBracketKey(expected, expected_names, expected_pairs);
  std::string difference = Differ("SplitMidBracketKey result", result ? 1 : 0, expected_result ? 1 : 0);
  if (difference.empty()) difference = Differ("SplitMidBracketKey", Text(library.View()), expected);
  Text listed;
  Text expected_listed;
  for (int i = 0; i < static_cast<int>(names.GetSize()); ++i) listed += Text(names.GetAt(i)) + _T(",");
  for (const CTwoStrValue& pair : pairs) {
    listed += Text(pair.strFirst.View()) + _T("=") + Text(pair.strSecond.View()) + _T(";");
  }
  for (const Text& name : expected_names) expected_listed += name + _T(",");
  for (const reference::Pair& pair : expected_pairs)
    expected_listed += pair.first + _T("=") + pair.second + _T(";");
  if (difference.empty()) difference = Differ("SplitMidBracketKey names", listed, expected_listed);
  return difference;
}

std::string Maps(const RewritingCase& made) {
  CMapValue library;
  reference::ValueMap expected;
  const int count = StrValueToMap(made.pairs.c_str(), library);
  std::string difference = Differ("StrValueToMap", count, reference::StrValueToMap(made.pairs, expected));
  if (!difference.empty()) return difference;
  library[made.name.c_str()] = made.number;
  expected[reference::Upper(reference::FirstTwenty(made.name))] = made.number;
  return Differ("MapValueToStr", Text(MapValueToStr(library).View()), reference::MapValueToStr(expected));
}

}  // namespace

RewritingCase MakeRewritingCase(ChoiceSource& source) {
  RewritingCase made;
  made.text = MakeAnyFormula(source);
  while (source.OneIn(3)) {
    const std::size_t at = source.Below(made.text.size() + 1);
    made.text.insert(at, source.OneIn(2) ? _T("[1]") : _T("[a]"));
  }
  made.name = MakeName(source);
  made.value = source.OneIn(2) ? MakeName(source) : MakeFormula(source, 1);
  made.number = MakeValue(source);
  const std::size_t pairs = source.Below(5);
  for (std::size_t i = 0; i < pairs; ++i) {
    made.pairs += MakeName(source) + (source.OneIn(12) ? _T("") : _T(":")) +
                  (source.OneIn(3) ? MakeName(source) : MakeFormula(source, 1)) + _T(";");
  }
  made.first_flag = source.OneIn(2);
  made.second_flag = source.OneIn(2);
  return made;
}

std::string RewritingDifference(const RewritingCase& made) {
  std::string difference = InBuffer(made);
  if (difference.empty()) difference = ByScan(made);
  if (difference.empty()) difference = Annotations(made);
  if (difference.empty()) difference = Maps(made);
  return difference;
}

}  // namespace lorv::test
