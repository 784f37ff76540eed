#include "TEXPRESSCAL/expression.h"

#include <utility>
#include <vector>

#include "TEXPRESSCAL/evaluate/evaluator.h"
#include "TEXPRESSCAL/text/capitals.h"
#include "TEXPRESSCAL/text/operator_rewriting.h"
#include "framework/objects/archive.h"

// The expression as callers know it: a text, its tree, the last position and error. It owns both through
// buffers that are kept between formulas, so that parsing the next one takes no memory; m_pszExpr and m_pRoot
// point into them.

namespace {

// The caller's map of variable objects, as the evaluator asks it.
class MappedVariables final : public lorv::VariableSource {
 public:
  explicit MappedVariables(const CExpression::VariableMap& map) : map_(map) {}

  bool FindVariable(LPCTSTR name, double& value) const override {
    CValue* found = nullptr;
    if (!map_.Lookup(name, found) || found == nullptr) return false;
    value = found->GetValue();
    return true;
  }

 private:
  const CExpression::VariableMap& map_;
};

lorv::TextView Safe(LPCTSTR text) {
  return text == nullptr ? lorv::TextView() : lorv::TextView(text, lorv::TextLength(text));
}

}  // namespace

IMPLEMENT_SERIAL(CExpression, CObject, 1)

CExpression::CExpression() {
  lorv::Functions();
}

CExpression::CExpression(VariableMap* variables) : CExpression() {
  m_pVars = variables;
}

CExpression::CExpression(const CExpression& other) : CExpression() {
  *this = other;
}

// Text and tree are duplicated. Sharing them, as callers might expect of the interface's description, would
// leave two owners of one text.
CExpression& CExpression::operator=(const CExpression& other) {
  if (this == &other) return *this;
  text_ = other.text_;
  m_pVars = other.m_pVars;
  m_nPos = 0;
  m_pszExpr = other.m_pszExpr == nullptr ? nullptr : other.m_pszExpr == other.empty_ ? empty_ : text_.Text();
  CloneTree(other);
  return *this;
}

CExpression::~CExpression() = default;

// Walks a list of open nodes instead of recursing: a sum of a million terms is a million nodes deep.
void CExpression::CloneTree(const CExpression& other) {
  nodes_.Clear();
  m_pRoot = nullptr;
  std::vector<std::pair<const ExprNode*, ExprNode**>> open{{other.m_pRoot, &m_pRoot}};
  while (!open.empty()) {
    const auto [source, place] = open.back();
    open.pop_back();
    if (source == nullptr) continue;
    ExprNode* copy = nodes_.Take();
    *copy = *source;
    if (copy->kind == lorv::kText) copy->text = nodes_.KeepText({source->text, source->length});
    *place = copy;
    open.emplace_back(source->left, &copy->left);
    open.emplace_back(source->right, &copy->right);
  }
}

int CExpression::ChangeExpression(LPCTSTR text) {
  return ChangeExpression(Safe(text));
}

// The tree is kept for an empty text: callers who clear an input field expect the last value.
int CExpression::ChangeExpression(lorv::TextView text) {
  if (text.empty()) {
    m_pszExpr = empty_;
    return 0;
  }
  // Copying finds out whether there is an operator of several units at all; most texts have none.
  if (lorv::CopyCapitals(text, text_.Overwrite(text.size()))) lorv::RewriteOperators(text_);
  return ParseText();
}

// The list of names goes on from the last parse; only Clear empties it.
int CExpression::ParseText() {
  m_pszExpr = text_.Text();
  nodes_.Clear();
  lorv::Parser parser(m_pszExpr, nodes_, m_pValidParameter, names_);
  m_pRoot = parser.Parse();
  m_nPos = parser.Position();
  return m_pRoot != nullptr ? -1 : static_cast<int>(m_nPos);
}

// Without variables, the usual case, no adapter is made for them.
int CExpression::Value(double& result) {
  m_nError = lorv::kNoError;
  if (m_pRoot == nullptr) {
    result = 0;
    return lorv::kNoTree;
  }
  if (m_pVars == nullptr) {
    lorv::Evaluator evaluator(nullptr);
    result = evaluator.EvaluateAsNumber(m_pRoot);
    m_nError = evaluator.Error();
  } else {
    const MappedVariables variables(*m_pVars);
    lorv::Evaluator evaluator(&variables);
    result = evaluator.EvaluateAsNumber(m_pRoot);
    m_nError = evaluator.Error();
  }
  return m_nError;
}

// Cheaper than a new object: the pool and the text keep their blocks.
void CExpression::Clear() {
  names_.Clear();
  nodes_.Clear();
  m_pRoot = nullptr;
  m_pszExpr = nullptr;
  m_pValidParameter = nullptr;
  m_nPos = 0;
  m_nError = lorv::kNoError;
}

const CExpression::FunctionArray& CExpression::GetFuncDta() const {
  return lorv::Functions();
}

// The rewritten text is stored, so it is not rewritten when it is loaded.
void CExpression::Serialize(CArchive& archive) {
  if (archive.IsStoring()) {
    archive << CString(Safe(m_pszExpr));
    return;
  }
  CString text;
  archive >> text;
  if (text.IsEmpty()) {
    m_pszExpr = empty_;
    return;
  }
  text_.Assign(text.View());
  ParseText();
}

// In the form that callers take apart: "A,B,".
CString CExpression::AcceptedNames() const {
  CString names(m_szVarList);
  names.Append(names_.Rest());
  if (!names.IsEmpty()) names.AppendChar(',');
  return names.TrimLeft(',');
}

int ReplaceStr(LPTSTR text, LPCTSTR old, LPCTSTR fresh, bool all) {
  if (text == nullptr) return 0;
  lorv::BufferEdit edit(text);
  return lorv::ReplaceFrom(edit, 0, Safe(old), Safe(fresh), all);
}
