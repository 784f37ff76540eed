#pragma once

#include <map>
#include <string>
#include <vector>

#include "TEXPRESSCAL/express.h"
#include "tests/reference/reference_calculator.h"
#include "tests/support/print.h"

// The library's calculator and rewriting, and the reference's, behind one set of calls: for suites and random
// comparisons that run on both.
namespace lorv::test {

inline reference::Text RefText(const CString& text) {
  return reference::Text(text.View());
}

inline std::vector<reference::Text> RefTexts(const std::vector<CString>& texts) {
  std::vector<reference::Text> out;
  for (const CString& text : texts) out.push_back(RefText(text));
  return out;
}

inline CStringArray StringArray(const std::vector<CString>& texts) {
  CStringArray out;
  for (const CString& text : texts) out.Add(text);
  return out;
}

class LibraryCalculator {
 public:
  void SetExpr(const CString& text) { calculator_.SetExpr(text); }
  int Set(const CString& name, double value, bool keep = false) {
    return calculator_.SetVarValue(name.GetString(), value, keep);
  }
  int SetList(const CString& list) { return calculator_.SetVarValue(list); }
  int SetMap(const std::map<CString, double>& map) { return calculator_.SetVarValue(map); }
  int SetKeyWord(const std::vector<CString>& names) { return calculator_.SetKeyWord(StringArray(names)); }
  double Calculate(int& error) { return calculator_.Calculate(error); }
  bool ValidExp(CString& message) { return calculator_.ValidExp(message); }
  void ClearAllValue() { calculator_.ClearAllValue(); }
  CString Expr() const { return calculator_.GetExpr(); }
  CString Calced() const { return calculator_.GetCalcedExpr(); }
  std::vector<CString> Vars() const {
    std::vector<CStrCmp> names;
    calculator_.SplitExprVars(names);
    std::vector<CString> out;
    for (const CStrCmp& name : names) out.emplace_back(static_cast<LPCTSTR>(name));
    return out;
  }
  std::vector<CString> KeyWords() const {
    std::vector<CString> out;
    for (const CStrCmp& name : calculator_.GetKeywords()) out.emplace_back(static_cast<LPCTSTR>(name));
    return out;
  }

 private:
  CAdExpCalculate calculator_;
};

class ReferenceCalculator {
 public:
  void SetExpr(const CString& text) { calculator_.SetExpr(RefText(text)); }
  int Set(const CString& name, double value, bool keep = false) {
    return calculator_.SetVarValue(RefText(name), value, keep);
  }
  int SetList(const CString& list) { return calculator_.SetVarValue(RefText(list)); }
  int SetMap(const std::map<CString, double>& map) {
    std::map<reference::Text, double> values;
    for (const auto& [name, value] : map) values[RefText(name)] = value;
    return calculator_.SetVarValue(values);
  }
  int SetKeyWord(const std::vector<CString>& names) { return calculator_.SetKeyWord(RefTexts(names)); }
  double Calculate(int& error) { return calculator_.Calculate(error); }
  bool ValidExp(CString& message) {
    reference::Text text;
    const bool valid = calculator_.ValidExp(text);
    message = CString(text);
    return valid;
  }
  void ClearAllValue() { calculator_.ClearAllValue(); }
  CString Expr() const { return CString(calculator_.GetExpr()); }
  CString Calced() const { return CString(calculator_.GetCalcedExpr()); }
  std::vector<CString> Vars() const { return Strings(calculator_.SplitExprVars(), 20); }
  std::vector<CString> KeyWords() const { return Strings(calculator_.GetKeywords(), 20); }

 private:
  static std::vector<CString> Strings(const std::vector<reference::Text>& texts, std::size_t cut) {
    std::vector<CString> out;
    for (const reference::Text& text : texts) out.emplace_back(TextView(text).substr(0, cut));
    return out;
  }

  reference::Calculator calculator_;
};

// A caller's buffer with room for every growth these operations allow.
class RoomyBuffer {
 public:
  explicit RoomyBuffer(const CString& text) : units_(static_cast<std::size_t>(text.GetLength()) + 70000) {
    for (int i = 0; i < text.GetLength(); ++i) units_[static_cast<std::size_t>(i)] = text[i];
  }
  LPTSTR Data() { return units_.data(); }
  CString Text() const { return CString(units_.data()); }

 private:
  std::vector<TCHAR> units_;
};

struct LibraryRewriting {
  static int Replace(CString& text, const CString& old, const CString& fresh, bool all) {
    RoomyBuffer buffer(text);
    const int count = ReplaceStr(buffer.Data(), old, fresh, all);
    text = buffer.Text();
    return count;
  }
  static int WithValue(CString& text, const CString& name, const CString& value, bool all) {
    RoomyBuffer buffer(text);
    const int count = ReplExprWithValue(buffer.Data(), name, value, all);
    text = buffer.Text();
    return count;
  }
  static void WithOneValue(CString& text, const CString& name, double value) {
    RoomyBuffer buffer(text);
    ReplExprWithOneValue(buffer.Data(), name, value);
    text = buffer.Text();
  }
  static bool WithExpr(CString& text, const CString& pairs, bool bracket, bool multiply) {
    return ReplaceExprWithExpr(text, pairs.GetString(), bracket, multiply);
  }
  static bool SplitBrackets(CString& text, std::vector<CString>& names, std::vector<CString>& inner) {
    CStringArray array = StringArray(names);
    std::vector<CTwoStrValue> pairs;
    const bool result = SplitMidBracketKey(text, array, pairs);
    names.clear();
    for (int i = 0; i < static_cast<int>(array.GetSize()); ++i) names.push_back(array.GetAt(i));
    for (const CTwoStrValue& pair : pairs) inner.push_back(pair.strFirst + _T("=") + pair.strSecond);
    return result;
  }
  // The map's text form and its text read again.
  static int MapRoundTrip(const CString& text, CString& out) {
    CMapValue map;
    map[_T("left over")] = 1;
    const int count = StrValueToMap(text, map);
    out = MapValueToStr(map);
    return count;
  }
};

struct ReferenceRewriting {
  static int Replace(CString& text, const CString& old, const CString& fresh, bool all) {
    reference::Text units = RefText(text);
    const int count = reference::ReplacePlain(units, 0, RefText(old), RefText(fresh), all);
    text = CString(units);
    return count;
  }
  static int WithValue(CString& text, const CString& name, const CString& value, bool all) {
    reference::Text units = RefText(text);
    const int count = reference::ReplExprWithValue(units, RefText(name), RefText(value), all);
    text = CString(units);
    return count;
  }
  static void WithOneValue(CString& text, const CString& name, double value) {
    reference::Text units = RefText(text);
    reference::ReplExprWithOneValue(units, RefText(name), value);
    text = CString(units);
  }
  static bool WithExpr(CString& text, const CString& pairs, bool bracket, bool multiply) {
    reference::Text units = RefText(text);
    const bool result = reference::ReplaceExprWithExpr(units, RefText(pairs), bracket, multiply);
    text = CString(units);
    return result;
  }
  static bool SplitBrackets(CString& text, std::vector<CString>& names, std::vector<CString>& inner) {
    reference::Text units = RefText(text);
    std::vector<reference::Text> array = RefTexts(names);
    std::vector<reference::Pair> pairs;
    const bool result = reference::SplitMidBracketKey(units, array, pairs);
    text = CString(units);
    names.clear();
    for (const reference::Text& name : array) names.emplace_back(TextView(name));
    for (const reference::Pair& pair : pairs) {
      const reference::Text line = pair.first + _T("=") + pair.second;
      inner.emplace_back(TextView(line));
    }
    return result;
  }
  static int MapRoundTrip(const CString& text, CString& out) {
    reference::ValueMap map;
    const int count = reference::StrValueToMap(RefText(text), map);
    out = CString(reference::MapValueToStr(map));
    return count;
  }
};

}  // namespace lorv::test
