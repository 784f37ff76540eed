#pragma once

#include "TEXPRESSCAL/function_table.h"
#include "TEXPRESSCAL/language/expression_node.h"
#include "TEXPRESSCAL/language/node_pool.h"
#include "TEXPRESSCAL/language/parser.h"
#include "TEXPRESSCAL/text/text_edit.h"
#include "framework/collections/map.h"
#include "framework/objects/object.h"

// A variable's object, as a caller keeps it for CExpression::m_pVars.
class COMM_LORV_API CValue : public CObject {
 public:
  virtual double GetValue() const = 0;
};

// Parses one formula and evaluates it to a double.
//
// The formula: numbers, texts in single quotes, functions, "+ - * / ^", comparisons, " AND ", " OR " (or &&
//   ||), brackets, bars for the absolute value. All operators join to the left; a sign binds tighter than
//   "^", so -2^2 is 4; AND and OR bind alike. A comparison is 1 or 0 and may stand wherever a number stands.
//   Names have no values here: a name resolver says which may be used, and each counts 1000000.
// Units: positions count 16-bit units of the rewritten text, from 0, in which "<=" is one unit and the blanks
//   of " AND " are gone.
// Edges: letter case never matters, inside quotes neither: everything is turned to capitals first. A text
//   used as a number counts 0; so does a result that is a text. Exponent forms ("1E3") do not exist. A
//   formula deeper than lorv::kMaxNesting brackets fails at the bracket that is too much.
// Result: see each operation. Throws nothing but std::bad_alloc.
// An object belongs to one thread at a time; separate objects are independent, the first one included. The
// name resolver and the variables are the caller's and must live as long as they are used.
//
//   CExpression e;  double v;  e.ChangeExpression(_T("1+2*3"))  gives -1, e.Value(v) 0 with v = 7
class COMM_LORV_API CExpression : public CObject {
  DECLARE_SERIAL(CExpression)

 public:
  using FunctionArray = lorv::FunctionTable;
  using VariableMap = CTypedPtrMap<CMapStringToOb, CString, CValue*>;

  CExpression();
  explicit CExpression(VariableMap* variables);
  // Copies own their text and tree. The list of names, the error and the name resolver are not copied.
  CExpression(const CExpression& other);
  CExpression& operator=(const CExpression& other);
  ~CExpression() override;

  // Replaces the formula. -1 when it parsed; otherwise the position at which it failed, and there is no tree.
  // An empty (or null) text gives 0 and keeps the previous tree.
  int ChangeExpression(LPCTSTR text);
  int ChangeExpression(lorv::TextView text);

  // Evaluates the formula. The code is 0, 1 (division by zero), 3 (unknown variable), 4 (argument outside the
  // domain), 5 (malformed argument list), 10 (missing operand), the last one met, or -1 without a tree.
  // `result` is set in every case: with an error to what came out so far, without a tree to 0.
  int Value(double& result);

  // The built-in functions ordered by name.
  const FunctionArray& GetFuncDta() const;

  // Stores the rewritten text, or loads one and parses it as it stands.
  void Serialize(CArchive& archive) override;

  // As if made anew, but for the variables: no tree, no names, no name resolver. Storage is kept.
  void Clear();

  // The names accepted by the last parses in order and with repeats, a comma behind each, however many;
  // m_szVarList holds only as many as fit.
  CString AcceptedNames() const;

  // The accepted names, each behind a comma (",A,B"), or the refused one alone. A new parse adds to it.
  TCHAR m_szVarList[lorv::kVarListSize] = {};
  CValidParameter* m_pValidParameter = nullptr;  // resolves names; null: no name is known
  int m_nError = 0;                              // of the last Value
  VariableMap* m_pVars = nullptr;                // variable objects by name; may be null
  LPTSTR m_pszExpr = nullptr;                    // the rewritten text; null before the first
  unsigned int m_nPos = 0;                       // where the parser stands; where it failed
  ExprNode* m_pRoot = nullptr;                   // the tree; null after a failed parse

 private:
  int ParseText();
  void CloneTree(const CExpression& other);

  lorv::GrowingEdit text_;  // what the tree's text leaves point into
  lorv::NodePool nodes_;
  lorv::NameList names_{m_szVarList};
  TCHAR empty_[1] = {};
};

// Replaces `old` by `fresh` in a caller's buffer, which must have room for the grown text: everywhere (at
// most lorv::kMaxReplacements places), or at the first place only. Letter case counts; no edge of names is
// looked at.
//
// Result: the count of replacements; 0 when either text is empty or both differ in letter case only.
//
//   ReplaceStr(_T("aXa") in a buffer, _T("a"), _T("bb"), true)  gives 2 and "bbXbb"
COMM_LORV_API int ReplaceStr(LPTSTR text, LPCTSTR old, LPCTSTR fresh, bool all);
