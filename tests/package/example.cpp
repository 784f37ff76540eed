#include <cstdio>

#include "TEXPRESSCAL/express.h"

int main() {
  CAdExpCalculate wall;
  wall.SetExpr(_T("长*高*厚-洞口"));
  wall.SetVarValue(_T("长:5.4;高:3;厚:0.24;洞口:0.504;"));
  int error = 0;
  const double volume = wall.Calculate(error);
  const std::string worked = wall.GetCalcedExpr().ToUtf8();
  std::printf("%s = %.3f m3\n", worked.c_str(), volume);
  return error;
}
