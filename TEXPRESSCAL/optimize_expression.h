#pragma once

#include "TEXPRESSCAL/map_value.h"
#include "framework/collections/string_array.h"

// The functions that the simplifier folds ("max", "min", "iif"), in the order of COptimizeExpression's index.
extern COMM_LORV_API const CString s_strFuncName[3];
// The characters that end an operand. The comma is one, so an argument of a function is an operand.
extern COMM_LORV_API const CString s_strOperator;

// Shortens a formula's text by its characters alone: folds max, min and iif whose arguments can be evaluated,
// and takes out zero terms with the operators they leave behind.
//
// It does not know the grammar. Everything is decided by what stands around a token, so a formula may change
// its value: "sin(a*0)" becomes "s0)", "max(5)" becomes "0", and "x0*y" counts as a zero. What the suite
// stores was made this way and is compared with it.
//
// Units: 16-bit units; positions count from 0, -1 is "not found".
// Edges: the result is in small letters as soon as one pass has run. Letters of any script may stand in
//   operands.
// Result and failure: see OptimizateExper.
// The values belong to the object. An object belongs to one thread.
//
//   COptimizeExpression o;  o.OptimizateExper(text, 1) on "a*0+b"  gives true and "b"
class COMM_LORV_API COptimizeExpression {
 public:
  // What OptimizateExper is to do, to be added up; the passes run in the order max, min, iif, zero.
  enum { kZeroRules = 1, kFoldMax = 2, kFoldMin = 4, kFoldIif = 8, kAllRules = 15 };

  COptimizeExpression() = default;
  COptimizeExpression(const COptimizeExpression&) = default;
  COptimizeExpression& operator=(const COptimizeExpression&) = default;
  virtual ~COptimizeExpression() = default;

  // Shortens `text` by the rules that `flags` name (1 to 15).
  //
  // Edges: other flags give true and leave the text alone, not even lowered. A tie of max or min goes to the
  //   argument that stands last. A call with four arguments keeps only the first, one with a single argument
  //   counts as 0. Calls inside one another deeper than lorv::kMaxSimplifierDepth, and those whose folding
  //   would never end (two kinds of call inside an argument), leave the whole text as it was, with true.
  // Result: false for an empty text and for a division by zero at the first "/0"; what was lowered and cut
  //   until then stays in the text. An iif inside an argument that has not three arguments of its own raises
  //   CInvalidArgException by pointer.
  //
  //   flags 2 on "max(1,2)+3"  gives "2+3";  flags 1 on "a/0"  gives false
  bool OptimizateExper(CString& text, const int& flags);

  // Gives a variable its value for the comparison of arguments; true. The name is kept in capitals and cut to
  // 20 units. The text is in small letters by then and letter case counts: a name with a Latin letter NEVER
  // takes effect, one in another script does.
  bool SetKeyValue(const CString& key, double value);

  // Forgets all values; true.
  bool ClearMap();

 private:
  // Each private operation is a rule of its own and is tested as one.
  friend struct SimplifierRules;

  // ---- Where an operand ends ----
  int EstimateOptCase(const CString& text, int start, int limit, bool front) const;
  int EstimateOptCase_front(const CString& text, int position) const;
  int EstimateOptCase_back(const CString& text, int position, const CString& token) const;
  int BracketMatch(const CString& text, int start, int limit, const CString& direction) const;
  int BracketToFrontMatch(const CString& text, int position) const;
  int BracketToBackMatch(const CString& text, int position, const CString& token) const;
  int FuncBracketMatch(const CString& text, int start, int end) const;
  int ReverseFindSubstring(const CString& text, const CString& token) const;
  int FindStep(const CString& text, const CString& token, int position) const;
  int ReplaceSingleObject(CString& text, int position, int length, const CString& fresh) const;

  // ---- Zero terms ----
  bool IsValue(const CString& text) const;
  bool ReplaceDivisionZero(const CString& text) const;
  int ReplaceMutiZeroAndSubtration(CString& text, const CString& token, int position) const;
  int ReplaceZeroMutiple(CString& text, const CString& token, int position) const;
  int ReplaceAndSubtrationZero(CString& text, const CString& token, int position) const;
  int ReplaceZeroAndSubtration(CString& text, const CString& token, int position) const;
  int ZeroAndMutipleAndDvsion(CString& text) const;
  int ZeroAndAddAndSubtratration(CString& text) const;
  void ClearRepeatOperator(CString& text) const;
  int OptimizateZero(CString& text) const;

  // ---- Brackets ----
  bool AddBracket(CString& text) const;
  int ClearNosenseBracket(CString& text) const;
  bool ClearFurthestBracket(CString& text) const;

  // ---- Calls ----
  bool SExperOptimizate(CString& text) const;
  CString SubsectionOptimize(const CString& call) const;
  void IdentityFuncElement(const CString& call, CStringArray& list, int function) const;
  CString GetMaxOrMinValue(const CStringArray& list, bool maximum) const;
  double ValStrChangDouble(const CString& text) const;
  CString OptimizateAll(CString& text) const;
  CString OptimizateMaxMin(const CString& call, int function) const;
  CString OptimizateIIF(const CString& call, int function) const;
  int InclusiveFunc(const CString& text) const;

  CString CutCall(const CString& text, int position) const;
  CString ArgumentsOf(const CString& call) const;
  void FoldCalls(CString& text) const;
  bool RunZeroRounds(CString& text) const;

  int m_nFuncIndex = -1;  // what the pass looks for: 0 max, 1 min, 2 iif, -1 the zero rules
  CMapValue m_mapKeyValue;
};

namespace lorv {

// Calls folded inside one another; a formula that goes deeper is left as it was.
constexpr int kMaxSimplifierDepth = 1000;

}  // namespace lorv
