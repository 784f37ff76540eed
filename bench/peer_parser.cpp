#include "bench/peer_parser.h"

#include <muParser.h>
#include <omp.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>

// The public parser that formulas are measured beside, brought to evaluate as the library does.

namespace lorv::bench {
namespace {

// The functions give what the library's give, so that both sides do the same work: rounding goes through 32
// bits with the same small allowances, and the argument of IIF is true above 0.
double Largest(const double* values, int count) {
  return *std::max_element(values, values + count);
}
double Smallest(const double* values, int count) {
  return *std::min_element(values, values + count);
}
double Choice(double test, double yes, double no) {
  return test > 0 ? yes : no;
}
double Whole(double x) {
  return static_cast<std::int32_t>(x);
}
double Rounded(double x) {
  return Whole(x < 0 ? x - 0.5 - 1e-15 : x + 0.5 + 1e-15);
}
double Floor(double x) {
  return Whole(std::floor(x + 1e-10));
}
double Ceil(double x) {
  return Whole(std::ceil(x - 1e-10));
}
double Root(double x) {
  return std::sqrt(x);
}
double Magnitude(double x) {
  return std::fabs(x);
}
double Sine(double x) {
  return std::sin(x);
}
double Cosine(double x) {
  return std::cos(x);
}

}  // namespace

struct PeerParser::State {
  mu::Parser parser;
  std::map<std::string, double> slots;
};

PeerParser::PeerParser() : state_(std::make_unique<State>()) {
  mu::Parser& parser = state_->parser;
  parser.DefineFun("MAX", Largest);
  parser.DefineFun("MIN", Smallest);
  parser.DefineFun("IIF", Choice);
  parser.DefineFun("INT", Whole);
  parser.DefineFun("ROUND", Rounded);
  parser.DefineFun("FLOOR", Floor);
  parser.DefineFun("CEIL", Ceil);
  parser.DefineFun("SQRT", Root);
  parser.DefineFun("ABS", Magnitude);
  parser.DefineFun("SIN", Sine);
  parser.DefineFun("COS", Cosine);
  // With the digits that it has in the library's formulas.
  parser.DefineConst("PI", 3.1415926536);
}

PeerParser::~PeerParser() = default;

double& PeerParser::Slot(const std::string& name) {
  const auto [at, fresh] = state_->slots.try_emplace(name, 0.0);
  // The parser keeps the address: a map leaves its values where they are when others come.
  if (fresh) state_->parser.DefineVar(name, &at->second);
  return at->second;
}

double PeerParser::Evaluate(const std::string& text) {
  state_->parser.SetExpr(text);
  return state_->parser.Eval();
}

double PeerParser::Again() {
  return state_->parser.Eval();
}

void PeerParser::Column(const std::string& name, double* values) {
  state_->parser.DefineVar(name, values);
}

void PeerParser::EvaluateRows(const std::string& text, double* results, std::size_t rows) {
  omp_set_num_threads(1);  // its bulk mode takes all processors else
  state_->parser.SetExpr(text);
  state_->parser.Eval(results, static_cast<int>(rows));
}

}  // namespace lorv::bench
