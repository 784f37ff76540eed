#pragma once

#include "TEXPRESSCAL/diagnose.h"

namespace lorv::test {

struct BrokenFormula {
  const char* formula;
  FormulaFault fault;
  int position;
  int length;
  const char* suggestion;
  const char* message;
};

using enum FormulaFault;

// Formulas as estimators mistype them, with the place of the fault in the text as typed. Known are the values
// L, B, H, Z (which is 0), LENGTH and 墙高, and the keywords N and WIDTH. Two that look wrong are none.
// clang-format off
constexpr BrokenFormula kBrokenFormulas[] = {
    {"(L+B*2", kOpenBracket, 0, 1, "", "'(' is never closed"},
    {"L+B)*2", kExtraBracket, 3, 1, "", "this closing bracket has no opening one"},
    {"L+B*", kUnfinished, 4, 0, "", "the formula ends where a value is expected"},
    {"L+", kUnfinished, 2, 0, "", "the formula ends where a value is expected"},
    {"*L", kNoOperand, 0, 1, "", "a value is expected here, not '*'"},
    {"L**B", kNoOperand, 2, 1, "", "a value is expected here, not '*'"},
    {"L+*B", kNoOperand, 2, 1, "", "a value is expected here, not '*'"},
    {"L//B", kNoOperand, 2, 1, "", "a value is expected here, not '/'"},
    {"L B", kNoOperator, 2, 1, "", "an operator is missing before 'B'"},
    {"2 3", kNoOperator, 2, 1, "", "an operator is missing before '3'"},
    {"L 2.5", kNoOperator, 2, 3, "", "an operator is missing before '2.5'"},
    {"(L)(B)", kNoOperator, 3, 1, "", "an operator is missing before '('"},
    {"L(B)", kNoOperator, 1, 1, "", "an operator is missing before '('"},
    {"2(L)", kNoOperator, 1, 1, "", "an operator is missing before '('"},
    {".5*L", kLeadingPoint, 0, 1, "", "a number cannot begin with its point, put a 0 before it"},
    {"L*.5", kLeadingPoint, 2, 1, "", "a number cannot begin with its point, put a 0 before it"},
    {"1,5*L", kDecimalComma, 1, 1, "", "the decimal point is '.', not a comma"},
    {"L+1,5", kDecimalComma, 3, 1, "", "the decimal point is '.', not a comma"},
    {"L；B", kFullWidth, 1, 1, ";", "'；' is a full-width sign, type the plain one"},
    {"（L+B)*2", kFullWidth, 0, 1, "(", "'（' is a full-width sign, type the plain one"},
    {"(L+B）*2", kFullWidth, 4, 1, ")", "'）' is a full-width sign, type the plain one"},
    {"L＋B", kFullWidth, 1, 1, "+", "'＋' is a full-width sign, type the plain one"},
    {"L×B", kFullWidth, 1, 1, "*", "'×' is a full-width sign, type the plain one"},
    {"L÷B", kFullWidth, 1, 1, "/", "'÷' is a full-width sign, type the plain one"},
    {"１2+L", kFullWidth, 0, 1, "1", "'１' is a full-width sign, type the plain one"},
    {"L，B", kFullWidth, 1, 1, ",", "'，' is a full-width sign, type the plain one"},
    {"MAX(L，B)", kFullWidth, 5, 1, ",", "'，' is a full-width sign, type the plain one"},
    {"L+B。5", kFullWidth, 3, 1, ".", "'。' is a full-width sign, type the plain one"},
    {"墙高*墙宽", kUnknownName, 3, 2, "墙高", "the name '墙宽' is not known"},
    {"墙高度*2", kUnknownName, 2, 1, "", "the name '度' is not known"},
    {"梁长", kUnknownName, 0, 2, "", "the name '梁长' is not known"},
    {"X+L", kUnknownName, 0, 1, "", "the name 'X' is not known"},
    {"LENGHT*2", kUnknownName, 0, 6, "LENGTH", "the name 'LENGHT' is not known"},
    {"WIDHT+1", kUnknownName, 0, 5, "WIDTH", "the name 'WIDHT' is not known"},
    {"LENGTHH", kUnknownName, 0, 7, "LENGTH", "the name 'LENGTHH' is not known"},
    {"1+ABCDEFGHIJKLMNOPQRST", kUnknownName, 2, 20, "", "the name 'ABCDEFGHIJKLMNOPQRST' is not known"},
    {"1+ABCDEFGHIJKLMNOPQRSTU", kLongName, 2, 21, "",
     "the name 'ABCDEFGHIJKLMNOPQRSTU' has more than 20 characters and can have no value"},
    {"SQR(4)", kUnknownName, 0, 3, "SQRT", "the name 'SQR' is not known"},
    {"SIM(30)", kUnknownName, 0, 3, "SIN", "the name 'SIM' is not known"},
    {"SIN", kNoArguments, 0, 3, "", "the function 'SIN' needs its brackets"},
    {"SIN 30", kNoArguments, 0, 3, "", "the function 'SIN' needs its brackets"},
    {"SIN+1", kNoArguments, 0, 3, "", "the function 'SIN' needs its brackets"},
    {"MAX L", kNoArguments, 0, 3, "", "the function 'MAX' needs its brackets"},
    {"IIF(L>1,2)", kArgumentCount, 0, 10, "", "'IIF(L>1,2)' has the wrong number of arguments"},
    {"IIF(L>1,2,3,4)", kArgumentCount, 0, 14, "", "'IIF(L>1,2,3,4)' has the wrong number of arguments"},
    {"FIND('A')", kArgumentCount, 0, 9, "", "'FIND('A')' has the wrong number of arguments"},
    {"FIND('A','B','C')", kArgumentCount, 0, 17, "", "'FIND('A','B','C')' has the wrong number of arguments"},
    {"IIF()", kArgumentCount, 0, 5, "", "'IIF()' has the wrong number of arguments"},
    {"SIN()", kMissingArgument, 0, 5, "", "'SIN()' lacks its argument"},
    {"SQRT(-1)", kOutsideDomain, 0, 8, "", "the argument of 'SQRT(-1)' is outside its domain"},
    {"LOG(0)", kOutsideDomain, 0, 6, "", "the argument of 'LOG(0)' is outside its domain"},
    {"SQRT(L-20)", kOutsideDomain, 0, 10, "", "the argument of 'SQRT(L-20)' is outside its domain"},
    {"L/Z", kDivisionByZero, 2, 1, "", "division by zero: 'Z' is 0"},
    {"L/(B-B)", kDivisionByZero, 2, 5, "", "division by zero: '(B-B)' is 0"},
    {"L/(H-3)*2", kDivisionByZero, 2, 5, "", "division by zero: '(H-3)' is 0"},
    {"1/0", kDivisionByZero, 2, 1, "", "division by zero: '0' is 0"},
    {"L/0+1", kDivisionByZero, 2, 1, "", "division by zero: '0' is 0"},
    {"L/Z/2", kDivisionByZero, 2, 1, "", "division by zero: 'Z' is 0"},
    {"1/(2*Z)^2", kDivisionByZero, 2, 7, "", "division by zero: '(2*Z)^2' is 0"},
    {"'abc", kOpenText, 0, 1, "", "the quote is never closed"},
    {"FIND('a','b", kOpenText, 9, 1, "", "the quote is never closed"},
    {"|L-B", kOpenBracket, 0, 1, "", "'|' is never closed"},
    {"|L| +B", kBlankBehindBar, 3, 1, "", "no blank may stand behind a closing bar"},
    {"|L-B|*2)", kExtraBracket, 7, 1, "", "this closing bracket has no opening one"},
    {"L#B", kStrayCharacter, 1, 1, "", "'#' does not belong in a formula"},
    {"L$", kStrayCharacter, 1, 1, "", "'$' does not belong in a formula"},
    {"A.B", kUnknownName, 0, 1, "", "the name 'A' is not known"},
    {"L.B", kNone, 0, 0, "", ""},
    {"L+B@2", kStrayCharacter, 3, 1, "", "'@' does not belong in a formula"},
    {"L=", kUnfinished, 2, 0, "", "the formula ends where a value is expected"},
    {"L>=", kUnfinished, 3, 0, "", "the formula ends where a value is expected"},
    {"L<>", kUnfinished, 3, 0, "", "the formula ends where a value is expected"},
    {"L AND", kNoOperator, 2, 3, "", "an operator is missing before 'AND'"},
    {"L&&", kUnfinished, 3, 0, "", "the formula ends where a value is expected"},
    {"!L", kNoOperand, 0, 1, "", "a value is expected here, not '!'"},
    {"L!", kUnfinished, 2, 0, "", "the formula ends where a value is expected"},
    {"1E3", kUnknownName, 1, 2, "", "the name 'E3' is not known"},
    {"2L+", kUnfinished, 3, 0, "", "the formula ends where a value is expected"},
    {"+-L", kNoOperand, 1, 1, "", "a value is expected here, not '-'"},
    {"\"L\"", kStrayCharacter, 0, 1, "", "'\"' does not belong in a formula"},
    {"L[1]", kStrayCharacter, 1, 1, "", "'[' does not belong in a formula"},
    {"L{2}", kStrayCharacter, 1, 1, "", "'{' does not belong in a formula"},
    {"L+B\\2", kStrayCharacter, 3, 1, "", "'\\' does not belong in a formula"},
    {"L:B", kStrayCharacter, 1, 1, "", "':' does not belong in a formula"},
    {"L;B", kStrayCharacter, 1, 1, "", "';' does not belong in a formula"},
    {"%L", kStrayCharacter, 0, 1, "", "'%' does not belong in a formula"},
    {"L%", kStrayCharacter, 1, 1, "", "'%' does not belong in a formula"},
    {"@", kStrayCharacter, 0, 1, "", "'@' does not belong in a formula"},
    {"((((L)", kOpenBracket, 2, 1, "", "'(' is never closed"},
    {"(L+(B*H)", kOpenBracket, 0, 1, "", "'(' is never closed"},
    {"MAX(L,B", kOpenBracket, 3, 1, "", "'(' is never closed"},
    {"MAX(L,)", kNoOperand, 6, 1, "", "a value is expected here, not ')'"},
    {"MAX(,L)", kMissingArgument, 0, 7, "", "'MAX(,L)' lacks its argument"},
    {"IIF(,1,2)", kMissingArgument, 0, 9, "", "'IIF(,1,2)' lacks its argument"},
    {"ROUND(L,2", kOpenBracket, 5, 1, "", "'(' is never closed"},
    {"墙高 墙高", kNoOperator, 3, 2, "", "an operator is missing before '墙高'"},
    {"墙高2", kUnknownName, 0, 3, "墙高", "the name '墙高2' is not known"},
    {"2墙高", kNone, 0, 0, "", ""},
    {"_L", kUnknownName, 0, 2, "", "the name '_L' is not known"},
    {"L_", kUnknownName, 0, 2, "", "the name 'L_' is not known"},
    {"L+ B- ", kUnfinished, 6, 0, "", "the formula ends where a value is expected"},
    {"   ", kUnfinished, 3, 0, "", "the formula ends where a value is expected"},
    {"()", kNoOperand, 1, 1, "", "a value is expected here, not ')'"},
};
// clang-format on

}  // namespace lorv::test
