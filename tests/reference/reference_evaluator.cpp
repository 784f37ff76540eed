#include <cmath>
#include <vector>

#include "TEXPRESSCAL/arithmetic/functions_of_numbers.h"
#include "tests/reference/reference_expression.h"

namespace lorv::reference {

namespace {

constexpr double kPi = 3.1415926536;
constexpr int kDivisionByZero = 1;
constexpr int kOutsideDomain = 4;
constexpr int kMissingOperand = 10;

// A number, or a text whose number is 0.
struct Result {
  bool is_text = false;
  double number = 0;
  Text text;
};

Result OfNumber(double value) {
  return Result{false, value, {}};
}

class Evaluator {
 public:
  explicit Evaluator(int& error) : error_(error) {}

  Result Of(const NodePtr& node) {
    if (node == nullptr) {
      error_ = kMissingOperand;
      return OfNumber(0);
    }
    switch (node->kind) {
      case NodeKind::kNumber:
        return OfNumber(node->number);
      case NodeKind::kText:
        return Result{true, 0, node->text};
      case NodeKind::kNegate:
        return OfNumber(-NumberOf(node->left));
      case NodeKind::kBars:
        return OfNumber(std::fabs(NumberOf(node->left)));
      case NodeKind::kCall:
        return OfNumber(Call(*node));
      case NodeKind::kOperator:
        break;
    }
    return Operator(*node);
  }

  double NumberOf(const NodePtr& node) { return Of(node).number; }

 private:
  Result Operator(const Node& node) {
    switch (node.sign) {
      case '+':
        return Plus(node);
      case '/':
        return OfNumber(Quotient(node));
      case '^': {
        const double exponent = NumberOf(node.right);
        return OfNumber(arithmetic::Power(NumberOf(node.left), exponent));
      }
      case '!':
        return OfNumber(NumberOf(node.right) == 0 ? 1 : 0);
      case kAnd:
        return OfNumber(NumberOf(node.left) == 1.0 && NumberOf(node.right) == 1.0 ? 1 : 0);
      case kOr:
        return OfNumber(NumberOf(node.left) == 1.0 || NumberOf(node.right) == 1.0 ? 1 : 0);
      case '-':
      case '*': {
        const double left = NumberOf(node.left);
        const double right = NumberOf(node.right);
        return OfNumber(node.sign == '-' ? left - right : left * right);
      }
      default:
        return OfNumber(Compared(node));
    }
  }

  Result Plus(const Node& node) {
    const Result left = Of(node.left);
    const Result right = Of(node.right);
    if (left.is_text && right.is_text) return Result{true, 0, left.text + right.text};
    return OfNumber(left.number + right.number);
  }

  // The divisor first; the division by zero is noted before the dividend is evaluated.
  double Quotient(const Node& node) {
    const double right = NumberOf(node.right);
    if (right != 0) return NumberOf(node.left) / right;
    error_ = kDivisionByZero;
    return -NumberOf(node.left) / 0.001;
  }

  double Compared(const Node& node) {
    const Result left = Of(node.left);
    const Result right = Of(node.right);
    if (left.is_text && right.is_text) return Holds(node.sign, CompareFolded(left.text, right.text), 0);
    if (node.sign == '<' || node.sign == '>') {
      const double difference = left.number - right.number;
      if (std::fabs(difference) < 1e-9) return 0;
      return Holds(node.sign, difference, 0);
    }
    return Holds(node.sign, left.number, right.number);
  }

  static double Holds(TCHAR sign, double a, double b) {
    switch (sign) {
      case '<':
        return a < b ? 1 : 0;
      case '>':
        return a > b ? 1 : 0;
      case kGreaterEqual:
        return a >= b ? 1 : 0;
      case kLessEqual:
        return a <= b ? 1 : 0;
      case kNotEqual:
        return a != b ? 1 : 0;
      default:
        return a == b ? 1 : 0;
    }
  }

  double Call(const Node& node) {
    const Text& name = node.text;
    if (name == _T("LEN")) return 0;
    if (name == _T("IIF")) return NumberOf(node.arguments[NumberOf(node.arguments[0]) > 0 ? 1 : 2]);
    if (name == _T("FIND")) return Find(node);
    if (name == _T("MAX") || name == _T("MIN")) return Extreme(node, name == _T("MAX"));
    const double x = NumberOf(node.arguments[0]);
    if (name == _T("SQRT")) return Root(x);
    if (name == _T("LOG")) return Logarithm(x);
    return OneArgument(name, x);
  }

  double Find(const Node& node) {
    const Result where = Of(node.arguments[0]);
    const Result what = Of(node.arguments[1]);
    if (!where.is_text || !what.is_text) return 0;
    const std::size_t hit = where.text.find(what.text);
    return hit == Text::npos ? 0 : static_cast<double>(hit + 1);
  }

  // All arguments in order, then the fold from the far end: with NaN among them the order shows.
  double Extreme(const Node& node, bool largest) {
    std::vector<double> values;
    for (const NodePtr& argument : node.arguments) values.push_back(NumberOf(argument));
    double rest = values.back();
    for (std::size_t i = values.size() - 1; i-- > 0;) {
      const double v = values[i];
      if (largest) {
        rest = v > rest ? v : rest;
      } else {
        rest = rest <= v ? rest : v;
      }
    }
    return rest;
  }

  double Root(double x) {
    if (x >= 0) return std::sqrt(x);
    error_ = kOutsideDomain;
    return 0;
  }
  double Logarithm(double x) {
    if (x > 0) return arithmetic::Logarithm(x);
    error_ = kOutsideDomain;
    return 0;
  }

  static double OneArgument(const Text& name, double x) {
    if (name == _T("SIN")) return arithmetic::Sine(x);
    if (name == _T("COS")) return arithmetic::Cosine(x);
    if (name == _T("EXP")) return arithmetic::Exponential(x);
    if (name == _T("TG") || name == _T("TAN")) return arithmetic::Tangent(x);
    if (name == _T("CTG")) return 1 / arithmetic::Tangent(x);
    if (name == _T("ASIN")) return arithmetic::ArcSine(x);
    if (name == _T("ACOS")) return arithmetic::ArcCosine(x);
    if (name == _T("ATG") || name == _T("ATAN")) return arithmetic::ArcTangent(x);
    if (name == _T("FLOOR")) return ThroughInt32(std::floor(x + 1e-10));
    if (name == _T("CEIL")) return ThroughInt32(std::ceil(x - 1e-10));
    if (name == _T("ROUND")) return ThroughInt32(x < 0 ? (x - 0.5) - 1e-15 : x + 0.5 + 1e-15);
    if (name == _T("INT")) return ThroughInt32(x);
    if (name == _T("ABS")) return std::fabs(x);
    if (name == _T("DTOR")) return (x / 180) * kPi;
    if (name == _T("RTOD")) return (x * 180) / kPi;
    if (name == _T("SINA")) return arithmetic::Sine((x / 180) * kPi);
    if (name == _T("COSA")) return arithmetic::Cosine((x / 180) * kPi);
    if (name == _T("TANA")) return arithmetic::Tangent((x / 180) * kPi);
    return 1 / arithmetic::Tangent((x / 180) * kPi);  // CTGA
  }

  int& error_;
};

}  // namespace

double EvaluateNumber(const NodePtr& node, int& error) {
  return Evaluator(error).NumberOf(node);
}

int Expression::Value(double& result) {
  error = 0;
  if (root == nullptr) {
    result = 0;
    return -1;
  }
  result = EvaluateNumber(root, error);
  return error;
}

}  // namespace lorv::reference
