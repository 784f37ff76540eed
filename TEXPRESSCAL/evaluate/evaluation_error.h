#pragma once

namespace lorv {

// Codes of an evaluation. The last one written wins.
enum EvaluationError {
  kNoTree = -1,
  kNoError = 0,
  kDivisionByZero = 1,
  kUnknownVariable = 3,
  kOutsideDomain = 4,
  kMalformedArguments = 5,
  kMissingOperand = 10
};

// What a calculator reports to its caller: a missing operand, an unknown variable and an argument outside the
// domain are no errors there.
constexpr int ErrorForCaller(int code) {
  return code == kDivisionByZero || code == kMalformedArguments ? 1 : 0;
}

}  // namespace lorv
