// Formulas evaluated once: text and values in, number out, each engine with its objects kept.
//
//   calculator   CAdExpCalculate: SetExpr, the values, Calculate; another formula comes between any two, or
//                the same one again would be evaluated by a plan
//   expression   CExpression: parses and evaluates the text in which numbers stand for the names
//   peer         muParser: the values into their slots, parses and evaluates the text with names
//   peer_numbers muParser on the text that "expression" gets
//
// The same text again with other values:
//
//   again        CAdExpCalculate: the values into a map in use, SetExpr, Calculate
//   again_named  CAdExpCalculate: ClearAllValue, the values by name, SetExpr, Calculate
//   peer_again   muParser: the values into their slots, Eval of the compiled text
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>

#include "TEXPRESSCAL/express.h"
#include "bench/allocations.h"
#include "bench/formulas.h"
#include "bench/peer_parser.h"

namespace lorv::bench {
namespace {

// A formula in the forms that the engines take, made before the clock runs.
struct Job {
  explicit Job(const Formula& formula, PeerParser& peer);

  CString text;
  CString with_numbers;
  std::vector<std::pair<CString, double>> values;
  std::string peer_text;
  std::string peer_numbers;
  std::vector<std::pair<double*, double>> slots;
};

double AgainByName(CAdExpCalculate& calculator, const Job& job) {
  calculator.ClearAllValue();
  calculator.SetExpr(job.text);
  for (const auto& [name, value] : job.values) calculator.SetVarValue(name, value, false);
  return calculator.Calculate();
}

double ByCalculator(CAdExpCalculate& calculator, const Job& job) {
  calculator.SetExpr(nullptr);
  return AgainByName(calculator, job);
}

double ByExpression(CExpression& expression, const Job& job) {
  double value = 0;
  if (expression.ChangeExpression(job.with_numbers) != -1) return std::nan("");
  expression.Value(value);
  return value;
}

double ByPeer(PeerParser& peer, const Job& job) {
  for (const auto& [slot, value] : job.slots) *slot = value;
  return peer.Evaluate(job.peer_text);
}

Job::Job(const Formula& formula, PeerParser& peer)
    : text(CString::FromUtf8(formula.text)), peer_text(formula.text) {
  for (const auto& [name, value] : formula.values) {
    values.emplace_back(CString::FromUtf8(name), value);
    slots.emplace_back(&peer.Slot(name), value);
  }
  CAdExpCalculate calculator;
  ByCalculator(calculator, *this);
  with_numbers = calculator.GetCalcedExpr();
  peer_numbers = with_numbers.ToUtf8();
}

struct Engines {
  PeerParser peer;
  CAdExpCalculate calculator;
  CExpression expression;
  std::vector<Job> jobs;
};

bool Near(double a, double b) {
  return std::fabs(a - b) <= 1e-9 * std::fmax(1.0, std::fabs(b));
}

// The comparison means something only where all give the same number.
bool AllAgree(Engines& engines) {
  bool agree = true;
  for (const Job& job : engines.jobs) {
    const double expected = ByPeer(engines.peer, job);
    const double by_calculator = ByCalculator(engines.calculator, job);
    const double by_expression = ByExpression(engines.expression, job);
    const double by_numbers = engines.peer.Evaluate(job.peer_numbers);
    if (Near(by_calculator, expected) && Near(by_expression, expected) && Near(by_numbers, expected))
      continue;
    std::fprintf(stderr, "%s: peer %.17g, on numbers %.17g, calculator %.17g, expression %.17g\n",
                 job.peer_text.c_str(), expected, by_numbers, by_calculator, by_expression);
    agree = false;
  }
  return agree;
}

template <class Work>
void Register(const std::string& name, std::size_t first, std::size_t count, Work work) {
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    for (std::size_t i = 0; i < count; ++i) work(first + i);
    const std::uint64_t before = Allocations();
    std::size_t next = 0;
    for (auto _ : state) {
      benchmark::DoNotOptimize(work(first + next));
      next = next + 1 == count ? 0 : next + 1;
    }
    state.counters["allocations"] =
        benchmark::Counter(static_cast<double>(Allocations() - before), benchmark::Counter::kAvgIterations);
  });
}

void RegisterAll(Engines& engines, const std::string& name, std::size_t first, std::size_t count) {
  Engines* all = &engines;
  const auto job = [all](std::size_t i) -> const Job& { return all->jobs[i]; };
  Register("calculator/" + name, first, count, [=](auto i) { return ByCalculator(all->calculator, job(i)); });
  Register("expression/" + name, first, count, [=](auto i) { return ByExpression(all->expression, job(i)); });
  Register("peer/" + name, first, count, [=](auto i) { return ByPeer(all->peer, job(i)); });
  Register("peer_numbers/" + name, first, count,
           [=](auto i) { return all->peer.Evaluate(job(i).peer_numbers); });
}

// Values that change from one evaluation to the next, as those of a storey's components do: by millimetres.
double Varied(double value, std::size_t turn) {
  return value + static_cast<double>(turn % 64) / 1000;
}

void RegisterAgain(Engines& engines, const std::string& name, std::size_t at) {
  Engines* all = &engines;
  benchmark::RegisterBenchmark(("again/" + name).c_str(), [=](benchmark::State& state) {
    const Job& job = all->jobs[at];
    CMapValue values;
    for (const auto& [variable, value] : job.values) values[variable] = value;
    CAdExpCalculate calculator;
    calculator.SetVarValue(&values);
    std::vector<double*> places;
    for (const auto& entry : job.values) places.push_back(&values[entry.first]);
    std::size_t turn = 0;
    for (auto _ : state) {
      ++turn;
      for (std::size_t i = 0; i < places.size(); ++i) *places[i] = Varied(job.values[i].second, turn);
      calculator.SetExpr(job.text);
      benchmark::DoNotOptimize(calculator.Calculate());
    }
  });
  benchmark::RegisterBenchmark(("again_named/" + name).c_str(), [=](benchmark::State& state) {
    CAdExpCalculate calculator;
    for (auto _ : state) benchmark::DoNotOptimize(AgainByName(calculator, all->jobs[at]));
  });
  benchmark::RegisterBenchmark(("peer_again/" + name).c_str(), [=](benchmark::State& state) {
    const Job& job = all->jobs[at];
    all->peer.Evaluate(job.peer_text);
    std::size_t turn = 0;
    for (auto _ : state) {
      ++turn;
      for (const auto& [slot, value] : job.slots) *slot = Varied(value, turn);
      benchmark::DoNotOptimize(all->peer.Again());
    }
  });
}

int Run(int argc, char** argv) {
  constexpr int kRandomFormulas = 600;
  Engines engines;
  const std::vector<Formula> twelve = TwelveFormulas();
  for (const Formula& formula : twelve) engines.jobs.emplace_back(formula, engines.peer);
  for (const Formula& formula : RandomFormulas(kRandomFormulas))
    engines.jobs.emplace_back(formula, engines.peer);
  if (!AllAgree(engines)) return 1;
  for (std::size_t i = 0; i < twelve.size(); ++i) {
    RegisterAll(engines, twelve[i].name, i, 1);
    RegisterAgain(engines, twelve[i].name, i);
  }
  RegisterAll(engines, "600", twelve.size(), kRandomFormulas);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace
}  // namespace lorv::bench

int main(int argc, char** argv) {
  return lorv::bench::Run(argc, argv);
}
