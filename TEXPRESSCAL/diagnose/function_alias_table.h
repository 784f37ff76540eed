#pragma once

#include "framework/native/native_types.h"

namespace lorv {

// What other formula languages and spreadsheet programs call a function, and how it is written here.
struct FunctionAlias {
  LPCTSTR other;
  LPCTSTR ours;
};

constexpr FunctionAlias kFunctionAliases[] = {
    {_T("ARCCOS"), _T("ACOS")},
    {_T("ARCSIN"), _T("ASIN")},
    {_T("ARCTAN"), _T("ATAN")},
    {_T("AVERAGE"), _T("(A+B)/2")},
    {_T("CEILING"), _T("CEIL")},
    {_T("COT"), _T("CTG")},
    {_T("DEG"), _T("RTOD")},
    {_T("DEGREES"), _T("RTOD")},
    {_T("FIX"), _T("INT")},
    {_T("IF"), _T("IIF")},
    {_T("LG"), _T("LOG(X)/LOG(10)")},
    {_T("LN"), _T("LOG")},
    {_T("LOG10"), _T("LOG(X)/LOG(10)")},
    {_T("MOD"), _T("A-B*FLOOR(A/B)")},
    {_T("POW"), _T("A^B")},
    {_T("POWER"), _T("A^B")},
    {_T("RAD"), _T("DTOR")},
    {_T("RADIANS"), _T("DTOR")},
    {_T("ROUNDDOWN"), _T("FLOOR")},
    {_T("ROUNDUP"), _T("CEIL")},
    {_T("SEARCH"), _T("FIND")},
    {_T("SQR"), _T("SQRT")},
    {_T("SUM"), _T("A+B")},
    {_T("TRUNC"), _T("INT")},
};

}  // namespace lorv
