#include "grid/editing/arithmetic_text.h"

#include "TEXPRESSCAL/calculator.h"
#include "comm/AdLorvComm.h"

// A cell that is evaluated as it is left: "1+2" becomes "3". What has an equals sign, is a number already, or
// is no formula stays as it was typed, because most texts of a table are neither.

bool lorv::ArithmeticText(const CString& typed, CString& text) {
  constexpr int kDecimals = 3;
  constexpr int kRoom = 64;
  if (typed.Find(_T('=')) >= 0 || CAdLorvComm::isNumber(typed)) return false;
  CAdExpCalculate calculator;
  calculator.SetExpr(typed);
  CString message;
  if (!calculator.ValidExp(message)) return false;
  TCHAR result[kRoom] = {};
  Double2String(calculator.Calculate(), kDecimals, result, false, kRoom);
  text = result;
  return true;
}
