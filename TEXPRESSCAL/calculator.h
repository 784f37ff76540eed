#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <vector>

#include "TEXPRESSCAL/expression.h"
#include "TEXPRESSCAL/keyword_set.h"
#include "TEXPRESSCAL/map_value.h"
#include "framework/collections/string_array.h"

namespace lorv {
class FormulaEngine;
}

// Evaluates a formula with named values: holds one formula, the values of its variables, and the names
// allowed in it.
//
// Values are written into a working copy of the text as numbers (three decimals, thirds as divisions; see
// ReplExprWithOneValue), and what is left is parsed and evaluated by CExpression. So a name may be Chinese as
// long as it has a value; names without one are ASCII letters, digits and "_", and must be among the
// keywords, where they count 0. A name that is neither stops the evaluation.
//
// Units: 16-bit units; error positions count in the rewritten text, from 0. A formula holds at most
//   lorv::kMaxFormulaText units and is cut there without a word; ValidExp reports more than
//   lorv::kFormulaTextFlagged. A name holds 20 units.
// Edges: letter case never matters. A null text is the empty text.
// Result: Calculate gives 0 with an error. Its error is 0 for success, but also for a formula that is empty
//   or fails at position 0; 1 for a division by zero, a malformed argument list or a failure at position 1;
//   else the position of the failure. SQRT(-1) and its like are no errors here.
// An object belongs to one thread at a time, separate ones are independent. Only the keyword sets by class id
//   are shared by all objects: the calls that take a class id, and ClearStaticKeyWord, belong to one thread
//   at a time.
//
//   CAdExpCalculate c(_T("a+b"));  c.SetVarValue(_T("A:2;b:3"));  c.Calculate()  gives 5
class COMM_LORV_API CAdExpCalculate : public CValidParameter {
 public:
  CAdExpCalculate();
  explicit CAdExpCalculate(const CString& formula);
  // The copy calculates with the source's values (later changes are seen by both) and knows no keywords.
  CAdExpCalculate(const CAdExpCalculate& other);
  // Like copying, and the keywords come along.
  CAdExpCalculate& operator=(const CAdExpCalculate& other);
  virtual ~CAdExpCalculate();

  void SetExpr(LPCTSTR formula);
  CString GetExpr() const;
  // The text as evaluated: after Calculate with the numbers in it. New values take effect after SetExpr only.
  CString GetCalcedExpr() const;

  // True when the formula can be evaluated with every keyword counted as 1000000; else `message` says why
  // not. The formula is taken as it was set, without values, so a Chinese name is always an error here.
  bool ValidExp(CString& message) const;

  double Calculate(int& error);
  double Calculate();

  // The values in use: this object's, those it shares with the source of a copy, or a caller's map.
  const CMapValue& Values() const { return *m_pMapValue; }
  // Empties the values, also those of a caller's map. The keywords stay.
  void ClearAllValue();

  // Gives a name a value and makes it a keyword; 1. With `keepExisting` a value already there wins.
  int SetVarValue(LPCTSTR name, const double& value, bool keepExisting);
  // Copies the values over those in use; 1. A caller's map in use is overwritten and from then on owned and
  // deleted by this object: its caller must have made it with new and given it up. No keywords are made.
  int SetVarValue(const CMapValue& values);
  // Uses a caller's map, which must outlive this object and its copies; 1. Null: an own empty one. No
  // keywords are made.
  int SetVarValue(CMapValue* values);
  int SetVarValue(std::nullptr_t) { return SetVarValue(static_cast<CMapValue*>(nullptr)); }
  // Replaces all values and makes their names keywords; the count of values afterwards.
  int SetVarValue(const std::map<CString, double>& values);
  // The same from "A:1;B:2.5"; a piece that is not exactly a name and a value is passed over. An empty text
  // empties the values and gives 0.
  int SetVarValue(const CString& list);
  int SetVarValue(LPCTSTR list) { return SetVarValue(CString(list)); }

  // The names of the formula in order and with repeats. Nothing if it holds one that is no keyword.
  int SplitExprVars(CStringArray& names) const;
  int SplitExprVars(std::vector<CStrCmp>& names) const;

  // Replaces the keywords; their count.
  int SetKeyWord(const CStringArray& names);
  // Takes over, or adds, the keywords of a class id (see GetSetKeyWord); the count of the class's, 0 for an
  // empty id.
  int SetKeyWord(const CString& classId, const CStringArray& first, const CStringArray& second) const;
  int AppendKeyWord(const CString& classId, const CStringArray& first, const CStringArray& second) const;
  // The keywords of a class id, shared by all calculators: made of `first` by the first call for that id
  // (later ones leave `first` aside) and of every call's `second`. Null for an empty id. Valid until
  // ClearStaticKeyWord.
  TDefsetVars* GetSetKeyWord(const CString& classId, const CStringArray& first,
                             const CStringArray& second) const;
  const TDefsetVars& GetKeywords() const { return m_KeyWords; }
  // Forgets the keywords of all class ids, and this object's.
  void ClearStaticKeyWord() const;

  // ---- Texts that were built by substitution, freed of dead terms ----
  //
  // None of these parses: each decides by the characters beside a "0", and each differently. They keep the
  // value of such texts only, not of any formula. Signs are + - * / and \, names are ASCII letters and "_".
  // All give true.

  // Cuts zeros behind a sign or a name in the caller's buffer, with the sign, when a sign or a digit follows
  // or the text ends. A zero that the start of the text is reached from over zeros, points and "*" stays. A
  // text of which nothing is left becomes "0".
  //
  //   "a+0+b" becomes "a+b";  "0+a" and "a+0.5" stay
  bool OptimizeNumExpr(LPTSTR text) const;

  // Cuts every zero that no digit follows and no name precedes, with the sign before it and a factor behind
  // it, then clears up the signs. DIGITS BEFORE IT do not protect it: "10+a" becomes "1+a".
  //
  //   "a*0+b" becomes "a+b";  "a-0*3" becomes "a"
  bool OptimizeExpr(CString& text) const;

  // Evaluates each value of a parameter list "name:formula;name:formula" to a number, by this object's
  // variables and keywords. A formula that fails counts 0, one of more than lorv::kMaxFormulaText units is
  // cut. A piece that is no name and formula vanishes. Result: false for the empty text only.
  //
  //   "a:1+1;b" becomes "a:2"
  bool PrepareParamsValue(CString& parameters) const;

 protected:
  // Writes the values, in the order of their names, into a derived class's own buffer, which must have room
  // for the grown text. Names are matched in capitals: a small "a" in the text stays.
  void ReplExprWithVal2(LPTSTR text) const;

 private:
  friend struct CleanupRules;

  int ValidParameter(LPCTSTR name) const override;

  CString GetSplitKeyWord(LPCTSTR text) const;
  bool IsValid(LPTSTR message) const;
  bool MoveConnSymbol(CString& text) const;
  void UseOwnMap();
  void AddKeyWord(LPCTSTR name, lorv::NameWord word);
  void MakeKeyWord(TDefsetVars& set, LPCTSTR name) const;

  mutable TDefsetVars m_KeyWords;
  CMapValue* m_pMapValue = nullptr;
  bool m_bExternalMap = false;
  bool m_bTooLong = false;
  std::shared_ptr<CMapValue> owner_;  // of m_pMapValue, also when a copy shares it; null: the caller's
  // The formula, its working copy and all that speeds evaluation up. It is large and belongs to no interface.
  std::unique_ptr<lorv::FormulaEngine> engine_;

  static std::map<CString, TDefsetVars> m_mapClassIdWithKeyWord;
};

namespace lorv {

// A formula longer than this is reported by ValidExp; one unit less is cut in silence.
constexpr int kFormulaTextFlagged = 1024;

}  // namespace lorv
