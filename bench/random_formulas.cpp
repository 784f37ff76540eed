#include <array>
#include <cstdint>

#include "bench/formulas.h"

// Formulas made at random, weighted as quantities are written, the same ones in every run.

namespace lorv::bench {
namespace {

class Writer {
 public:
  explicit Writer(std::uint64_t seed) : state_(seed) {}

  // Terms until the text has about the length of a typical formula.
  std::string Write() {
    const std::size_t wanted = 22 + Next(26);
    std::string text = Term(2);
    while (text.size() < wanted) text += (Next(3) == 0 ? "-" : "+") + Term(2);
    return text;
  }

 private:
  // A generator of its own, whose numbers are the same with every standard library.
  std::uint64_t Next(std::uint64_t below) {
    state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
    return (state_ >> 33) % below;
  }

  std::string Name() {
    static constexpr std::array kNames = {"L", "B", "H", "T", "A", "S", "N", "W", "LN", "BH", "KJ", "ZH"};
    return kNames.at(Next(kNames.size()));
  }

  std::string Number() {
    static constexpr std::array kNumbers = {"2", "0.5", "1.05", "0.025", "12", "3.6", "4", "0.00617", "1000"};
    return kNumbers.at(Next(kNumbers.size()));
  }

  // Divisors are names, whose values are never 0; an evaluation that fails would end early.
  std::string Term(int depth) {
    std::string term = Factor(depth);
    while (Next(2) != 0) term += Next(5) == 0 ? "/" + Name() : "*" + Factor(depth);
    return term;
  }

  std::string Factor(int depth) {
    const std::uint64_t kind = Next(depth > 0 ? 10 : 7);
    // Weighted as quantities are written: mostly names, some numbers and brackets, few calls.
    if (kind < 5) return Name();
    if (kind < 7) return Number();
    if (kind < 9) return "(" + Name() + (Next(2) != 0 ? "+" : "-") + Term(depth - 1) + ")";
    return Call(depth - 1);
  }

  std::string Call(int depth) {
    switch (Next(6)) {
      case 0:
        return "SQRT(ABS(" + Term(depth) + "))";
      case 1:
        return "IIF(" + Name() + ">" + Number() + "," + Term(depth) + "," + Term(depth) + ")";
      case 2:
        return "MIN(" + Term(depth) + "," + Name() + ")";
      case 3:
        return "ROUND(" + Name() + "*" + Number() + ")";
      case 4:
        return "CEIL(" + Name() + "/" + Name() + ")";
      default:
        return "MAX(" + Term(depth) + "," + Name() + ")";
    }
  }

  std::uint64_t state_;
};

}  // namespace

std::vector<Formula> RandomFormulas(int count) {
  std::vector<Formula> formulas;
  for (int i = 0; i < count; ++i) {
    const std::string text = Writer(static_cast<std::uint64_t>(i) * 7919 + 17).Write();
    formulas.push_back({"R" + std::to_string(i), text, ValuesFor(text)});
  }
  return formulas;
}

}  // namespace lorv::bench
