#include "tools/lorv/language/function_words_table.h"

// Data only: the functions of formulas in English, as an estimator would ask for them.

namespace lorv::tool {
namespace {

struct FunctionWords {
  std::string_view name;
  std::string_view english;
};

// clang-format off
constexpr FunctionWords kFunctions[] = {
    {"ABS", "value without its sign"},
    {"ACOS", "arc cosine, in radians"},
    {"ASIN", "arc sine, in radians"},
    {"ATAN", "arc tangent, in radians"},
    {"ATG", "arc tangent, in radians"},
    {"CEIL", "rounded up to a whole number"},
    {"COS", "cosine of radians"},
    {"COSA", "cosine of degrees"},
    {"CTG", "cotangent of radians"},
    {"CTGA", "cotangent of degrees"},
    {"DTOR", "degrees to radians"},
    {"EXP", "e to a power: EXP(1)=2.71828"},
    {"FIND", "place of a text in another, 0 if it is not there: FIND(CLMC,'brick')>0"},
    {"FLOOR", "rounded down to a whole number"},
    {"IIF", "one of two values by a condition: IIF(X=1,1,0) is 1 if X is 1, else 0"},
    {"INT", "whole part of a number: INT(-2.5)=-2"},
    {"LEN", "meant for the length of a text; 0 for every one"},
    {"LOG", "natural logarithm: LOG(EXP(1))=1"},
    {"MAX", "largest of its values"},
    {"MIN", "smallest of its values"},
    {"ROUND", "rounded to a whole number, halves away from zero"},
    {"RTOD", "radians to degrees"},
    {"SIN", "sine of radians: SIN(30/180*PI) is that of 30 degrees"},
    {"SINA", "sine of degrees"},
    {"SQRT", "square root"},
    {"TAN", "tangent of radians"},
    {"TANA", "tangent of degrees"},
    {"TG", "tangent of radians"},
};
// clang-format on

}  // namespace

std::string_view EnglishOfFunction(std::string_view name) {
  for (const FunctionWords& function : kFunctions) {
    if (function.name == name) return function.english;
  }
  return {};
}

}  // namespace lorv::tool
