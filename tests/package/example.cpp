#include <cstdio>

#include "TEXPRESSCAL/express.h"

int main() {
  const CString formula = _T("长*高*厚-洞口");
  CAdExpCalculate wall(formula);
  wall.SetVarValue(_T("长:5.4;高:3;厚:0.24;洞口:0.504;"));
  const auto wrong = lorv::DiagnoseFormula(formula, wall.Values(), wall.GetKeywords());
  if (wrong.fault != lorv::FormulaFault::kNone) {
    std::printf("%s (character %d)\n", wrong.english.ToUtf8().c_str(), wrong.position + 1);
    return 1;
  }
  const double volume = wall.Calculate();
  std::printf("%s = %.3f m3\n", wall.GetCalcedExpr().ToUtf8().c_str(), volume);
}
